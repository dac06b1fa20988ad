// A described menu as one of Qt's.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

#include <functional>

class QMenu;

namespace larkspin {

// Who draws the menu. A desktop that draws exported menus itself has other rules for captions than
// Qt.
enum class MenuDrawnBy { qt, desktop };

// Fills Qt's menu with the entries as they are now, and gives it the menu's name. It must not be
// open. `choose` gets the action of a chosen entry, inside one of Qt's callbacks.
using Choose = std::function<void(const Task& action)>;
void fillMenu(QMenu& view, const Menu& menu, const Choose& choose, MenuDrawnBy drawnBy);

} // namespace larkspin
