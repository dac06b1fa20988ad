#include "platform/terminal/windows/control_mouse.h"

#include "platform/terminal/screen/columns.h"
#include "platform/terminal/windows/cell_layout.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using Kind = Control::Kind;

constexpr int wheelRows = 3, wheelValue = 5;

bool isOver(const ControlTarget& target, const MouseStroke& mouse) {
    return target.area.holds(mouse.row, mouse.column);
}

// On the mark that tells how far a list is scrolled.
bool isOnScrollMark(const ControlTarget& target, int column) {
    return column == target.area.right() - 1 && target.control.rows->count() > target.area.rows;
}

void scrollTo(const ControlTarget& target, int mouseRow) {
    const int hidden = target.control.rows->count() - target.area.rows;
    const int way = std::max(target.area.rows - 1, 1);
    const int at = std::clamp(mouseRow - target.area.top, 0, way);
    target.state.first =
        boundedFirst(at * hidden / way, target.area.rows, target.control.rows->count());
}

void pressList(const ControlTarget& target, const MouseStroke& mouse) {
    target.state.dragged.reset();
    if (isOnScrollMark(target, mouse.column)) {
        target.state.pressed = ControlState::onScrollMark;
        scrollTo(target, mouse.row);
        return;
    }
    const int row = rowAt(target, mouse);
    target.state.pressed = row;
    const bool addsRows = target.control.selectsMany && (mouse.shift || mouse.ctrl);
    if (row == noRow || addsRows) // which the release does
        return;
    target.state.anchor = row;
    mouseDown(target.window, target.name, row);
}

void dragList(const ControlTarget& target, const MouseStroke& mouse) {
    const int from = target.state.pressed, count = target.control.rows->count();
    if (from == ControlState::onScrollMark)
        return scrollTo(target, mouse.row);
    if (from == noRow || !target.control.selectsMany || from >= count)
        return;
    const int line = std::clamp(mouse.row - target.area.top, -1, target.area.rows);
    const int to = std::clamp(target.state.first + line, 0, count - 1);
    if (to == from && !target.state.dragged)
        return;
    target.state.first = std::clamp(target.state.first, to - target.area.rows + 1, to);
    target.state.dragged = {std::min(from, to), 0, std::abs(to - from) + 1, 1};
    target.state.draggedTo = to;
}

// With a key held: the row comes to those selected or leaves them, or all up to it do.
void addRows(const ControlTarget& target, const MouseStroke& mouse, int row) {
    const RowList& rows = *target.control.rows;
    std::vector<int> wanted;
    if (mouse.shift) {
        const int anchor = target.state.anchor;
        const bool isKnown = anchor >= 0 && anchor < rows.count();
        wanted = rowsBetween(isKnown ? anchor : row, row);
    } else {
        for (int each = 0, left = rows.selectedCount(); left > 0; ++each)
            if (rows.isSelected(each)) {
                --left;
                if (each != row)
                    wanted.push_back(each);
            }
        if (!rows.isSelected(row))
            wanted.push_back(row);
        target.state.anchor = row;
    }
    selectRows(target.window, target.name, wanted);
}

// It is a click if the button comes up over the row where it went down. Otherwise the mouse has
// been drawn over several rows.
void releaseList(const ControlTarget& target, const MouseStroke& mouse) {
    const int from = std::exchange(target.state.pressed, noRow);
    const auto dragged = std::exchange(target.state.dragged, std::nullopt);
    if (from < 0)
        return;
    const int row = rowAt(target, mouse);
    if (dragged)
        selectRows(target.window, target.name, rowsBetween(from, target.state.draggedTo));
    else if (target.control.selectsMany && (mouse.shift || mouse.ctrl) && row == from)
        addRows(target, mouse, row);
    else if (row == from)
        click(target.window, target.name, row);
}

void slideTo(const ControlTarget& target, const MouseStroke& mouse) {
    const int columns = target.area.columns, column = mouse.column - target.area.left;
    // A press on the handle moves nothing, though several values may share its cell.
    if (std::clamp(column, 0, columns - 1) != columnOf(target.control, columns))
        moveSlider(target.window, target.name, valueAt(target.control, columns, column));
}

// The cursor goes to the character there.
void pointInField(const ControlTarget& target, int mouseColumn) {
    EditedText& text = target.state.text;
    const auto& characters = text.characters();
    const auto widthOf = [](char32_t character) {
        return columnsOf(seenText(textOf(std::u32string(1, character))));
    };
    int column = target.area.left + 1;
    std::size_t at = std::min(target.state.firstShown, characters.size());
    while (at < characters.size() && column + widthOf(characters[at]) <= mouseColumn)
        column += widthOf(characters[at++]);
    text.become(text.text(), at);
}

} // namespace

void pressAt(const ControlTarget& target, const MouseStroke& mouse) {
    switch (target.control.kind) {
    case Kind::list:
        return pressList(target, mouse);
    case Kind::combo:
        return openRows(target);
    case Kind::slider:
        return slideTo(target, mouse);
    case Kind::textField:
        if (!hasSeveralLines(target.control))
            pointInField(target, mouse.column);
        break;
    default:
        break;
    }
    mouseDown(target.window, target.name);
}

void dragTo(const ControlTarget& target, const MouseStroke& mouse) {
    if (target.control.kind == Kind::list)
        dragList(target, mouse);
    else if (target.control.kind == Kind::slider)
        slideTo(target, mouse);
}

void releaseAt(const ControlTarget& target, const MouseStroke& mouse) {
    if (target.control.kind == Kind::list)
        releaseList(target, mouse);
    else if (isOver(target, mouse) && target.control.kind != Kind::combo)
        click(target.window, target.name);
}

bool isScrolled(const Control& control) {
    return control.kind == Kind::list || control.kind == Kind::slider || hasSeveralLines(control);
}

void turnWheel(const ControlTarget& target, int way) {
    const Control& control = target.control;
    if (control.kind == Kind::slider)
        moveSlider(target.window, target.name,
                   (control.value ? control.value() : control.least) - way * wheelValue);
    else // what isn't scrolled is bounded as it is drawn
        target.state.first = std::max(target.state.first + way * wheelRows, 0);
}

int rowAt(const ControlTarget& target, const MouseStroke& mouse) {
    if (target.control.kind != Kind::list || !isOver(target, mouse) ||
        isOnScrollMark(target, mouse.column))
        return noRow;
    const int row = target.state.first + mouse.row - target.area.top;
    return row < target.control.rows->count() ? row : noRow;
}

} // namespace larkspin
