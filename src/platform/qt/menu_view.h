// A described menu as one of Qt's.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

#include <vector>

class QMenu;

namespace larkspin {

// Whose own rules of writing a caption a menu follows: a desktop that draws exported menus itself
// has others than Qt.
enum class MenuDrawnBy { qt, desktop };

// Makes the menu hold these entries and no others. It must not be open.
void fillMenu(QMenu& menu, const std::vector<MenuEntry>& entries, EventLoop& loop,
              MenuDrawnBy drawnBy);

} // namespace larkspin
