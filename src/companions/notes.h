// The owner's notes: rows of date, time and text, in the order in which they were made, and the
// text of the selected one on show.
//
//     12/19/03-07:05 pm:     call mum
//
// Notes count from 0 in here and from 1 for the owner. What a box or a pause was opened for may
// have moved or gone after it: see `find`.
#pragma once

#include "chat/core.h"
#include "text/row.h"

#include <string>
#include <string_view>

namespace larkspin {

// What stands after date and time, and what a search looks at, which is some blanks more. A row
// without a time of day, from a file that somebody else has written, is all text.
std::string_view noteText(std::string_view row);
std::string_view noteSubject(std::string_view row);

class Notes {
public:
    explicit Notes(const Core& core) : state_(core.state), loop_(core.loop) {}

    // The text gets the date and time of this moment; a line break in it becomes a blank. False
    // when the list is full, and nothing changes.
    bool add(const std::string& text);
    std::string tellFull() const; // what there is to say then

    // Of a note in the list. What is replaced keeps its number and gets a new date; after a removal
    // no text shows.
    void remove(int note);
    void replace(int note, const std::string& text);
    void clear();

    // Makes it the selected one, whose text shows. Outside the list the selection stays, and no
    // text shows.
    void select(int note);
    void showText(int note);

    int count() const;
    std::string_view row(int note) const;
    std::string text(int note) const { return std::string(noteText(row(note))); }

    // The row that is selected, to be found again wherever it stands later; an empty one when there
    // is none. -1 when that very row has been removed or replaced, also by one that reads the same.
    Row selected() const;
    int find(const Row& row) const;

    // The count in the tray's menu, which stands as it is until this is called.
    void showCount();

private:
    std::string made(const std::string& text) const;

    AppState& state_;
    EventLoop& loop_;
};

} // namespace larkspin
