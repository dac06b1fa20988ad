#include "platform/terminal/terminal_commands.h"

#include "host/slash_help.h"
#include "platform/terminal/description_text.h"
#include "shell/control_events.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/parts.h"
#include "text/row_list.h"
#include "text/typed_words.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace larkspin {

namespace {

using Kind = Control::Kind;

// A count from 1; nothing for what isn't written in digits alone.
std::optional<int> countOf(std::string_view digits) {
    return plainNumber(digits, 1, RowList::limit);
}

std::optional<Key> keyOf(std::string_view name) {
    if (equalFolded(name, "enter"))
        return Key::enter;
    if (equalFolded(name, "escape"))
        return Key::escape;
    if (equalFolded(name, "delete"))
        return Key::del;
    return std::nullopt;
}

bool hasRows(const Control& control) {
    return control.rows && (control.kind == Kind::list || control.kind == Kind::combo);
}

} // namespace

TerminalCommands::TerminalCommands(ShowUnder show, TerminalDesktop& desktop,
                                   std::vector<SlashWord> roomWords,
                                   std::function<void(const std::string& line)> say)
    : show_(std::move(show)), desktop_(desktop),
      words_([this](const std::string& text) { tell(text); }) {
    addOtherWords(std::move(roomWords), std::move(say));
    addWindowWords();
}

void TerminalCommands::addWindowWords() {
    using Self = TerminalCommands;
    const auto by = [this](bool (Self::*work)(std::string_view)) {
        return [this, work](std::string_view rest) { return (this->*work)(rest); };
    };
    words_.add(about(
        "windows",
        {
            {"windows", "", "names the windows", by(&Self::windows)},
            {"show", "WINDOW [PAGE]", "prints a window, of long lists a page", by(&Self::show)},
            {"click", "WINDOW.CONTROL [ROW]", "clicks on a control, or on a row", by(&Self::click)},
            {"double", "WINDOW.CONTROL [ROW]", "the same with a double click",
             by(&Self::doubleClick)},
            {"select", "WINDOW.CONTROL ROW...", "selects rows: 1 3 7-9", by(&Self::select)},
            {"key", "WINDOW.CONTROL delete|enter|escape|menu", "strikes a key on a control",
             by(&Self::key)},
            {"set", "WINDOW.CONTROL VALUE", "sets a slider, a combo or a text field",
             by(&Self::set)},
            {"hover", "WINDOW.CONTROL", "moves the mouse over a control", by(&Self::hoverOver)},
            {"menu", "[ENTRY]", "prints the tray icon's menu, or chooses from it", by(&Self::menu)},
            {"choose", "ENTRY", "chooses from the menu that popped up last", by(&Self::choose)},
            {"tray", "", "double clicks the tray icon", by(&Self::tray)},
        }));
}

void TerminalCommands::addOtherWords(std::vector<SlashWord> roomWords,
                                     std::function<void(const std::string& line)> say) {
    const auto now = [say = std::move(say)](std::string_view rest) {
        if (rest.empty())
            return false;
        say(textAfter(rest));
        return true;
    };
    words_.add(std::move(roomWords));
    words_.add({
        {"now", "LINE", "says a line without waiting for the one at work", now, {}, "talking"},
        helpWord(
            words_, [this] { return trigger_(); }, [this](const std::string& text) { tell(text); }),
        quitWord([this] { quit_(); }),
    });
}

void TerminalCommands::connect(std::vector<Window*> windows, Task quit) {
    windows_ = std::move(windows);
    quit_ = std::move(quit);
}

bool TerminalCommands::windows(std::string_view) {
    for (const Window* window : windows_)
        show_("window", window->visible ? window->name : window->name + " (hidden)");
    return true;
}

bool TerminalCommands::show(std::string_view rest) {
    const auto name = takeWord(rest), number = takeWord(rest);
    const auto page = number.empty() ? 1 : countOf(number);
    if (name.empty() || !page || !takeWord(rest).empty())
        return false;
    const Window* const window = findWindow(name);
    if (!window)
        return true;
    const auto lines = windowLines(*window, *page);
    for (const std::string& line : lines)
        show_("window", line);
    // A later page of a window without lists.
    if (lines.empty())
        tell(window->name + " has one page");
    return true;
}

bool TerminalCommands::click(std::string_view rest) {
    return pressOn(rest, &press);
}

bool TerminalCommands::doubleClick(std::string_view rest) {
    return pressOn(rest, &pressTwice);
}

// A list is pressed on the row that is named, or else on its current one.
bool TerminalCommands::pressOn(std::string_view rest, Press pressIt) {
    const auto name = takeWord(rest), number = takeWord(rest);
    if (name.empty() || !takeWord(rest).empty())
        return false;
    const auto target = findControl(name);
    if (!target)
        return true;
    int row = noRow;
    if (!number.empty()) {
        const auto wanted = rowOf(*target, number);
        if (!wanted)
            return true;
        row = *wanted;
    } else if (hasRows(target->control)) {
        row = target->control.rows->currentIndex();
        if (row == noRow) {
            tell("no row of " + target->shownName + " is current: which one?");
            return true;
        }
    }
    pressIt(target->window, target->name, row);
    return true;
}

bool TerminalCommands::select(std::string_view rest) {
    const auto name = takeWord(rest);
    auto range = takeWord(rest);
    if (range.empty())
        return false;
    const auto target = findControl(name);
    if (!target)
        return true;
    std::vector<int> rows;
    for (; !range.empty(); range = takeWord(rest)) {
        const auto [from, to, isRange] = partedAt(range, '-');
        const auto first = rowOf(*target, from);
        const auto last = isRange ? rowOf(*target, to) : first;
        if (!first || !last)
            return true;
        if (*first > *last)
            return false;
        for (int row = *first; row <= *last; ++row)
            rows.push_back(row);
    }
    const bool isList = target->control.kind == Kind::list;
    if (!selectRows(target->window, target->name, rows))
        tell(isList ? "of " + target->shownName + " one row can be selected"
                    : target->shownName + " is no list");
    return true;
}

bool TerminalCommands::key(std::string_view rest) {
    const auto name = takeWord(rest);
    const auto keyName = takeWord(rest);
    const auto wanted = keyOf(keyName);
    const bool isMenu = equalFolded(keyName, "menu");
    if (!(wanted || isMenu) || !takeWord(rest).empty())
        return false;
    const auto target = findControl(name);
    if (!target)
        return true;
    if (wanted)
        pressKey(target->window, target->name, *wanted);
    else if (!askMenu(target->window, target->name))
        tell(target->shownName + " has no menu now");
    return true;
}

bool TerminalCommands::set(std::string_view rest) {
    const auto name = takeWord(rest);
    if (name.empty() || rest.empty())
        return false;
    const auto target = findControl(name);
    if (!target)
        return true;
    const std::string value = textAfter(rest);
    if (target->control.kind == Kind::slider)
        setSlider(*target, value);
    else if (target->control.kind == Kind::combo)
        setCombo(*target, value);
    else if (!editText(target->window, target->name, value))
        tell(target->shownName + " has no value to set");
    return true;
}

void TerminalCommands::setSlider(const Target& target, const std::string& value) {
    const auto wanted = number(value);
    if (!wanted) {
        tell(target.shownName + " takes a number");
        return;
    }
    // However large a number the owner types, the slider goes to its nearer end.
    using Limits = std::numeric_limits<int>;
    moveSlider(
        target.window, target.name,
        static_cast<int>(std::clamp<std::int64_t>(rounded(*wanted), Limits::min(), Limits::max())));
}

// Takes the row with that text, or else the one with that number.
void TerminalCommands::setCombo(const Target& target, const std::string& value) {
    const RowList* const rows = target.control.rows;
    for (int row = 0; rows && row < rows->count(); ++row) {
        if (equalFolded(rows->row(row), value)) {
            chooseRow(target.window, target.name, row);
            return;
        }
    }
    if (const auto row = rowOf(target, value))
        chooseRow(target.window, target.name, *row);
}

bool TerminalCommands::hoverOver(std::string_view rest) {
    const auto name = takeWord(rest);
    if (name.empty() || !takeWord(rest).empty())
        return false;
    if (const auto target = findControl(name))
        hover(target->window, target->name);
    return true;
}

bool TerminalCommands::menu(std::string_view rest) {
    const auto entry = takeWord(rest);
    if (entry.empty())
        desktop_.printTrayMenu();
    else
        desktop_.chooseFromTray(std::string(entry));
    return true;
}

bool TerminalCommands::choose(std::string_view rest) {
    const auto entry = takeWord(rest);
    if (entry.empty())
        return false;
    desktop_.chooseFromPopup(std::string(entry));
    return true;
}

bool TerminalCommands::tray(std::string_view) {
    desktop_.doubleClickTray();
    return true;
}

Window* TerminalCommands::findWindow(std::string_view name) const {
    for (Window* window : windows_)
        if (equalFolded(window->name, name))
            return window;
    tell("there is no window " + std::string(name));
    return nullptr;
}

// Says what is wrong with a name: there is no such window, it has no such control, or the control
// isn't shown.
std::optional<TerminalCommands::Target> TerminalCommands::findControl(std::string_view name) const {
    const auto [windowName, wanted, isParted] = partedAt(name, '.');
    Window* const window = findWindow(windowName);
    if (!window)
        return std::nullopt;
    for (const Control& control : window->controls) {
        if (!equalFolded(control.name, wanted))
            continue;
        const std::string shownName = window->name + '.' + control.name;
        if (isShown(*window, control))
            return Target{*window, control, control.name, shownName};
        tell((window->visible ? shownName : window->name) + " is hidden");
        return std::nullopt;
    }
    tell(window->name + " has no control " + std::string(wanted));
    return std::nullopt;
}

std::optional<int> TerminalCommands::rowOf(const Target& target, std::string_view number) const {
    const int count = hasRows(target.control) ? target.control.rows->count() : 0;
    const auto row = countOf(number);
    if (row && *row <= count)
        return *row - 1;
    tell(target.shownName +
         (count == 0 ? " has no rows" : " has the rows 1 to " + std::to_string(count)));
    return std::nullopt;
}

} // namespace larkspin
