#include "platform/terminal/terminal_desktop.h"

#include "platform/terminal/description_text.h"

namespace larkspin {

void TerminalDesktop::popUp(const Menu& menu) {
    popup_ = menu;
    print(menuLines(menu));
}

void TerminalDesktop::printTrayMenu() {
    if (icon_)
        print(menuLines(icon_->menu));
    else
        tell("there is no tray icon");
}

// The action is copied before it runs, since it may take the icon away.
void TerminalDesktop::chooseFromTray(const std::string& entry) {
    if (!icon_) {
        tell("there is no tray icon");
        return;
    }
    const auto action = choose(icon_->menu, entry);
    if (action && *action)
        (*action)();
}

void TerminalDesktop::doubleClickTray() {
    if (!icon_)
        tell("there is no tray icon");
    else if (const Task action = icon_->onDoubleClick)
        action();
}

void TerminalDesktop::chooseFromPopup(const std::string& entry) {
    if (!popup_) {
        tell("no menu is open");
        return;
    }
    const auto action = choose(*popup_, entry);
    if (!action)
        return;
    // The menu is closed before its action runs, which may open another one.
    popup_.reset();
    if (*action)
        (*action)();
}

std::optional<Task> TerminalDesktop::choose(const Menu& menu, const std::string& name) {
    const auto entries = menu.entries();
    const MenuEntry* const entry = findEntry(entries, name);
    if (!entry) {
        tell("the menu has no entry " + name);
        return std::nullopt;
    }
    if (entry->isSubmenu) {
        print(submenuLines(*entry));
        return std::nullopt;
    }
    return entry->action;
}

void TerminalDesktop::print(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        show_("menu", line);
}

} // namespace larkspin
