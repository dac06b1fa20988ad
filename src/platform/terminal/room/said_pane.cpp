#include "platform/terminal/room/said_pane.h"

#include "host/conversations.h"
#include "platform/terminal/screen/columns.h"
#include "text/number.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace larkspin {

std::size_t SaidPane::size() const {
    return conversations_.front().lines().size();
}

std::vector<SaidRow> SaidPane::rowsOf(std::size_t first, std::size_t end) const {
    std::vector<SaidRow> rows;
    for (const ShownLine& line : reading_.lines(conversations_.front(), first, end))
        for (SaidRow& row : saidRows(line, area_.columns, styles_))
            rows.push_back(std::move(row));
    return rows;
}

int SaidPane::rowCount(std::size_t line) const {
    return static_cast<int>(rowsOf(line, line + 1).size());
}

// A line that isn't kept any more was before all that are.
SaidPane::Top SaidPane::top() const {
    if (spot_.follows)
        return topOfEnd();
    const auto& lines = conversations_.front().lines();
    const auto line = std::ranges::find(lines, spot_.line, &KeptLine::number);
    if (line == lines.end())
        return {};
    const auto index = static_cast<std::size_t>(line - lines.begin());
    return {index, std::min(spot_.above, rowCount(index) - 1)};
}

// Where the last rows begin that fill the area.
SaidPane::Top SaidPane::topOfEnd() const {
    Top top{size(), 0};
    for (int left = area_.rows; left > 0 && top.line > 0;) {
        const int rows = rowCount(--top.line);
        top.row = std::max(rows - left, 0);
        left -= rows;
    }
    return top;
}

SaidPane::Top SaidPane::moved(Top top, int rows) const {
    top.row += rows;
    while (top.row < 0 && top.line > 0)
        top.row += rowCount(--top.line);
    top.row = std::max(top.row, 0);
    while (top.line < size()) {
        const int count = rowCount(top.line);
        if (top.row < count)
            break;
        top.row -= count;
        ++top.line;
    }
    return top;
}

void SaidPane::scroll(int rows) {
    if (size() == 0)
        return;
    const Top to = moved(top(), rows), end = topOfEnd();
    if (std::pair(to.line, to.row) >= std::pair(end.line, end.row))
        return toEnd();
    spot_ = {
        .follows = false, .line = conversations_.front().lines()[to.line].number, .above = to.row};
}

void SaidPane::scrollPage(int pages) {
    scroll(pages * std::max(area_.rows - 1, 1));
}

std::vector<SaidRow> SaidPane::rowsFrom(const Top& top) const {
    std::vector<SaidRow> rows;
    const auto most = static_cast<std::size_t>(area_.rows);
    const std::size_t end = std::min(top.line + most, size());
    rows = rowsOf(top.line, end);
    rows.erase(rows.begin(), rows.begin() + std::min(top.row, static_cast<int>(rows.size())));
    if (rows.size() > most)
        rows.resize(most);
    return rows;
}

std::vector<SaidRow> SaidPane::lastRows() const {
    const auto most = static_cast<std::size_t>(area_.rows);
    std::vector<SaidRow> rows = rowsOf(size() - std::min(size(), most), size());
    if (rows.size() > most)
        rows.erase(rows.begin(), rows.end() - area_.rows);
    return rows;
}

void SaidPane::draw(Cells& cells, const Area& area, const RoomStyles& styles) {
    area_ = area;
    styles_ = styles;
    cells.fill(area, styles.plain);
    count_ = {};
    shown_.clear();
    if (area.isEmpty())
        return;
    std::vector<SaidRow> rows;
    if (!spot_.follows)
        rows = rowsFrom(top());
    // What doesn't fill the area ends with the last line.
    if (std::cmp_less(rows.size(), area.rows)) {
        toEnd();
        rows = lastRows();
    }
    drawRows(cells, rows);
    shown_ = std::move(rows);
    if (spot_.follows)
        reading_.see(conversations_.lastNumber());
    else
        drawCount(cells);
}

// At the foot of the area.
void SaidPane::drawRows(Cells& cells, const std::vector<SaidRow>& rows) {
    firstRow_ = area_.bottom() - static_cast<int>(rows.size());
    int at = firstRow_;
    for (const SaidRow& row : rows) {
        cells.fill({at, area_.left, 1, area_.columns}, row.ground);
        int column = area_.left + row.indent;
        for (const SaidRow::Piece& piece : row.pieces)
            column = cells.put(at, column, area_.right(), piece.text, piece.style);
        ++at;
    }
}

void SaidPane::drawCount(Cells& cells) {
    const int below = reading_.countBelow();
    const std::string text = below > 0 ? ' ' + counted(below, "new line") + " ↓ " : " ↓ ";
    const int width = std::min(columnsOf(text), area_.columns);
    count_ = {area_.bottom() - 1, area_.right() - width, 1, width};
    cells.put(count_.top, count_.left, count_.right(), text,
              below > 0 ? styles_.chosenCall : styles_.chosenDim);
}

std::string SaidPane::linkAt(int row, int column) const {
    const int index = row - firstRow_;
    if (!area_.holds(row, column) || index < 0 || std::cmp_greater_equal(index, shown_.size()))
        return {};
    return shown_[static_cast<std::size_t>(index)].linkAt(column - area_.left);
}

} // namespace larkspin
