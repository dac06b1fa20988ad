// The commands that work on notes by their number, or on all of them, and answer in the room.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class NoteRecital;
class Notes;

class NoteCommands {
public:
    NoteCommands(const Core& core, Notes& notes, NoteRecital& recital)
        : state_(core.state), reply_(core.reply), notes_(notes), recital_(recital) {}

    void sn(const std::string& text);
    void note(const std::string& text);
    void tellCount();
    void clrn();
    // The count in the tray's menu stays as it was.
    void del(const std::string& text);
    // "2, new text". When the trigger is itself a comma, the line's first comma is that of the
    // trigger and no number stands before it, so no line is an edit.
    void edit(const std::string& text);

private:
    AppState& state_;
    Reply& reply_;
    Notes& notes_;
    NoteRecital& recital_;
};

} // namespace larkspin
