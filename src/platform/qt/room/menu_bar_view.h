// The described menus of the room's window as Qt's menu bar. Each is filled as it opens. Alt with a
// menu's first letter opens it, F10 goes to the first one. Whoever leaves a menu has left the bar.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

#include <QMenuBar>
#include <vector>

namespace larkspin {

class MenuBarView : public QMenuBar {
public:
    // The loop must outlive it. The task is called at once when the owner chooses an entry.
    MenuBarView(EventLoop& loop, const std::vector<Menu>& menus, const Task& pressed);

private:
    void leave();
};

} // namespace larkspin
