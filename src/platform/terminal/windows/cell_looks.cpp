#include "platform/terminal/windows/cell_looks.h"

#include "host/readable_color.h"
#include "text/blanks.h"
#include "text/visible.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace larkspin {

namespace {

constexpr double outlineShare = 0.55, raisedShare = 0.18; // of the other colour
constexpr int leastContrast = 60;                         // of 255, in brightness

int brightness(Rgb color) {
    const auto part = [color](unsigned shift) { return static_cast<int>(color >> shift & 0xFF); };
    return (part(16) * 11 + part(8) * 16 + part(0) * 5) / 32;
}

struct Sign {
    std::string_view caption, shown;
};

// Signs that a console's font has, too.
constexpr Sign signs[] = {
    {"l>", "►"}, {"\u00B3", "►"}, {"\u0090", "■"},    {"<", "«"},
    {">", "»"},  {"X", "×"},      {"\u00EA", "open"},
};

const std::string farAfter(40, ' ');
constexpr std::string_view farApart = "    "; // blanks that only place what comes after them

} // namespace

Rgb rgbOf(Color color) {
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

CellStyle plainIn(const TwoColors& colors) {
    return {.foreground = rgbOf(colors.foreground), .background = rgbOf(colors.background)};
}

CellStyle dimIn(const TwoColors& colors) {
    CellStyle style = plainIn(colors);
    style.foreground = mixedColor(*style.foreground, *style.background, outlineShare);
    return style;
}

CellStyle raisedIn(const TwoColors& colors) {
    CellStyle style = plainIn(colors);
    style.background = mixedColor(*style.background, *style.foreground, raisedShare);
    return style;
}

TwoColors legible(const TwoColors& colors) {
    const int ground = brightness(rgbOf(colors.background));
    if (std::abs(brightness(rgbOf(colors.foreground)) - ground) >= leastContrast)
        return colors;
    constexpr Color light = 0xD4D4D4, dark = 0x2A2A2A;
    return {ground < 128 ? light : dark, colors.background};
}

std::string captionOf(const std::string& caption) {
    const std::string_view bare = withoutBlanks(caption);
    const auto* const sign = std::ranges::find(signs, bare, &Sign::caption);
    if (sign != std::end(signs))
        return std::string(sign->shown);
    std::string seen = seenText(bare);
    for (std::size_t at = 0; (at = seen.find(farApart, at)) != std::string::npos;)
        seen.erase(at, 1);
    return seen;
}

std::string seenText(std::string_view text) {
    return visibleText(text, " ");
}

std::string_view seenOfRow(std::string_view row) {
    return row.substr(0, row.find(farAfter));
}

void drawFrame(Cells& cells, const Area& area, const CellStyle& style) {
    const int right = area.right() - 1, bottom = area.bottom() - 1;
    for (int column = area.left + 1; column < right; ++column)
        for (const int row : {area.top, bottom})
            cells.put(row, column, right, "─", style);
    for (int row = area.top + 1; row < bottom; ++row)
        for (const int column : {area.left, right})
            cells.put(row, column, column + 1, "│", style);
    cells.put(area.top, area.left, area.right(), "┌", style);
    cells.put(area.top, right, area.right(), "┐", style);
    if (bottom == area.top)
        return;
    cells.put(bottom, area.left, area.right(), "└", style);
    cells.put(bottom, right, area.right(), "┘", style);
}

void drawScrollMark(Cells& cells, const Area& column, const Extent& extent,
                    const CellStyle& style) {
    if (extent.count <= extent.shown || column.rows <= 0)
        return;
    const int length = std::clamp(column.rows * extent.shown / extent.count, 1, column.rows);
    const int way = column.rows - length, hidden = extent.count - extent.shown;
    const int start = static_cast<int>(std::lround(1.0 * extent.first * way / hidden));
    for (int row = column.top + start; row < column.top + start + length; ++row)
        cells.put(row, column.left, column.right(), "█", style);
}

} // namespace larkspin
