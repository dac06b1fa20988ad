// A described menu as one of Qt's.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

#include <functional>

class QMenu;

namespace larkspin {

// Whose own rules of writing a caption a menu follows: a desktop that draws exported menus itself
// has others than Qt.
enum class MenuDrawnBy { qt, desktop };

// Makes Qt's menu hold the entries of this one, as they are now, and bear its name. It must not be
// open. `choose` is given what a chosen entry does, inside one of Qt's callbacks.
using Choose = std::function<void(const Task& action)>;
void fillMenu(QMenu& view, const Menu& menu, const Choose& choose, MenuDrawnBy drawnBy);

} // namespace larkspin
