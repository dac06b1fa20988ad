#include "platform/terminal/screen/cells.h"

#include "platform/terminal/screen/columns.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <cassert>

namespace larkspin {

namespace {

constexpr Rgb noColor = ~Rgb(0);

// The multiplier is odd and has about as many bits set as not, as is usual for hashes; the shift
// brings what gathers above back down.
std::uint64_t mixed(std::uint64_t sum, std::uint32_t upper, std::uint32_t lower) {
    sum = (sum ^ (std::uint64_t(upper) << 32 | lower)) * 0x9E3779B97F4A7C15;
    return sum ^ sum >> 32;
}

} // namespace

Area Area::within(const Area& other) const {
    const int upper = std::max(top, other.top), before = std::max(left, other.left);
    return {upper, before, std::max(std::min(bottom(), other.bottom()) - upper, 0),
            std::max(std::min(right(), other.right()) - before, 0)};
}

Area Area::inset(int byRows, int byColumns) const {
    return {top + byRows, left + byColumns, std::max(rows - 2 * byRows, 0),
            std::max(columns - 2 * byColumns, 0)};
}

Cells::Cells(int rows, int columns)
    : rows_(std::max(rows, 0)), columns_(std::max(columns, 0)),
      cells_(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_)) {}

const Cell& Cells::at(int row, int column) const {
    assert(area().holds(row, column));
    return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                  static_cast<std::size_t>(column)];
}

std::uint64_t Cells::sumOf(int row) const {
    std::uint64_t sum = 0;
    for (int column = 0; column < columns_; ++column) {
        const auto& [codes, style] = at(row, column);
        std::uint32_t attributes = 0;
        for (const bool isSet :
             {style.bold, style.dim, style.italic, style.underlined, style.reversed, style.isStrip})
            attributes = 2 * attributes + (isSet ? 1 : 0);
        sum = mixed(sum, codes[0], codes[1]);
        sum = mixed(sum, codes[2], codes[3]);
        sum = mixed(sum, codes[4], attributes);
        sum = mixed(sum, style.foreground.value_or(noColor), style.background.value_or(noColor));
    }
    return sum;
}

Cell& Cells::cell(int row, int column) {
    return const_cast<Cell&>(at(row, column));
}

void Cells::fill(const Area& area, const CellStyle& style, char32_t character) {
    const Area part = area.within(this->area());
    for (int row = part.top; row < part.bottom(); ++row)
        for (int column = part.left; column < part.right(); ++column)
            place(row, column, 1, character, style);
}

// Half of a wide character that something else is about to take the other half of: what is left
// shows a blank.
void Cells::clearWide(int row, int column) {
    if (cell(row, column).isSecondHalf())
        cell(row, column - 1).codes = {U' '};
    else if (column + 1 < columns_ && cell(row, column + 1).isSecondHalf())
        cell(row, column + 1) = {.style = cell(row, column + 1).style};
}

void Cells::place(int row, int column, int width, char32_t character, const CellStyle& style) {
    for (int half = 0; half < width; ++half)
        clearWide(row, column + half);
    cell(row, column) = {.codes = {shownInCell(character)}, .style = style};
    if (width == 2)
        cell(row, column + 1) = {.codes = {}, .style = style};
}

// With the character that ends before this column. What is more than a cell holds is left out.
void Cells::combine(int row, int column, char32_t character) {
    Cell& base = cell(row, cell(row, column - 1).isSecondHalf() ? column - 2 : column - 1);
    if (const auto free = std::ranges::find(base.codes, U'\0'); free != base.codes.end())
        *free = character;
}

int Cells::put(int row, int column, int right, std::string_view text, const CellStyle& style) {
    right = std::min(right, columns_);
    const bool isRow = row >= 0 && row < rows_;
    const std::string shown = visibleText(text, " ");
    bool hasBase = false; // in the grid
    for (std::string_view left = shown; !left.empty();) {
        const Character next = firstCharacter(left);
        left.remove_prefix(next.length);
        const int width = columnsOf(next.code);
        if (column + width > right)
            break;
        if (width > 0)
            hasBase = isRow && column >= 0;
        if (width > 0 && hasBase)
            place(row, column, width, next.code, style);
        else if (hasBase)
            combine(row, column, next.code);
        column += width;
    }
    return column;
}

int Cells::putCut(int row, int column, int right, std::string_view text, const CellStyle& style) {
    right = std::min(right, columns_);
    return put(row, column, right, cutTo(visibleText(text, " "), right - column), style);
}

void Cells::restyle(const Area& area, const CellStyle& style) {
    const Area part = area.within(this->area());
    for (int row = part.top; row < part.bottom(); ++row)
        for (int column = part.left; column < part.right(); ++column)
            cell(row, column).style = style;
}

std::vector<std::string> textOf(const Cells& cells) {
    std::vector<std::string> rows;
    for (int row = 0; row < cells.rows(); ++row) {
        std::string& text = rows.emplace_back();
        for (int column = 0; column < cells.columns(); ++column)
            for (const char32_t code : cells.at(row, column).codes)
                if (code != 0)
                    appendCharacter(text, code);
        text.resize(text.find_last_not_of(' ') + 1);
    }
    return rows;
}

} // namespace larkspin
