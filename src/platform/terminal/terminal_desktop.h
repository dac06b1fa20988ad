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
    // Prints the menu. An entry can be chosen from it, until one has been or another menu pops up.
    void popUp(const Menu& menu) override;

    // What the owner does. What he can't do is told on the screen.
    void printTrayMenu();
    void chooseFromTray(const std::string& entry);
    void doubleClickTray();
    void chooseFromPopup(const std::string& entry);

private:
    void print(const std::vector<std::string>& lines);
    // A submenu is printed and chooses nothing. The action of any other entry is for the caller to
    // run.
    std::optional<Task> choose(const Menu& menu, const std::string& name);

    TerminalScreen& screen_;
    std::optional<TrayIcon> icon_;
    std::optional<Menu> popup_;
};

} // namespace larkspin
