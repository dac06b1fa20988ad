// The tray icon and popup menus of a terminal: menus are printed, and entries are chosen by name.
#pragma once

#include "shell/desktop.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

// Shows the owner a line of its own, under a head such as "menu"; what the front end itself has to
// say is headed "terminal".
using ShowUnder = std::function<void(std::string_view head, const std::string& text)>;

class TerminalDesktop : public Desktop {
public:
    explicit TerminalDesktop(ShowUnder show) : show_(std::move(show)) {}

    void addTrayIcon(const TrayIcon& icon) override { icon_ = icon; }
    void removeTrayIcon() override { icon_.reset(); }
    // Prints the menu. An entry can be chosen from it, until one has been or another menu pops up.
    void popUp(const Menu& menu) override;
    // The same for one that is seen already.
    void keepPopup(const Menu& menu) { popup_ = menu; }

    // What the owner does. What he can't do is told on the screen.
    void printTrayMenu();
    void chooseFromTray(const std::string& entry);
    void doubleClickTray();
    void chooseFromPopup(const std::string& entry);

private:
    void tell(const std::string& text) { show_("terminal", text); }
    void print(const std::vector<std::string>& lines);
    // A submenu is printed and chooses nothing. The action of any other entry is for the caller to
    // run.
    std::optional<Task> choose(const Menu& menu, const std::string& name);

    ShowUnder show_;
    std::optional<TrayIcon> icon_;
    std::optional<Menu> popup_;
};

} // namespace larkspin
