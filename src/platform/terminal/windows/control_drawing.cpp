#include "platform/terminal/windows/control_drawing.h"

#include "platform/terminal/screen/columns.h"
#include "platform/terminal/windows/cell_layout.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace larkspin {

namespace {

using Kind = Control::Kind;

constexpr int leastField = 12, leastSlider = 6, leastSwatch = 4; // columns
constexpr int margin = 1;                                        // in front of what is read
constexpr CellStyle groove{.foreground = 0x8C8C8C}, handle{.foreground = 0xD4D4D4};

TwoColors colorsOf(const Control& control) {
    return {control.foreground, control.background};
}

std::string readOf(const Control& control) {
    return control.text ? control.text() : std::string();
}

// A caption in brackets is a button. On the strip there is one sign alone.
std::string buttonText(const Control& control) {
    const std::string caption = captionOf(readOf(control));
    return isOnStrip(control) ? ' ' + caption + ' ' : '[' + caption + ']';
}

// On the strip a caption stands on the line of the frame.
Cursor drawLabel(Pen& pen, const ControlSight& sight) {
    const Area& area = sight.area;
    CellStyle style = plainIn(colorsOf(sight.control));
    const std::string caption = captionOf(readOf(sight.control));
    const bool onStrip = isOnStrip(sight.control);
    if (!onStrip)
        pen.fill(area, style);
    style.reversed = sight.hasFocus;
    const int row = area.top + (area.rows - 1) / 2;
    pen.putCut(row, area.left + (onStrip ? 0 : margin), area.right(),
               onStrip && !caption.empty() ? ' ' + caption + ' ' : caption, style);
    return {row, std::min(area.left + margin, area.right() - 1)};
}

// A little room beside a caption is left on its right, so that those above each other begin at the
// same column.
Cursor drawButton(Pen& pen, const ControlSight& sight) {
    constexpr int littleRoom = 4;
    const Area& area = sight.area;
    const bool onStrip = isOnStrip(sight.control);
    const TwoColors colors = onStrip ? legible(colorsOf(sight.control)) : colorsOf(sight.control);
    CellStyle style = sight.isUnderMouse ? raisedIn(colors) : plainIn(colors);
    style.reversed = sight.hasFocus != sight.isPressed;
    if (!onStrip)
        pen.fill(area, plainIn(colors));
    std::string text = buttonText(sight.control);
    if (columnsOf(text) > area.columns)
        text = captionOf(readOf(sight.control)); // the letters say more than the brackets
    const int room = std::max(0, area.columns - columnsOf(text));
    const int left = onStrip             ? area.left + room
                     : room > littleRoom ? area.left + room / 2
                                         : area.left;
    const int row = area.top + (area.rows - 1) / 2;
    pen.putCut(row, left, area.right(), text, style);
    return {row, std::min(left + margin, area.right() - 1)};
}

void drawMark(Pen& pen, const Area& area, const Extent& extent, const TwoColors& colors) {
    const Area column = Area{area.top, area.right() - 1, area.rows, 1}.within(pen.clip());
    drawScrollMark(pen.cells(), column, extent, dimIn(colors));
}

// Whether a row shows as selected: as the list has it, or as the mouse is about to.
bool isSelected(const RowList& rows, int row, const ControlState& state) {
    if (state.dragged)
        return row >= state.dragged->top && row < state.dragged->bottom();
    return rows.isSelected(row);
}

Cursor drawList(Pen& pen, const ControlSight& sight, ControlState& state) {
    const Area& area = sight.area;
    const RowList& rows = *sight.control.rows;
    const int current = rows.currentIndex();
    if (std::exchange(state.followed, current) != current && current >= 0)
        state.first = std::clamp(state.first, current - area.rows + 1, current);
    state.first = boundedFirst(state.first, area.rows, rows.count());
    const bool isScrolled = rows.count() > area.rows;
    const int right = area.right() - (isScrolled ? 1 : 0);
    const int marked = sight.control.markedRow ? sight.control.markedRow() : -1;
    const CellStyle plain = plainIn(colorsOf(sight.control));
    pen.fill(area, plain);
    for (int line = 0; line < area.rows && state.first + line < rows.count(); ++line) {
        const int row = state.first + line, place = area.top + line;
        CellStyle style = plain;
        style.bold = row == marked;
        style.reversed = isSelected(rows, row, state);
        style.underlined = sight.hasFocus && row == current;
        pen.fill({place, area.left, 1, right - area.left}, style);
        if (row == marked)
            pen.put(place, area.left, right, "►", style);
        pen.putCut(place, area.left + margin, right, seenText(seenOfRow(rows.row(row))), style);
    }
    drawMark(pen, area, {state.first, area.rows, rows.count()}, colorsOf(sight.control));
    return {area.top + std::clamp(current - state.first, 0, area.rows - 1), area.left};
}

// The cursor is kept in sight, with what stands in front of it.
Cursor drawField(Pen& pen, const ControlSight& sight, ControlState& state) {
    const Area& area = sight.area;
    const bool canBeEdited = static_cast<bool>(sight.control.onEdit);
    const TwoColors colors = colorsOf(sight.control);
    const CellStyle style = canBeEdited ? raisedIn(colors) : plainIn(colors);
    pen.fill(area, style);
    const auto& characters = state.text.characters();
    const std::size_t cursor = sight.hasFocus ? state.text.cursor() : 0;
    state.firstShown = std::min(state.firstShown, cursor);
    const auto between = [&](std::size_t from, std::size_t to) {
        return textOf(std::u32string_view(characters).substr(from, to - from));
    };
    const int room = std::max(area.columns - margin - 1, 1);
    while (state.firstShown < cursor &&
           columnsOf(seenText(between(state.firstShown, cursor))) > room)
        ++state.firstShown;
    const std::string shown = seenText(between(state.firstShown, characters.size()));
    if (sight.hasFocus)
        pen.put(area.top, area.left + margin, area.right(), shown, style);
    else
        pen.putCut(area.top, area.left + margin, area.right(), shown, style);
    return {area.top,
            std::min(area.right() - 1,
                     area.left + margin + columnsOf(seenText(between(state.firstShown, cursor))))};
}

Cursor drawLines(Pen& pen, const ControlSight& sight, ControlState& state) {
    const Area& area = sight.area;
    const CellStyle style = plainIn(colorsOf(sight.control));
    pen.fill(area, style);
    const auto lines = linesOf(state.described, area.columns - 2 * margin);
    const int count = static_cast<int>(lines.size());
    state.first = boundedFirst(state.first, area.rows, count);
    for (int line = 0; line < std::min(area.rows, count - state.first); ++line)
        pen.put(area.top + line, area.left + margin, area.right(),
                lines[static_cast<std::size_t>(state.first + line)], style);
    drawMark(pen, area, {state.first, area.rows, count}, colorsOf(sight.control));
    return {area.top, area.left};
}

// In the grey of other programs, whatever colours the window has.
Cursor drawSlider(Pen& pen, const ControlSight& sight) {
    const Area& area = sight.area;
    CellStyle line = groove, mark = handle;
    line.background = mark.background = rgbOf(sight.control.background);
    mark.reversed = sight.hasFocus;
    const int row = area.top + (area.rows - 1) / 2;
    pen.fill(area, line);
    for (int column = area.left; column < area.right(); ++column)
        pen.put(row, column, area.right(), "─", line);
    const int at = area.left + columnOf(sight.control, area.columns);
    pen.put(row, at, area.right(), sight.hasFocus ? "↔" : "█", mark);
    return {row, at};
}

Cursor drawCombo(Pen& pen, const ControlSight& sight) {
    const Area& area = sight.area;
    CellStyle style = raisedIn(colorsOf(sight.control));
    style.reversed = sight.hasFocus;
    pen.fill(area, style);
    pen.put(area.top, area.right() - 2, area.right(), "▼", style);
    pen.putCut(area.top, area.left + margin, area.right() - 2,
               seenText(sight.control.rows->currentRow()), style);
    return {area.top, area.left};
}

} // namespace

int neededColumns(const Control& control) {
    switch (control.kind) {
    case Kind::button:
        return columnsOf(buttonText(control));
    case Kind::slider:
        return leastSlider;
    case Kind::swatch:
        return leastSwatch;
    case Kind::label:
        return (isOnStrip(control) ? 2 : 1) * margin + columnsOf(captionOf(readOf(control)));
    default:
        return leastField;
    }
}

Cursor draw(Pen& pen, const ControlSight& sight, ControlState& state) {
    switch (sight.control.kind) {
    case Kind::list:
        return drawList(pen, sight, state);
    case Kind::textField:
        readDescription(sight.control, state);
        return hasSeveralLines(sight.control) ? drawLines(pen, sight, state)
                                              : drawField(pen, sight, state);
    case Kind::slider:
        return drawSlider(pen, sight);
    case Kind::combo:
        return drawCombo(pen, sight);
    case Kind::swatch:
        pen.fill(sight.area, plainIn(colorsOf(sight.control)));
        return {sight.area.top, sight.area.left};
    case Kind::button:
        return drawButton(pen, sight);
    default:
        return drawLabel(pen, sight);
    }
}

void readDescription(const Control& field, ControlState& state) {
    const std::string text = readOf(field);
    if (text == state.described)
        return;
    state.described = text;
    state.first = 0;
    if (text == state.text.text())
        return;
    state.firstShown = 0;
    state.text.become(text); // to be gone on with
    if (!field.onEdit)
        state.text.goToStart();
}

std::vector<std::string> linesOf(std::string_view text, int columns) {
    std::vector<std::string> lines;
    constexpr std::string_view lineBreak = "\n";
    const std::string seen = visibleText(text, lineBreak);
    std::string_view rest = seen;
    for (bool isLast = false; !isLast;) {
        const std::size_t end = rest.find('\n');
        isLast = end == std::string_view::npos;
        const std::string_view line = rest.substr(0, end);
        for (const auto& [from, to] : wrapped(line, std::max(columns, 1), std::max(columns, 1)))
            lines.emplace_back(line.substr(from, to - from));
        rest.remove_prefix(isLast ? rest.size() : end + 1);
    }
    return lines;
}

int boundedFirst(int first, int shown, int count) {
    return std::clamp(first, 0, std::max(count - shown, 0));
}

int columnOf(const Control& slider, int columns) {
    const int range = slider.most - slider.least;
    const int value = slider.value ? slider.value() : slider.least;
    const double share = range > 0 ? 1.0 * (value - slider.least) / range : 0;
    return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * (columns - 1)));
}

int valueAt(const Control& slider, int columns, int column) {
    const double share = columns > 1 ? std::clamp(1.0 * column / (columns - 1), 0.0, 1.0) : 0;
    return slider.least + static_cast<int>(std::lround(share * (slider.most - slider.least)));
}

} // namespace larkspin
