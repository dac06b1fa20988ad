// A described menu as one of Qt's.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

class QMenu;

namespace larkspin {

// Whose own rules of writing a caption a menu follows: a desktop that draws exported menus itself
// has others than Qt.
enum class MenuDrawnBy { qt, desktop };

// Makes Qt's menu hold the entries of this one, as they are now, and bear its name. It must not be
// open.
void fillMenu(QMenu& view, const Menu& menu, EventLoop& loop, MenuDrawnBy drawnBy);

} // namespace larkspin
