#include "platform/terminal/windows/control_keys.h"

#include "platform/terminal/windows/cell_layout.h"
#include "platform/terminal/windows/key_meanings.h"
#include "shell/control_events.h"
#include "text/row_list.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace larkspin {

namespace {

using Kind = Control::Kind;
using KeyKind = KeyStroke::Kind;

constexpr int sliderPage = 10;

// The row that a key leads to from this one.
std::optional<int> rowAfter(KeyKind key, int row, int page, int count) {
    const auto bounded = [count](int wanted) { return std::clamp(wanted, 0, count - 1); };
    if (count == 0)
        return std::nullopt;
    switch (key) {
    case KeyKind::up:
        return bounded(row - 1);
    case KeyKind::down:
        return bounded(row + 1);
    case KeyKind::pageUp:
        return bounded(row - page);
    case KeyKind::pageDown:
        return bounded(row + page);
    case KeyKind::home:
        return 0;
    case KeyKind::end:
        return count - 1;
    default:
        return std::nullopt;
    }
}

// The current row is selected, or isn't any more.
void toggleCurrent(const ControlTarget& target) {
    const RowList& rows = *target.control.rows;
    const int current = rows.currentIndex();
    std::vector<int> selected;
    for (int row = 0, left = rows.selectedCount(); left > 0; ++row)
        if (rows.isSelected(row)) {
            --left;
            if (row != current)
                selected.push_back(row);
        }
    if (current >= 0 && !rows.isSelected(current))
        selected.push_back(current);
    selectRows(target.window, target.name, selected);
}

bool strikeList(const ControlTarget& target, const KeyStroke& key) {
    const RowList& rows = *target.control.rows;
    const int current = rows.currentIndex();
    if (key.kind == KeyKind::enter) {
        const auto name = target.name;
        Window& window = target.window;
        pressKey(window, name, Key::enter);
        pressWithoutMouse(window, name, current);
        return true;
    }
    if (isTypedSpace(key)) {
        if (target.control.selectsMany)
            toggleCurrent(target);
        else
            selectRows(target.window, target.name, {current});
        return true;
    }
    const auto row = rowAfter(key.kind, current, std::max(target.area.rows - 1, 1), rows.count());
    if (!row)
        return false;
    if (key.shift && target.control.selectsMany && current >= 0) {
        if (target.state.anchor < 0 || target.state.anchor >= rows.count())
            target.state.anchor = current;
        selectRows(target.window, target.name, rowsBetween(target.state.anchor, *row));
        return true;
    }
    target.state.anchor = *row;
    selectRows(target.window, target.name, {*row});
    return true;
}

bool strikeSlider(const ControlTarget& target, const KeyStroke& key) {
    const Control& slider = target.control;
    const int value = slider.value ? slider.value() : slider.least;
    const auto wanted = [&]() -> std::optional<int> {
        switch (key.kind) {
        case KeyKind::left:
            return value - 1;
        case KeyKind::right:
            return value + 1;
        case KeyKind::pageUp:
            return value + sliderPage;
        case KeyKind::pageDown:
            return value - sliderPage;
        case KeyKind::home:
            return slider.least;
        case KeyKind::end:
            return slider.most;
        default:
            return std::nullopt;
        }
    }();
    if (wanted)
        moveSlider(target.window, target.name, *wanted);
    return wanted.has_value();
}

bool strikeCombo(const ControlTarget& target, const KeyStroke& key) {
    if (key.kind == KeyKind::enter || isTypedSpace(key) || (key.kind == KeyKind::down && key.alt)) {
        openRows(target);
        return true;
    }
    const RowList& rows = *target.control.rows;
    const auto row = rowAfter(key.kind, rows.currentIndex(), sliderPage, rows.count());
    if (row)
        chooseRow(target.window, target.name, *row);
    return row.has_value();
}

// What is in the field from now on is what the description will read, too, unless that refuses.
void tellEdit(const ControlTarget& target) {
    const std::string text = target.state.text.text();
    target.state.described = text;
    editText(target.window, target.name, text);
}

using Edit = void (EditedText::*)();

Edit moveOf(const KeyStroke& key) {
    const bool byWord = key.ctrl || key.alt;
    switch (key.kind) {
    case KeyKind::left:
        return byWord ? &EditedText::goWordLeft : &EditedText::goLeft;
    case KeyKind::right:
        return byWord ? &EditedText::goWordRight : &EditedText::goRight;
    case KeyKind::home:
        return &EditedText::goToStart;
    case KeyKind::end:
        return &EditedText::goToEnd;
    default:
        return nullptr;
    }
}

Edit changeOf(const KeyStroke& key) {
    if (key.kind == KeyKind::backspace)
        return key.ctrl || key.alt ? &EditedText::cutWordLeft : &EditedText::eraseLeft;
    if (key.kind == KeyKind::del)
        return &EditedText::eraseRight;
    if (key.kind != KeyKind::character || !key.ctrl)
        return nullptr;
    constexpr std::pair<char32_t, Edit> changes[] = {{U'u', &EditedText::cutToStart},
                                                     {U'k', &EditedText::cutToEnd},
                                                     {U'w', &EditedText::cutToBlank}};
    const auto* const change =
        std::ranges::find(changes, key.character, &std::pair<char32_t, Edit>::first);
    return change == std::end(changes) ? nullptr : change->second;
}

bool strikeField(const ControlTarget& target, const KeyStroke& key) {
    readDescription(target.control, target.state); // it may not have been drawn yet
    EditedText& text = target.state.text;
    if (const Edit move = moveOf(key)) {
        (text.*move)();
        return true;
    }
    if (!takesText(target.control))
        return false;
    if (const Edit change = changeOf(key)) {
        (text.*change)();
        tellEdit(target);
        return true;
    }
    if (key.kind != KeyKind::character || key.ctrl || key.alt)
        return false;
    text.insert(std::u32string(1, key.character));
    tellEdit(target);
    return true;
}

bool strikeLines(const ControlTarget& target, const KeyStroke& key) {
    const auto count =
        static_cast<int>(linesOf(target.state.described, target.area.columns - 2).size());
    const int last = std::max(count - target.area.rows, 0);
    const auto first = rowAfter(key.kind, target.state.first, target.area.rows, last + 1);
    if (!first || count <= target.area.rows)
        return false;
    target.state.first = *first;
    return true;
}

bool strikeButton(const ControlTarget& target, const KeyStroke& key) {
    if (key.kind != KeyKind::enter && !isTypedSpace(key))
        return false;
    Window& window = target.window;
    const auto name = target.name;
    if (key.kind == KeyKind::enter)
        pressKey(window, name, Key::enter);
    pressWithoutMouse(window, name);
    return true;
}

bool strikeByKind(const ControlTarget& target, const KeyStroke& key) {
    switch (target.control.kind) {
    case Kind::list:
        return strikeList(target, key);
    case Kind::slider:
        return strikeSlider(target, key);
    case Kind::combo:
        return strikeCombo(target, key);
    case Kind::textField:
        return hasSeveralLines(target.control) ? strikeLines(target, key)
                                               : strikeField(target, key);
    default:
        return strikeButton(target, key);
    }
}

} // namespace

bool takesFocus(const Control& control) {
    const bool isLabel = control.kind == Kind::label || control.kind == Kind::swatch;
    return !isLabel || control.onClick || control.onDoubleClick;
}

bool takesText(const Control& control) {
    return control.kind == Kind::textField && control.onEdit && !hasSeveralLines(control);
}

bool strike(const ControlTarget& target, const KeyStroke& key) {
    Window& window = target.window;
    const auto name = target.name;
    if (strikeByKind(target, key))
        return true;
    // The others hear of these, too.
    if (key.kind != KeyKind::enter && key.kind != KeyKind::del)
        return false;
    pressKey(window, name, key.kind == KeyKind::enter ? Key::enter : Key::del);
    return true;
}

void paste(const ControlTarget& target, const std::string& text) {
    readDescription(target.control, target.state);
    std::u32string characters = charactersOf(text);
    std::erase_if(characters, [](char32_t each) { return each < U' ' || each == U'\x7F'; });
    target.state.text.insert(characters);
    tellEdit(target);
}

void openRows(const ControlTarget& target) {
    const RowList& rows = *target.control.rows;
    std::vector<MenuEntry> entries;
    for (int row = 0; row < rows.count(); ++row)
        entries.push_back({.name = std::to_string(row),
                           .caption = std::string(rows.row(row)),
                           .action = [&window = target.window, name = target.name,
                                      row] { chooseRow(window, name, row); },
                           .checked = row == rows.currentIndex()});
    target.menu.open(std::move(entries), target.area);
}

std::vector<int> rowsBetween(int from, int to) {
    std::vector<int> rows;
    for (int row = from; row != to; row += from < to ? 1 : -1)
        rows.push_back(row);
    rows.push_back(to);
    return rows;
}

} // namespace larkspin
