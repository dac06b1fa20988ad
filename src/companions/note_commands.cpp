#include "companions/note_commands.h"

#include "chat/reply.h"
#include "chat/two_arguments.h"
#include "companions/note_recital.h"
#include "companions/notes.h"
#include "shell/app_state.h"
#include "text/number.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspin {

namespace {

constexpr const char* noSuchNumber = "you fucker, that isnt a valid note number";
constexpr const char* tooFewNotes = "you dont have that many notes you fag";

// A note's number as the owner counts, however large. Nothing for a text that can't be the number
// of a note: 0, a number below 0, or no number.
std::optional<std::int64_t> noteNumber(std::string_view text) {
    const auto number = rounded(numberOrZero(text));
    return number > 0 ? std::optional(number) : std::nullopt;
}

} // namespace

void NoteCommands::sn(const std::string& text) {
    if (reply_.refusedInSilence(
            "use the add a note feature in the notes window to add notes in silent mode"))
        return;
    const bool isAdded = notes_.add(text);
    notes_.showCount();
    reply_.saychat(isAdded ? "note number <b>" + std::to_string(notes_.count()) + "</b> added"
                           : notes_.tellFull());
}

void NoteCommands::note(const std::string& text) {
    if (reply_.refusedInSilence("use the notes window to view notes in silent mode"))
        return;
    const auto number = noteNumber(text);
    if (!number)
        reply_.saychat(noSuchNumber);
    else if (*number > notes_.count())
        reply_.saychat(tooFewNotes);
    else
        recital_.recite(static_cast<int>(*number) - 1);
}

void NoteCommands::tellCount() {
    const std::string count = std::to_string(notes_.count());
    reply_.sayOrBox("total notes:  <b>" + count, "you have " + count + " notes");
}

void NoteCommands::clrn() {
    if (reply_.refusedInSilence(
            "use the clear notes label on the notes form to clear notes in silent mode"))
        return;
    const std::string count = std::to_string(notes_.count());
    notes_.clear();
    notes_.showCount();
    reply_.saychat("cleared <b>" + count + "</b> notes");
}

void NoteCommands::del(const std::string& text) {
    if (reply_.refusedInSilence("use the notes form to delete notes in silent mode"))
        return;
    const auto number = noteNumber(text);
    if (!number) {
        reply_.saychat("you fucker 0 isnt a valid note number");
    } else if (*number > notes_.count()) {
        reply_.saychat("you've only got <b>" + std::to_string(notes_.count()) +
                       "</b> notes you fag");
    } else {
        notes_.remove(static_cast<int>(*number) - 1);
        reply_.saychat("deleted note index <b>" + std::to_string(*number));
    }
}

void NoteCommands::edit(const std::string& text) {
    if (reply_.refusedInSilence("use the notes window to edit notes in silent mode"))
        return;
    if (notes_.count() == 0) {
        reply_.saychat("there arent any notes to edit, you dumbass");
        return;
    }
    const auto arguments = twoArguments(text);
    // A line that is no edit is no mistake to be told of either.
    if (!arguments || state_.trigger.find(',') != std::string::npos)
        return;
    const auto number = noteNumber(arguments->first);
    if (!number) {
        reply_.saychat(noSuchNumber);
    } else if (arguments->second.empty()) {
        reply_.saychat("the fuck are you tryin to do?");
    } else if (*number > notes_.count()) {
        reply_.saychat(tooFewNotes);
    } else {
        const int note = static_cast<int>(*number) - 1;
        notes_.replace(note, arguments->second);
        notes_.select(note);
        reply_.saychat("edited note <b>" + std::to_string(*number) + "</b> - " + arguments->second);
    }
}

} // namespace larkspin
