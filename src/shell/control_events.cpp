#include "shell/control_events.h"

#include "shell/controls.h"
#include "text/row_list.h"

#include <algorithm>

namespace larkspin {

namespace {

using Kind = Control::Kind;

Control* findShown(Window& window, const std::string& name) {
    Control* const control = window.find(name);
    return control && isShown(window, *control) ? control : nullptr;
}

Control* findShown(Window& window, const std::string& name, Kind kind) {
    // The handler may have hidden the window or changed its rows.
    Control* const control = findShown(window, name);
    return control && control->kind == kind ? control : nullptr;
}

bool hasRow(const Control& control, int row) {
    return control.rows && row >= 0 && row < control.rows->count();
}

// A list and a combo can only be pressed on one of their rows, others on none.
bool fits(const Control& control, int row) {
    const bool hasRows = control.kind == Kind::list || control.kind == Kind::combo;
    return hasRows ? hasRow(control, row) : row == noRow;
}

// Calls a copy of the handler, since the handler may remove the control that it belongs to.
template <typename... Arguments>
void call(const std::function<void(Arguments...)>& handler, Arguments... arguments) {
    if (const auto copy = handler)
        copy(arguments...);
}

} // namespace

bool isOnWindow(const Window& window, const Control& control) {
    const Place& place = control.place;
    // A control at the window's upper or left edge shows at any size.
    const bool isCutOff = (place.top > 0 && place.top >= window.place.height) ||
                          (place.left > 0 && place.left >= window.place.width);
    return control.visible && !isCutOff;
}

bool isShown(const Window& window, const Control& control) {
    return window.visible && isOnWindow(window, control);
}

bool mouseDown(Window& window, const std::string& name, int row) {
    const Control* control = findShown(window, name);
    if (!control || !fits(*control, row))
        return false;
    call(control->onMouseDown);
    control = findShown(window, name);
    if (control && control->kind == Kind::list && fits(*control, row))
        control->rows->choose(row);
    return true;
}

bool click(Window& window, const std::string& name, int row) {
    const Control* const control = findShown(window, name);
    const bool isThere = control && fits(*control, row);
    if (isThere)
        call(control->onClick);
    window.dragged = false; // the mouse button is up again
    return isThere;
}

bool doubleClick(Window& window, const std::string& name, int row) {
    const Control* const control = findShown(window, name);
    if (!control || !fits(*control, row))
        return false;
    call(control->onDoubleClick);
    return true;
}

bool press(Window& window, const std::string& name, int row) {
    // A combo has nothing but rows to take: no mouse-down of its own, and no click.
    if (findShown(window, name, Kind::combo))
        return chooseRow(window, name, row);
    if (!mouseDown(window, name, row))
        return false;
    click(window, name, row);
    return true;
}

bool pressTwice(Window& window, const std::string& name, int row) {
    if (!press(window, name, row))
        return false;
    doubleClick(window, name, row);
    return true;
}

void pressWithoutMouse(Window& window, const std::string& name, int row) {
    const Control* const control = window.find(name);
    if (control && (control->kind == Kind::list || !control->onClick))
        pressTwice(window, name, row);
    else
        press(window, name, row);
}

bool selectRows(Window& window, const std::string& name, const std::vector<int>& rows) {
    const Control* const control = findShown(window, name, Kind::list);
    // All rows are checked before the selection changes.
    if (!control || rows.empty() || (rows.size() > 1 && !control->selectsMany) ||
        !std::all_of(rows.begin(), rows.end(), [&](int row) { return hasRow(*control, row); }))
        return false;
    control->rows->clearSelection();
    for (const int row : rows)
        control->rows->setSelected(row, true);
    control->rows->setCurrentIndex(rows.back());
    call(control->onClick);
    return true;
}

bool pressKey(Window& window, const std::string& name, Key key) {
    const Control* const control = findShown(window, name);
    if (!control)
        return false;
    call(control->onKey, key);
    return true;
}

bool askMenu(Window& window, const std::string& name, int row) {
    const Control* const control = findShown(window, name, Kind::list);
    if (!control || !control->onMenu)
        return false;
    RowList& rows = *control->rows;
    const int wanted = row == noRow ? rows.currentIndex() : row;
    if (!hasRow(*control, wanted))
        return false;
    if (rows.isSelected(wanted))
        rows.setCurrentIndex(wanted);
    else
        rows.choose(wanted);
    call(control->onMenu);
    return true;
}

bool hover(Window& window, const std::string& name) {
    const Control* const control = findShown(window, name);
    if (!control)
        return false;
    call(control->onMouseMove);
    return true;
}

bool moveSlider(Window& window, const std::string& name, int value) {
    const Control* const control = findShown(window, name, Kind::slider);
    if (!control || control->least > control->most)
        return false;
    const int reached = std::clamp(value, control->least, control->most);
    if (!control->value || control->value() != reached)
        call(control->onChange, reached);
    return true;
}

bool chooseRow(Window& window, const std::string& name, int row) {
    const Control* const control = findShown(window, name, Kind::combo);
    if (!control || !hasRow(*control, row))
        return false;
    control->rows->setCurrentIndex(row);
    call(control->onClick);
    return true;
}

bool drop(Window& window, const std::vector<std::string>& paths) {
    if (!window.visible || !window.onDrop || paths.empty())
        return false;
    const auto onDrop = window.onDrop;
    onDrop(paths);
    return true;
}

bool closeWindow(Window& window) {
    for (const Control& control : window.controls)
        if (control.spoken == closeSpoken)
            return press(window, std::string(control.name));
    return false;
}

bool editText(Window& window, const std::string& name, const std::string& text) {
    const Control* const control = findShown(window, name, Kind::textField);
    if (!control)
        return false;
    if (const auto onEdit = control->onEdit)
        onEdit(text);
    return true;
}

} // namespace larkspin
