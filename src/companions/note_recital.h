// Notes told in the room: one, all, or those with a text in them.
//
// A recital waits between its lines. Meanwhile notes may come, go and move, and others may be
// selected or told. It goes on with the next number, ends at the first row that is empty or gone,
// and doesn't go on after a restart of the program.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class Notes;

class NoteRecital {
public:
    NoteRecital(const Core& core, Notes& notes)
        : state_(core.state), loop_(core.loop), reply_(core.reply), notes_(notes) {}

    // The commands. The window's "scroll notes" does the first one too.
    void scrn();
    void rn(const std::string& fragment);

    // Selects the note and tells it. False, and nothing is told, when it has no text.
    bool recite(int note);

    // Tells the note even when it has no text.
    void tell(int note);

private:
    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Notes& notes_;
};

} // namespace larkspin
