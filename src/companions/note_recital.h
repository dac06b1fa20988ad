// Notes told in the room: one, all, or those with a text in them.
//
// It waits between its lines. Meanwhile notes may come, go and move, and others be selected or
// told: it goes on at the number it has reached, and ends at the first row that is empty or gone.
// It doesn't go on in another run of the program.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class Notes;

class NoteRecital {
public:
    NoteRecital(const Core& core, Notes& notes)
        : state_(core.state), loop_(core.loop), reply_(core.reply), notes_(notes) {}

    // The commands; the first is the window's "scroll notes" as well.
    void scrn();
    void rn(const std::string& fragment);

    // Selects the note and tells it. False, and nothing is told, when it has no text.
    bool recite(int note);

    // Tells it, with a text or without.
    void tell(int note);

private:
    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Notes& notes_;
};

} // namespace larkspin
