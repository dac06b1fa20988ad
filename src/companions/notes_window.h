// The notes window `notez`: the notes, the text of the selected one, and what can be done with them
// by the mouse, also in silent mode. Nothing but a recital is said in the room.
#pragma once

#include "chat/core.h"
#include "shell/window.h"

#include <vector>

namespace larkspin {

class NoteRecital;
class Notes;

class NotesWindow {
public:
    NotesWindow(const Core& core, Notes& notes, NoteRecital& recital);

    // The command, and the tray's entry, which does the same without saying anything.
    void nshow();
    void show() { showOnTop(notez); }

    // Hides the window and puts it in its first place, as it is when a run begins.
    void reset();

    Window notez{.name = "notez", .spoken = "larkspin notes"};

private:
    std::vector<Control> controls();
    void add();
    void clear();
    void edit();
    void askToDelete();
    void recite();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    Notes& notes_;
    NoteRecital& recital_;
};

} // namespace larkspin
