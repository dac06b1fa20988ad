#include "companions/note_recital.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "companions/notes.h"
#include "shell/event_loop.h"
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
    recitals_.begin("scrolling <b>" + std::to_string(notes_.count()) + "</b> notes", untilFirstNote,
                    [this, note = 0]() mutable {
                        const bool isTold = note < notes_.count() && recite(note++);
                        return isTold ? std::optional(betweenNotes) : std::nullopt;
                    });
}

void NoteRecital::rn(const std::string& fragment) {
    if (reply_.refusedInSilence("use the notes form to view notes by subject in silent mode"))
        return;
    recitals_.begin([this, lowered = foldCase(fragment), note = 0, any = false]() mutable {
        const bool isThrough = note >= notes_.count();
        if (isThrough && !any)
            reply_.saychat("<b>" + lowered + "</b> not found");
        if (isThrough || notes_.row(note).empty())
            return std::optional<double>();
        notes_.select(note);
        const bool isMeant =
            foldCase(noteSubject(notes_.row(note))).find(lowered) != std::string::npos;
        any = any || isMeant;
        // Searching a long list must not hold up the program.
        isMeant ? tell(note) : loop_.serveTurn();
        ++note;
        return std::optional(isMeant ? betweenNotes : 0);
    });
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
