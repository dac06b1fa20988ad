#include "platform/qt/room/menu_bar_view.h"

#include "platform/qt/menu_view.h"
#include "platform/qt/qt_text.h"

#include <QMenu>
#include <QShortcut>

namespace larkspin {

MenuBarView::MenuBarView(EventLoop& loop, const std::vector<Menu>& menus, const Task& pressed) {
    setNativeMenuBar(false); // it belongs to the window, wherever the desktop shows others
    setAccessibleName("menus");
    for (const Menu& menu : menus) {
        QMenu* const view = addMenu('&' + toQt(menu.name));
        view->setToolTipsVisible(false);
        connect(view, &QMenu::aboutToShow, view, [view, menu, &loop, pressed] {
            const Choose choose = [&loop, pressed](const Task& action) {
                pressed();
                loop.post(action);
            };
            fillMenu(*view, menu, choose, MenuDrawnBy::qt);
        });
    }
    const auto goToFirst = [this] {
        setFocus(Qt::MenuBarFocusReason);
        setActiveAction(actions().value(0));
    };
    connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this, goToFirst);
}

} // namespace larkspin
