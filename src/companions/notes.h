// The owner's notes: rows of date, time and text, in the order in which they were made, and the
// text of the selected one on show.
//
//     12/19/03-07:05 pm:     call mum
//
// Notes count from 0 in here and from 1 for the owner. While a box is open, or
// during a pause, the note that it is about may move or go: see `find`.
#pragma once

#include "chat/core.h"
#include "text/row.h"

#include <string>
#include <string_view>

namespace larkspin {

// The text of a note, which stands after date and time; and what a search looks at, which is the
// text with three blanks before it. A row without a time of day, from a file that somebody else has
// written, is all text.
std::string_view noteText(std::string_view row);
std::string_view noteSubject(std::string_view row);

class Notes {
public:
    explicit Notes(const Core& core) : state_(core.state), loop_(core.loop) {}

    // The text gets the date and time of this moment; a line break in it becomes a blank. False
    // when the list is full, and nothing changes.
    bool add(const std::string& text);
    std::string tellFull() const; // what is said when the list is full

    // Both take a note of the list. A replaced note keeps its number and gets a new date. After a
    // removal no text shows.
    void remove(int note);
    void replace(int note, const std::string& text);
    void clear();

    // Selects the note and shows its text. For a number outside the list the selection stays, and
    // no text shows.
    void select(int note);
    void showText(int note);

    int count() const;
    std::string_view row(int note) const;
    std::string text(int note) const { return std::string(noteText(row(note))); }

    // The selected row, by which `find` knows the note again wherever it stands later; an empty row
    // when none is selected. `find` gives -1 when that very row has been removed or replaced, even
    // by one that reads the same.
    Row selected() const;
    int find(const Row& row) const;

    // Brings the count in the tray's menu up to date. It changes by this call alone.
    void showCount();

private:
    std::string made(const std::string& text) const;

    AppState& state_;
    EventLoop& loop_;
};

} // namespace larkspin
