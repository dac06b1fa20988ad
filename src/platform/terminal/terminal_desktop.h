// The tray icon and popup menus of a terminal: menus are printed, and entries are chosen by name.
#pragma once

#include "shell/desktop.h"

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class TerminalScreen;

class TerminalDesktop : public Desktop {
public:
    explicit TerminalDesktop(TerminalScreen& screen) : screen_(screen) {}

    void addTrayIcon(const TrayIcon& icon) override { icon_ = icon; }
    void removeTrayIcon() override { icon_.reset(); }
    // Printed; its entries can be chosen until one is, or another menu pops up.
    void popUp(const Menu& menu) override;

    // What the owner does. What he can't do is told on the screen.
    void printTrayMenu();
    void chooseFromTray(const std::string& entry);
    void doubleClickTray();
    void chooseFromPopup(const std::string& entry);

private:
    void print(const std::vector<std::string>& lines);
    // A submenu is printed. Anything else is chosen, and the action is to be run.
    std::optional<Task> choose(const Menu& menu, const std::string& name);

    TerminalScreen& screen_;
    std::optional<TrayIcon> icon_;
    std::optional<Menu> popup_;
};

} // namespace larkspin
