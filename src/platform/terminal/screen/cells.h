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

// A colour, or nothing: the terminal's own. No larger than a colour, since a screen has thousands.
class CellColor {
public:
    constexpr CellColor() = default;
    constexpr CellColor(std::nullopt_t) {}
    constexpr CellColor(Rgb color) : value_(color) {}
    constexpr CellColor(const std::optional<Rgb>& color) : value_(color.value_or(none)) {}

    constexpr explicit operator bool() const { return value_ != none; }
    constexpr Rgb operator*() const { return value_; } // of one that is there
    constexpr Rgb value_or(Rgb other) const { return *this ? value_ : other; }
    constexpr bool operator==(const CellColor&) const = default;

private:
    static constexpr std::uint32_t none = 0xFF000000;
    std::uint32_t value_ = none;
};

struct CellStyle {
    CellColor foreground{}, background{};
    bool bold : 1 = false, dim : 1 = false, italic : 1 = false, underlined : 1 = false,
                reversed : 1 = false;
    bool isStrip : 1 = false; // set off by its ground, and by more where that can't be told apart

    bool operator==(const CellStyle&) const = default;
};

struct Cell {
    static constexpr std::size_t mostCodes = 5; // as many as the library takes in one cell

    std::array<char32_t, mostCodes> codes{U' '}; // the rest are 0
    CellStyle style = {};

    bool isSecondHalf() const { return codes[0] == 0; } // of the wide character to the left
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
    const Cell& at(int row, int column) const; // must lie within

    // A number that tells what the row shows: other rows have others.
    std::uint64_t sumOf(int row) const;

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
