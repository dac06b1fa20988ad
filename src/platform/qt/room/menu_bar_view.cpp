#include "platform/qt/room/menu_bar_view.h"

#include "platform/qt/menu_view.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
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
        connect(view, &QMenu::aboutToHide, this, [bar = QPointer(this), &loop] {
            loop.post([bar] {
                if (bar)
                    bar->leave();
            });
        });
    }
    // With the keyboard itself the bar wouldn't know to whom to give it back.
    const auto goToFirst = [this] {
        QAction* const first = actions().value(0);
        setActiveAction(first);
        first->menu()->setActiveAction(first->menu()->actions().value(0));
    };
    connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this, goToFirst);
}

// Escape leads from a menu to the bar. There the letters of the next line would open menus.
void MenuBarView::leave() {
    if (!hasFocus() || QApplication::activePopupWidget())
        return;
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    keyPressEvent(&escape);
}

} // namespace larkspin
