#include "platform/terminal/room/typed_offers.h"

#include "platform/terminal/screen/columns.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

using Kind = KeyStroke::Kind;

constexpr int mostRows = 10; // in sight
constexpr int betweenColumns = 2;
constexpr std::string_view saysCaption = "[say them]", leavesCaption = "[leave them]",
                           keysHint = "Return says them, Escape doesn't";

// How many rows further down a key leads; 0 for all other keys.
int rowsOf(const KeyStroke& key, int page) {
    switch (key.kind) {
    case Kind::up:
        return -1;
    case Kind::down:
        return 1;
    case Kind::tab:
        return key.shift ? -1 : 0;
    case Kind::pageUp:
        return -page;
    case Kind::pageDown:
        return page;
    default:
        return 0;
    }
}

} // namespace

void TypedOffers::offer(const Completion& completion) {
    offered_ = completion;
    shown_ = Shown::choices;
    marked_ = first_ = 0;
}

void TypedOffers::ask(PastedLines pasted) {
    pasted_ = std::move(pasted);
    shown_ = Shown::question;
    first_ = 0;
}

void TypedOffers::close() {
    shown_ = Shown::none;
    pasted_ = {};
    offered_ = {};
    list_ = says_ = leaves_ = {};
}

bool TypedOffers::take(const Stroke& stroke) {
    if (const auto* const mouse = std::get_if<MouseStroke>(&stroke))
        return takeMouse(*mouse);
    const auto* const key = std::get_if<KeyStroke>(&stroke);
    if (!key || shown_ == Shown::none)
        return false;
    return isOffering() ? takeKeyToChoices(*key) : takeKeyToQuestion(*key);
}

int TypedOffers::rowCount() const {
    const bool hasMore = offered_.others > 0;
    return static_cast<int>(isAsking() ? pasted_.lines.size()
                                       : offered_.choices.size() + (hasMore ? 1 : 0));
}

// Marks the choice so many rows further down, and goes around at the ends.
void TypedOffers::move(int rows) {
    const int last = static_cast<int>(offered_.choices.size()) - 1;
    const bool isAtEnd = marked_ == (rows > 0 ? last : 0);
    marked_ = isAtEnd ? last - marked_ : std::clamp(marked_ + rows, 0, last);
}

void TypedOffers::scroll(int rows) {
    first_ = std::clamp(first_ + rows, 0, std::max(rowCount() - std::max(list_.rows, 1), 0));
}

// Where the owner goes on typing, the line brings other choices.
bool TypedOffers::takeKeyToChoices(const KeyStroke& key) {
    if (key.alt || key.ctrl)
        return false;
    if (const int rows = rowsOf(key, std::max(list_.rows - 1, 1)); rows != 0)
        move(rows);
    else if (key.kind == Kind::enter || key.kind == Kind::tab)
        takeMarked();
    else if (key.kind == Kind::escape)
        close();
    else
        return false;
    return true;
}

// Whoever goes on typing doesn't want the lines said.
bool TypedOffers::takeKeyToQuestion(const KeyStroke& key) {
    if (const int rows = rowsOf(key, std::max(list_.rows - 1, 1)); rows != 0)
        scroll(rows);
    else if (key.kind == Kind::enter || key.kind == Kind::escape)
        answer(key.kind == Kind::enter);
    else {
        close();
        return key.kind == Kind::tab || (key.ctrl && key.character == U'c');
    }
    return true;
}

// A press beside them leaves the choices, and the lines unsaid.
bool TypedOffers::takeMouse(const MouseStroke& stroke) {
    if (shown_ == Shown::none)
        return false;
    const bool isInList = list_.holds(stroke.row, stroke.column);
    const bool isWheel =
        stroke.kind == MouseStroke::Kind::wheelUp || stroke.kind == MouseStroke::Kind::wheelDown;
    if (isWheel && isInList) {
        const int way = stroke.kind == MouseStroke::Kind::wheelUp ? -1 : 1;
        if (isOffering())
            marked_ = std::clamp(marked_ + way, 0, static_cast<int>(offered_.choices.size()) - 1);
        else
            scroll(way);
        return true;
    }
    if (stroke.kind != MouseStroke::Kind::press)
        return false;
    if (isAsking() && says_.holds(stroke.row, stroke.column)) {
        answer(true);
    } else if (isAsking() && leaves_.holds(stroke.row, stroke.column)) {
        answer(false);
    } else if (isOffering() && isInList) {
        const int choice = first_ + stroke.row - list_.top;
        if (choice < static_cast<int>(offered_.choices.size())) {
            marked_ = choice;
            takeMarked();
        }
    } else if (!isInList && isOffering()) {
        close();
        return false;
    }
    return true;
}

void TypedOffers::takeMarked() {
    const Completion::Choice choice = offered_.choices[static_cast<std::size_t>(marked_)];
    close();
    take_(choice);
}

void TypedOffers::answer(bool says) {
    std::vector<std::string> lines = std::move(pasted_.lines);
    close();
    if (says)
        say_(std::move(lines));
}

void TypedOffers::draw(Cells& cells, const Area& above, const Looks& looks) {
    if (above.isEmpty())
        return;
    if (isOffering())
        drawChoices(cells, above, looks);
    else if (isAsking())
        drawQuestion(cells, above, looks);
}

// One choice a row, with what it does.
void TypedOffers::drawChoices(Cells& cells, const Area& above, const Looks& looks) {
    const auto& choices = offered_.choices;
    const int rows = std::min({rowCount(), mostRows, above.rows});
    int first = 0, second = 0; // columns
    for (const auto& choice : choices) {
        first = std::max(first, columnsOf(visibleText(choice.shown, " ")));
        second = std::max(second, columnsOf(visibleText(choice.help, " ")));
    }
    if (second > 0)
        first = std::min(first, above.columns / 2);
    const int wanted = first + (second > 0 ? betweenColumns + second : 0) + 2;
    list_ = {above.bottom() - rows, above.left, rows, std::min(wanted, above.columns)};
    if (marked_ >= first_ + rows)
        first_ = marked_ - rows + 1;
    // The row that tells of more shows with the last choice.
    if (marked_ == static_cast<int>(choices.size()) - 1)
        first_ = rowCount() - rows;
    first_ = std::clamp(first_, std::max(marked_ - rows + 1, 0), marked_);
    for (int row = 0; row < rows; ++row) {
        const auto choice = static_cast<std::size_t>(first_ + row);
        const int at = list_.top + row, left = list_.left + 1, right = list_.right() - 1;
        if (choice >= choices.size()) {
            cells.fill({at, list_.left, 1, list_.columns}, looks.dim);
            cells.putCut(at, left, right, "and " + std::to_string(offered_.others) + " more",
                         looks.dim);
            continue;
        }
        const bool isMarked = first_ + row == marked_;
        const CellStyle& style = isMarked ? looks.marked : looks.plain;
        cells.fill({at, list_.left, 1, list_.columns}, style);
        cells.putCut(at, left, std::min(left + first, right), choices[choice].shown, style);
        cells.putCut(at, left + first + betweenColumns, right, choices[choice].help,
                     isMarked ? looks.marked : looks.dim);
    }
}

// The question, the lines, and how it is answered.
void TypedOffers::drawQuestion(Cells& cells, const Area& above, const Looks& looks) {
    const int rows = std::clamp(std::min(rowCount(), mostRows), 0, std::max(above.rows - 2, 0));
    const int top = std::max(above.bottom() - rows - 2, above.top);
    cells.fill({top, above.left, above.bottom() - top, above.columns}, looks.plain);
    CellStyle strong = looks.plain;
    strong.bold = true;
    const int left = above.left + 1, right = above.right() - 1;
    cells.putCut(top, left, right, questionOf(pasted_), strong);
    list_ = {top + 1, above.left, rows, above.columns};
    scroll(0);
    for (int row = 0; row < rows; ++row)
        cells.putCut(list_.top + row, left + 1, right,
                     pasted_.lines[static_cast<std::size_t>(first_ + row)], looks.plain);
    const int answers = above.bottom() - 1;
    if (answers == top)
        return;
    int column = cells.put(answers, left, right, saysCaption, looks.marked);
    says_ = {answers, left, 1, column - left};
    leaves_ = {answers, column + 1, 1, columnsOf(leavesCaption)};
    column = cells.put(answers, column + 1, right, leavesCaption, looks.marked);
    cells.putCut(answers, column + 2, right, keysHint, looks.dim);
}

} // namespace larkspin
