#include "host/line_offers.h"

#include <algorithm>

namespace larkspin {

void LineOffers::offer(Completion completion) {
    offered_ = std::move(completion);
    pasted_ = {};
    marked_ = 0;
    view_.show();
}

void LineOffers::ask(PastedLines pasted) {
    pasted_ = std::move(pasted);
    offered_ = {};
    view_.show();
}

void LineOffers::close() {
    offered_ = {};
    pasted_ = {};
    view_.show();
}

bool LineOffers::take(LineKey key) {
    if (isOffering())
        return takeToChoices(key);
    return isAsking() && takeToQuestion(key);
}

// Where the owner goes on typing, the line brings other choices.
bool LineOffers::takeToChoices(LineKey key) {
    if (const int rows = rowsOf(key); rows != 0)
        move(rows);
    else if (key == LineKey::enter || key == LineKey::tab)
        takeMarked();
    else if (key == LineKey::escape)
        close();
    else
        return false;
    return true;
}

// Whoever goes on typing doesn't want the lines said.
bool LineOffers::takeToQuestion(LineKey key) {
    if (const int rows = rowsOf(key); rows != 0)
        view_.scroll(rows);
    else if (key == LineKey::enter || key == LineKey::escape)
        answer(key == LineKey::enter);
    else if (key != LineKey::tab) {
        close();
        return false;
    }
    return true;
}

// How many rows further down a key leads; 0 for all other keys.
int LineOffers::rowsOf(LineKey key) const {
    switch (key) {
    case LineKey::up:
    case LineKey::shiftTab:
        return -1;
    case LineKey::down:
        return 1;
    case LineKey::pageUp:
        return -view_.page();
    case LineKey::pageDown:
        return view_.page();
    default:
        return 0;
    }
}

// Goes around at the ends.
void LineOffers::move(int rows) {
    const int last = static_cast<int>(offered_.choices.size()) - 1;
    const bool isAtEnd = marked_ == (rows > 0 ? last : 0);
    mark(isAtEnd ? last - marked_ : std::clamp(marked_ + rows, 0, last));
}

void LineOffers::mark(int choice) {
    marked_ = choice;
    view_.mark();
}

void LineOffers::takeMarked() {
    const Completion::Choice choice = offered_.choices[static_cast<std::size_t>(marked_)];
    close();
    take_(choice);
}

void LineOffers::answer(bool says) {
    std::vector<std::string> lines = std::move(pasted_.lines);
    close();
    if (says)
        say_(std::move(lines));
}

} // namespace larkspin
