// A screen as a grid of cells, on which everything is drawn before the terminal sees any of it.
// Each cell holds what stands in one column: a character with those that combine with it, or the
// second half of a wide one. Rows and columns count from 0, at the upper left. Knows no terminal.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

using Rgb = std::uint32_t; // 0xRRGGBB

struct CellStyle {
    std::optional<Rgb> foreground = {}, background = {}; // nothing: the terminal's own
    bool bold = false, dim = false, italic = false, underlined = false, reversed = false;

    bool operator==(const CellStyle&) const = default;
};

struct Cell {
    static constexpr std::size_t mostCodes = 5; // as many as the library takes in one cell

    std::array<char32_t, mostCodes> codes{U' '}; // the rest are 0
    bool isSecondHalf = false;                   // of the wide character to the left; no codes
    CellStyle style = {};

    bool operator==(const Cell&) const = default;
};

struct Area {
    int top = 0, left = 0, rows = 0, columns = 0;

    bool operator==(const Area&) const = default;
    int bottom() const { return top + rows; } // one past the last row
    int right() const { return left + columns; }
    bool isEmpty() const { return rows <= 0 || columns <= 0; }
    bool holds(int row, int column) const {
        return row >= top && row < bottom() && column >= left && column < right();
    }
    Area within(const Area& other) const;        // what both have in common
    Area inset(int byRows, int byColumns) const; // smaller on each side
};

class Cells {
public:
    Cells(int rows, int columns);

    int rows() const { return rows_; }
    int columns() const { return columns_; }
    Area area() const { return {0, 0, rows_, columns_}; }
    const Cell& at(int row, int column) const;          // must lie within
    bool hasSameRow(const Cells& other, int row) const; // of a grid of the same size

    void fill(const Area& area, const CellStyle& style, char32_t character = U' ');

    // A line of text from that column on, at most up to `right` (one past its last column), and
    // nothing outside of the grid. It is shown as an eye may see it (see text/visible.h), so
    // nothing in it steers the terminal; a wide character that has only half of its room is left
    // out, as is what combines with nothing. Gives the column after it.
    int put(int row, int column, int right, std::string_view text, const CellStyle& style);

    // The same, cut with "…" where it has no room.
    int putCut(int row, int column, int right, std::string_view text, const CellStyle& style);

    // Another style for what stands there.
    void restyle(const Area& area, const CellStyle& style);

private:
    Cell& cell(int row, int column);
    void place(int row, int column, int width, char32_t character, const CellStyle& style);
    void combine(int row, int column, char32_t character);
    void clearWide(int row, int column);

    int rows_, columns_;
    std::vector<Cell> cells_;
};

// The rows of text in a grid, without styles and blanks at the end: for tests and captures.
std::vector<std::string> textOf(const Cells& cells);

} // namespace larkspin
