// The tray and the menus of a terminal's screen, which are drawn there, and can be worked by words
// as well.
#pragma once

#include "platform/terminal/terminal_desktop.h"
#include "shell/desktop.h"

namespace larkspin {

class WordedDesktop : public Desktop {
public:
    // Both must live on.
    WordedDesktop(Desktop& drawn, TerminalDesktop& worded) : drawn_(drawn), worded_(worded) {}

    void addTrayIcon(const TrayIcon& icon) override {
        worded_.addTrayIcon(icon);
        drawn_.addTrayIcon(icon);
    }
    void removeTrayIcon() override {
        worded_.removeTrayIcon();
        drawn_.removeTrayIcon();
    }
    void popUp(const Menu& menu) override {
        worded_.keepPopup(menu);
        drawn_.popUp(menu);
    }

private:
    Desktop& drawn_;
    TerminalDesktop& worded_;
};

} // namespace larkspin
