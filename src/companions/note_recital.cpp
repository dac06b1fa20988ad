#include "companions/note_recital.h"

#include "chat/reply.h"
#include "companions/notes.h"
#include "shell/event_loop.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/fold.h"

namespace larkspin {

namespace {

// Seconds.
constexpr double untilFirstNote = 0.7;
constexpr double betweenNotes = 0.6;

} // namespace

void NoteRecital::scrn() {
    if (reply_.refusedInSilence("cant scroll notes in silent mode you dits"))
        return;
    const ThisRun run(state_);
    const Pause pause(loop_);
    reply_.saychat("scrolling <b>" + std::to_string(notes_.count()) + "</b> notes");
    pause(untilFirstNote);
    for (int note = 0; run.lasts() && note < notes_.count(); ++note) {
        if (!recite(note))
            return;
        pause(betweenNotes);
    }
}

void NoteRecital::rn(const std::string& fragment) {
    if (reply_.refusedInSilence("use the notes form to view notes by subject in silent mode"))
        return;
    const ThisRun run(state_);
    const Pause pause(loop_);
    const std::string lowered = foldCase(fragment);
    bool any = false;
    for (int note = 0; note < notes_.count(); ++note) {
        // Searching a long list must not hold up the program.
        loop_.serveTurn();
        if (!run.lasts() || notes_.row(note).empty())
            return;
        notes_.select(note);
        if (foldCase(noteSubject(notes_.row(note))).find(lowered) == std::string::npos)
            continue;
        any = true;
        tell(note);
        pause(betweenNotes);
    }
    if (!any)
        reply_.saychat("<b>" + lowered + "</b> not found");
}

bool NoteRecital::recite(int note) {
    notes_.select(note);
    if (notes_.text(note).empty())
        return false;
    tell(note);
    return true;
}

void NoteRecital::tell(int note) {
    reply_.saychat("<b>" + std::to_string(note + 1) + "</b>.  " + notes_.text(note));
}

} // namespace larkspin
