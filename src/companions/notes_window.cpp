#include "companions/notes_window.h"

#include "chat/reply.h"
#include "companions/note_recital.h"
#include "companions/notes.h"
#include "shell/app_state.h"
#include "shell/controls.h"
#include "shell/dialogs.h"

#include <string>

namespace larkspin {

namespace {

constexpr Place notesHome = {3000, 3000, 4500, 2700};

} // namespace

NotesWindow::NotesWindow(const Core& core, Notes& notes, NoteRecital& recital)
    : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
      notes_(notes), recital_(recital) {
    notez.place = notesHome;
    notez.controls = controls();
}

std::vector<Control> NotesWindow::controls() {
    return {
        titleStrip(loop_, notez,
                   {.name = "Label1", .text = caption("                larkspin player notes")}),
        closeLabel(notez, {.name = "Label5"}),
        listBox({.name = "List2",
                 .place = {0, 345, 4500, 1725},
                 .spoken = "notes",
                 .rows = &state_.notes,
                 .onClick = [this] { notes_.showText(state_.notes.currentIndex()); },
                 .onDoubleClick = [this] { recite(); },
                 .onKey =
                     [this](Key key) {
                         if (key == Key::del)
                             askToDelete();
                     }}),
        textField({.name = "Text1",
                   .place = {0, 2100, 4500, 285},
                   .spoken = "text of the note",
                   .text = shows(state_.noteText)}),
        button({.name = "Label2",
                .place = {0, 2415, 1200, 285},
                .text = caption(" add a note"),
                .onClick = [this] { add(); }}),
        button({.name = "Label3",
                .place = {1230, 2415, 1290, 285},
                .text = caption("scroll notes"),
                .onClick = [this] { recital_.scrn(); }}),
        button({.name = "Label4",
                .place = {2550, 2415, 1200, 285},
                .text = caption("clear notes"),
                .onClick = [this] { clear(); }}),
        button({.name = "Label6",
                .place = {3780, 2415, 720, 285},
                .text = caption("edit"),
                .onClick = [this] { edit(); }}),
    };
}

void NotesWindow::reset() {
    putAway(notez, notesHome);
}

void NotesWindow::nshow() {
    show();
    reply_.saychat("notes form - <b>shown - " + std::to_string(notes_.count()) + "</b> notes");
}

void NotesWindow::add() {
    const auto text = dialogs_.askText(
        {.title = "add a note", .prompt = "what would you like to add to your notes?"});
    if (!text)
        return;
    const bool isAdded = notes_.add(*text);
    notes_.showCount();
    if (!isAdded)
        dialogs_.box(notes_.tellFull());
}

void NotesWindow::clear() {
    notes_.clear();
    notes_.showCount();
}

// Edits the note for which the box was opened. Other notes may come and go while it is open: the
// note is edited even if it has another number then, but not if it has been changed or removed.
void NotesWindow::edit() {
    const Row edited = notes_.selected();
    if (edited.text().empty())
        return;
    const auto text = dialogs_.askText({.title = "edit a note",
                                        .prompt = "what would you like to edit in note number " +
                                                  std::to_string(state_.notes.currentIndex() + 1),
                                        .preset = std::string(noteText(edited.text()))});
    if (const int note = notes_.find(edited); text && note >= 0)
        notes_.replace(note, *text);
}

// Deletes the note that the question names, which may have moved or gone while it was open.
void NotesWindow::askToDelete() {
    const Row deleted = notes_.selected();
    if (deleted.text().empty())
        return;
    const bool isWanted =
        dialogs_.ask("do you really wanna delete " + std::string(deleted.text()) + "?");
    const int note = notes_.find(deleted);
    if (!isWanted || note < 0)
        return;
    notes_.remove(note);
    notes_.showCount();
}

void NotesWindow::recite() {
    if (!notes_.selected().text().empty())
        recital_.tell(state_.notes.currentIndex());
}

} // namespace larkspin
