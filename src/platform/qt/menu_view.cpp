#include "platform/qt/menu_view.h"

#include "platform/qt/qt_text.h"

#include <QAction>
#include <QMenu>

namespace larkspin {

namespace {

// Plain text: no letter of it is a shortcut, and no part is set apart.
QString captionOf(const MenuEntry& entry, MenuDrawnBy drawnBy) {
    QString caption = toQt(entry.caption).replace('\t', ' ').replace('&', "&&");
    if (drawnBy == MenuDrawnBy::desktop)
        caption.replace('_', "__");
    return caption;
}

} // namespace

void fillMenu(QMenu& menu, const std::vector<MenuEntry>& entries, EventLoop& loop,
              MenuDrawnBy drawnBy) {
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    for (const MenuEntry& entry : entries) {
        if (entry.isSeparator()) {
            menu.addSeparator();
        } else if (entry.isSubmenu) {
            fillMenu(*menu.addMenu(captionOf(entry, drawnBy)), entry.children, loop, drawnBy);
        } else {
            QAction* const action = menu.addAction(captionOf(entry, drawnBy));
            action->setCheckable(entry.checked);
            action->setChecked(entry.checked);
            QObject::connect(action, &QAction::triggered, [&loop, chosen = entry.action] {
                if (chosen)
                    loop.post(chosen);
            });
        }
    }
}

} // namespace larkspin
