// Notes told in the room: one, all, or those with a text in them.
//
// A recital pauses between its lines. Meanwhile notes may come, go and move, and others may be
// selected or told. It goes on with the next number, and ends at the first row that is empty or
// gone.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class Notes;

class NoteRecital {
public:
    NoteRecital(const Core& core, Notes& notes)
        : loop_(core.loop), reply_(core.reply), recitals_(core.recitals), notes_(notes) {}

    // The commands. The window's "scroll notes" does the first one too.
    void scrn();
    void rn(const std::string& fragment);

    // Selects the note and tells it. False, and nothing is told, when it has no text.
    bool recite(int note);

    // Tells the note even when it has no text.
    void tell(int note);

private:
    EventLoop& loop_;
    Reply& reply_;
    Recitals& recitals_;
    Notes& notes_;
};

} // namespace larkspin
