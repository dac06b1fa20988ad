#include "platform/terminal/room/typed_offers.h"

#include "platform/terminal/screen/columns.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr int mostRows = 10; // in sight
constexpr int betweenColumns = 2;
constexpr std::string_view saysCaption = "[say them]", leavesCaption = "[leave them]",
                           keysHint = "Return says them, Escape doesn't";

} // namespace

TypedOffers::TypedOffers(LineOffers& offers) : offers_(offers) {
    offers_.showBy({.show = [this] { show(); },
                    .scroll = [this](int rows) { scroll(rows); },
                    .page = [this] { return std::max(list_.rows - 1, 1); }});
}

void TypedOffers::show() {
    first_ = 0;
    if (!offers_.isOffering() && !offers_.isAsking())
        list_ = says_ = leaves_ = {};
}

int TypedOffers::rowCount() const {
    const Completion& offered = offers_.offered();
    return static_cast<int>(offers_.pasted().lines.size() + offered.choices.size()) +
           (offered.others > 0 ? 1 : 0);
}

void TypedOffers::scroll(int rows) {
    first_ = std::clamp(first_ + rows, 0, std::max(rowCount() - std::max(list_.rows, 1), 0));
}

bool TypedOffers::take(const MouseStroke& stroke) {
    if (!offers_.isOffering() && !offers_.isAsking())
        return false;
    const bool isUp = stroke.kind == MouseStroke::Kind::wheelUp;
    if (!isUp && stroke.kind != MouseStroke::Kind::wheelDown)
        return stroke.kind == MouseStroke::Kind::press && press(stroke.row, stroke.column);
    if (!list_.holds(stroke.row, stroke.column))
        return false;
    turnWheel(isUp ? -1 : 1);
    return true;
}

void TypedOffers::turnWheel(int way) {
    const int last = static_cast<int>(offers_.offered().choices.size()) - 1;
    if (offers_.isAsking())
        scroll(way);
    else
        offers_.mark(std::clamp(offers_.marked() + way, 0, last));
}

// One beside the choices leaves them; the question waits for its answer.
bool TypedOffers::press(int row, int column) {
    if (offers_.isAsking()) {
        if (says_.holds(row, column) || leaves_.holds(row, column))
            offers_.answer(says_.holds(row, column));
        return true;
    }
    if (!list_.holds(row, column)) {
        offers_.close();
        return false;
    }
    const int choice = first_ + row - list_.top;
    if (choice < static_cast<int>(offers_.offered().choices.size())) {
        offers_.mark(choice);
        offers_.takeMarked();
    }
    return true;
}

void TypedOffers::draw(Cells& cells, const Area& above, const Looks& looks) {
    if (above.isEmpty())
        return;
    if (offers_.isOffering())
        drawChoices(cells, above, looks);
    else if (offers_.isAsking())
        drawQuestion(cells, above, looks);
}

// One choice a row, with what it does.
void TypedOffers::drawChoices(Cells& cells, const Area& above, const Looks& looks) {
    const auto& choices = offers_.offered().choices;
    const int marked = offers_.marked();
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
    if (marked >= first_ + rows)
        first_ = marked - rows + 1;
    // The row that tells of more shows with the last choice.
    if (marked == static_cast<int>(choices.size()) - 1)
        first_ = rowCount() - rows;
    first_ = std::clamp(first_, std::max(marked - rows + 1, 0), marked);
    for (int row = 0; row < rows; ++row) {
        const auto choice = static_cast<std::size_t>(first_ + row);
        const int at = list_.top + row, left = list_.left + 1, right = list_.right() - 1;
        if (choice >= choices.size()) {
            cells.fill({at, list_.left, 1, list_.columns}, looks.dim);
            cells.putCut(at, left, right,
                         "and " + std::to_string(offers_.offered().others) + " more", looks.dim);
            continue;
        }
        const bool isMarked = first_ + row == marked;
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
    cells.putCut(top, left, right, questionOf(offers_.pasted()), strong);
    list_ = {top + 1, above.left, rows, above.columns};
    scroll(0);
    for (int row = 0; row < rows; ++row)
        cells.putCut(list_.top + row, left + 1, right,
                     offers_.pasted().lines[static_cast<std::size_t>(first_ + row)], looks.plain);
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
