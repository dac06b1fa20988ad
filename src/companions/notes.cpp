#include "companions/notes.h"

#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "text/dates.h"
#include "text/line_breaks.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

constexpr char lastOfTime = 'm'; // the end of "am" or "pm": no letter stands before these

std::string_view afterTime(std::string_view row, std::size_t characters) {
    const auto end = row.find(lastOfTime);
    if (end == std::string_view::npos)
        return row;
    row.remove_prefix(end);
    return row.substr(prefixLength(row, characters));
}

} // namespace

std::string_view noteText(std::string_view row) {
    // "m:" and five blanks
    return afterTime(row, 7);
}

std::string_view noteSubject(std::string_view row) {
    // "m:" and two blanks
    return afterTime(row, 4);
}

std::string Notes::made(const std::string& text) const {
    // A note is one line of its file, so it can't have a line break.
    const std::tm now = loop_.localTime();
    return shortDate(now) + "-" + clockTime(now) + ":     " + breaksAsBlanks(text);
}

bool Notes::add(const std::string& text) {
    return state_.notes.add(made(text));
}

void Notes::remove(int note) {
    state_.notes.removeAt(note);
    state_.noteText.clear();
}

void Notes::replace(int note, const std::string& text) {
    state_.notes.replaceAt(note, made(text));
    if (note == state_.notes.currentIndex())
        showText(note);
}

void Notes::clear() {
    state_.notes.clear();
    state_.noteText.clear();
}

void Notes::select(int note) {
    state_.notes.choose(note);
    showText(note);
}

void Notes::showText(int note) {
    state_.noteText = text(note);
}

int Notes::count() const {
    return state_.notes.count();
}

std::string_view Notes::row(int note) const {
    return state_.notes.row(note);
}

Row Notes::selected() const {
    return state_.notes.share(state_.notes.currentIndex());
}

int Notes::find(const Row& row) const {
    return state_.notes.find(row);
}

std::string Notes::tellFull() const {
    return "you already have " + std::to_string(count()) + " notes, no more fit";
}

void Notes::showCount() {
    state_.noted = "view " + std::to_string(count()) + " notes";
}

} // namespace larkspin
