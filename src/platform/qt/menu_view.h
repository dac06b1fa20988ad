// A described menu as one of Qt's.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

#include <functional>

class QMenu;
class QPoint;
class QWidget;

namespace larkspin {

// Who draws the menu. A desktop that draws exported menus itself has other rules for captions than
// Qt.
enum class MenuDrawnBy { qt, desktop };

// Fills Qt's menu with the entries as they are now, and gives it the menu's name. It must not be
// open. `choose` gets the action of a chosen entry, inside one of Qt's callbacks.
using Choose = std::function<void(const Task& action)>;
void fillMenu(QMenu& view, const Menu& menu, const Choose& choose, MenuDrawnBy drawnBy);

// Shows one of Qt's own there, which is gone once it is closed.
void popUp(QWidget& over, const Menu& menu, const QPoint& place, const Choose& choose);

} // namespace larkspin
