#include "platform/terminal/windows/window_layer.h"

#include "platform/terminal/windows/key_meanings.h"
#include "platform/terminal/windows/window_sum.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <algorithm>
#include <vector>

namespace larkspin {

namespace {

using KeyKind = KeyStroke::Kind;

constexpr int nudgeRows = 1, nudgeColumns = 2;

} // namespace

void WindowLayer::refresh() {
    const bool isCalled = std::exchange(calls_, window_.calls) != window_.calls;
    if (window_.visible != isShown_) {
        isShown_ = window_.visible;
        pressed_.clear();
        if (isShown_) {
            frame_.appear();
            stage_.appears(*this);
        } else {
            stage_.goes(*this);
        }
    } else if (isShown_ && isCalled) {
        stage_.layers.raise(*this);
    }
    if (!isShown_)
        return;
    if (const std::size_t now = sumOfSeen(window_); std::exchange(seen_, now) != now)
        stage_.layers.changed();
}

void WindowLayer::shift(int rows, int columns) {
    frame_.shift(rows, columns);
    stage_.layers.changed();
}

std::optional<Cursor> WindowLayer::draw(Cells& cells) {
    frame_.layOutOn(stage_.areaOn(cells.area()), focus_.name());
    const bool isActive = stage_.hasKeyboard(*this), isPointedAt = stage_.isPointedAt(*this);
    frame_.draw(cells, isActive);
    std::optional<Cursor> cursor;
    for (std::size_t index = 0; index < window_.controls.size(); ++index) {
        const Control& control = window_.controls[index];
        if (!isOnWindow(window_, control))
            continue;
        const bool hasFocus = isActive && control.name == focus_.name();
        Pen pen(cells, frame_.clipFor(control));
        const auto at = larkspin::draw(pen,
                                       {.control = control,
                                        .area = frame_.spotOf(index),
                                        .hasFocus = hasFocus,
                                        .isPressed = control.name == pressed_,
                                        .isUnderMouse = isPointedAt && control.name == underMouse_},
                                       frame_.stateOf(index));
        if (hasFocus && pen.has(at.row))
            cursor = at;
    }
    if (isActive && !cursor)
        cursor = Cursor{frame_.area().top, frame_.area().left};
    return cursor;
}

Area WindowLayer::areaOf(const std::string& name) const {
    for (std::size_t index = 0; index < std::min(frame_.count(), window_.controls.size()); ++index)
        if (const Control& control = window_.controls[index];
            control.name == name && isShown(window_, control))
            return frame_.spotOf(index).within(frame_.clipFor(control));
    return {};
}

std::optional<ControlTarget> WindowLayer::targetOf(const std::string& name) {
    const std::size_t count = std::min(frame_.count(), window_.controls.size());
    for (std::size_t index = 0; index < count; ++index)
        if (const Control& control = window_.controls[index];
            control.name == name && isShown(window_, control))
            return ControlTarget{
                window_, control, frame_.stateOf(index), name, frame_.spotOf(index), stage_.menu};
    return std::nullopt;
}

void WindowLayer::enterByKey() {
    focus_.enter();
    stage_.goInto(*this);
}

bool WindowLayer::take(const Stroke& stroke) {
    stage_.layers.changed();
    if (const auto* const mouse = std::get_if<MouseStroke>(&stroke))
        return takeMouse(*mouse);
    const auto* const key = std::get_if<KeyStroke>(&stroke);
    if (key && key->kind == KeyKind::function && key->number == 6) {
        stage_.cycle(key->shift);
        return true;
    }
    if (key && leadsIn(*key)) {
        enterByKey();
        return true;
    }
    if (!stage_.hasKeyboard(*this))
        return false;
    return key ? takeKey(*key) : takeText(std::get<PasteStroke>(stroke));
}

// Keys that mean nothing to an empty line lead into a box: another one then answers it. Tab leads
// into any window.
bool WindowLayer::leadsIn(const KeyStroke& key) const {
    const bool isForBox = key.kind == KeyKind::enter || key.kind == KeyKind::escape;
    const bool leads = key.kind == KeyKind::tab || (isForBox && rank_ == Rank::box);
    return leads && !stage_.keyboard() && !stage_.isLineBegun();
}

// In a box it is for the field, wherever the focus is; elsewhere for the line.
bool WindowLayer::takeText(const PasteStroke& pasted) {
    if (rank_ == Rank::box && !isInField())
        focusOnField();
    const auto target = targetOf(focus_.name());
    const bool isForField = target && takesText(target->control);
    if (isForField)
        paste(*target, pasted.text);
    else
        stage_.leave();
    return isForField;
}

bool WindowLayer::takeKey(const KeyStroke& key) {
    if (takeKeyOfWindow(key))
        return true;
    if (rank_ == Rank::box && !isInField() && takeKeyOfBox(key))
        return true;
    if (!isInField() && goesToLine(key)) {
        stage_.leave();
        return false;
    }
    return strikeFocused(key);
}

bool WindowLayer::takeKeyOfWindow(const KeyStroke& key) {
    const int way = wayOf(key.kind);
    if (key.alt && way != 0) {
        const bool isAcross = key.kind == KeyKind::left || key.kind == KeyKind::right;
        frame_.moveTo(frame_.area().top + (isAcross ? 0 : way * nudgeRows),
                      frame_.area().left + (isAcross ? way * nudgeColumns : 0));
    } else if (key.kind == KeyKind::tab) {
        focus_.move(key.shift ? -1 : 1);
    } else if (key.kind == KeyKind::escape) {
        closeByKey();
    } else if (isMenuKey(key)) {
        menuByKey();
    } else {
        return false;
    }
    return true;
}

// What is typed goes into its field. In a box without one, a letter presses the button that begins
// with it, and anything else begins a line.
bool WindowLayer::takeKeyOfBox(const KeyStroke& key) {
    if (!isTypedText(key) || isTypedSpace(key))
        return false;
    const std::string typed = textOf(std::u32string(1, key.character));
    if (focusOnField())
        return false;
    std::string pressed;
    for (const Control& control : window_.controls)
        if (control.kind == Control::Kind::button && control.text &&
            control.text().starts_with(typed))
            pressed = control.name;
    if (pressed.empty())
        return false;
    stage_.pressed();
    press(window_, pressed);
    return true;
}

// False where there is none.
bool WindowLayer::focusOnField() {
    const auto field = std::ranges::find_if(window_.controls, [this](const Control& control) {
        return takesText(control) && isShown(window_, control);
    });
    if (field == window_.controls.end())
        return false;
    focus_.set(field->name);
    return true;
}

bool WindowLayer::isInField() const {
    const Control* const control = focus_.control();
    return control && takesText(*control);
}

// Space, Return and Backspace mean the line that the owner is typing, but for a control that keys
// have led to, and in a box; Return on a list means its row.
bool WindowLayer::goesToLine(const KeyStroke& key) const {
    if (isTypedText(key) && !isTypedSpace(key))
        return true;
    const bool isEnd = key.kind == KeyKind::enter;
    const Control* const control = focus_.control();
    const bool isList = control && control->kind == Control::Kind::list;
    return (isTypedSpace(key) || isEnd || key.kind == KeyKind::backspace) &&
           rank_ == Rank::window && !focus_.isByKey() && stage_.isLineBegun() && !(isEnd && isList);
}

// What was pressed by the mouse isn't pressed once more by a key that may be meant for the line.
bool WindowLayer::strikeFocused(const KeyStroke& key) {
    const auto target = targetOf(focus_.name());
    const bool presses = key.kind == KeyKind::enter || isTypedSpace(key);
    const bool isButton = target && (target->control.kind == Control::Kind::button ||
                                     target->control.kind == Control::Kind::label);
    if (presses && isButton && !focus_.isByKey())
        return true;
    if (presses || key.kind == KeyKind::del)
        stage_.pressed();
    if (target)
        stage_.menu.popUpAt({target->area.bottom(), target->area.left});
    if (target && strike(*target, key))
        return true;
    const int way = wayOf(key.kind);
    if (way != 0)
        focus_.move(way);
    return way != 0;
}

// The control hears of Escape first, and then the window closes. One that can't be closed gives
// the keyboard back, as does a control that keeps the key once that has done all it can there.
void WindowLayer::closeByKey() {
    stage_.pressed();
    const Control* const control = focus_.control();
    const bool keeps = control && control->keepsEscape;
    const bool isMeant = keeps && control->rows && control->rows->selectedCount() > 1;
    if (control)
        pressKey(window_, std::string(control->name), Key::escape);
    if (keeps ? !isMeant : !closeWindow(window_))
        stage_.leave();
}

// Of the current row, or of the tray icon where there is none.
void WindowLayer::menuByKey() {
    stage_.pressed();
    if (const auto target = targetOf(focus_.name())) {
        const bool isList = target->control.kind == Control::Kind::list;
        const int row = isList ? target->control.rows->currentIndex() - target->state.first : 0;
        stage_.menu.popUpAt(
            {target->area.top + std::clamp(row, 0, target->area.rows - 1) + 1, target->area.left});
    }
    if (!askMenu(window_, focus_.name()))
        stage_.titleMenu();
}

bool WindowLayer::takeMouse(const MouseStroke& mouse) {
    using Kind = MouseStroke::Kind;
    const bool isMoved = mouse.kind == Kind::move && mouse.button != MouseStroke::Button::none;
    if (!pressed_.empty() && (mouse.kind == Kind::release || isMoved))
        return takeHeld(mouse);
    const bool isInside = area().holds(mouse.row, mouse.column);
    const std::string name = isInside ? frame_.controlAt(mouse.row, mouse.column) : "";
    underMouse_ = name;
    if (!isInside && mouse.kind == Kind::press && stage_.hasKeyboard(*this))
        stage_.leave();
    if (!isInside)
        return false;
    stage_.pointAt(*this);
    if (mouse.kind == Kind::move)
        hover(window_, name);
    else if (mouse.kind == Kind::press)
        takePress(mouse, name);
    else if (mouse.kind != Kind::release)
        takeWheel(mouse.kind == Kind::wheelUp ? -1 : 1, name);
    return true;
}

void WindowLayer::takeWheel(int way, const std::string& name) {
    const auto target = targetOf(name);
    if (target && isScrolled(target->control))
        return turnWheel(*target, way);
    focus_.clear(); // or the window would be scrolled back to it
    frame_.scroll(way);
}

// One that keys mean nothing to, as one that only tells something, leaves the keyboard where it is.
void WindowLayer::takePress(const MouseStroke& mouse, const std::string& name) {
    stage_.pressed();
    if (focus_.hasPlace())
        stage_.goInto(*this);
    else
        stage_.layers.raise(*this);
    stage_.menu.popUpAt({mouse.row + 1, mouse.column});
    window_.dragged = false; // a quick click may have left it so
    const auto target = targetOf(name);
    if (!target)
        return;
    focus_.point(target->control);
    if (mouse.button == MouseStroke::Button::right)
        return takeRightPress(*target, mouse);
    if (mouse.button != MouseStroke::Button::left)
        return;
    pressed_ = name;
    grip_ = {mouse.row - area().top, mouse.column - area().left};
    isDoubled_ = mouse.isSecond && target->control.onDoubleClick;
    if (!isDoubled_)
        pressAt(*target, mouse);
    else
        doubleClick(window_, name, rowAt(*target, mouse));
}

// A row's menu; what reacts to a mouse-down by itself is a title, which stands for the tray's.
void WindowLayer::takeRightPress(const ControlTarget& target, const MouseStroke& mouse) {
    const bool isTitle = static_cast<bool>(target.control.onMouseDown);
    if (const int row = rowAt(target, mouse); row != noRow)
        askMenu(window_, target.name, row);
    else if (isTitle)
        stage_.titleMenu();
}

// After a double click the release is no click, or what the double click has done would be followed
// by what a click does.
bool WindowLayer::takeHeld(const MouseStroke& mouse) {
    const bool isRelease = mouse.kind == MouseStroke::Kind::release;
    const auto target = targetOf(pressed_);
    if (isRelease)
        pressed_.clear();
    else if (window_.dragged)
        frame_.moveTo(mouse.row - grip_.row, mouse.column - grip_.column);
    if (target && !isDoubled_ && isRelease)
        releaseAt(*target, mouse);
    else if (target && !isDoubled_)
        dragTo(*target, mouse);
    if (isRelease)
        window_.dragged = false;
    return true;
}

} // namespace larkspin
