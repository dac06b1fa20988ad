#include "platform/qt/menu_view.h"

#include "platform/qt/qt_text.h"

#include <QAction>
#include <QMenu>

namespace larkspin {

namespace {

// The caption as plain text. An unescaped "&" (for the desktop "_") would make the next letter a
// shortcut, and a tab would set the rest apart.
QString captionOf(const MenuEntry& entry, MenuDrawnBy drawnBy) {
    QString caption = toQt(entry.caption).replace('\t', ' ').replace('&', "&&");
    if (drawnBy == MenuDrawnBy::desktop)
        caption.replace('_', "__");
    return caption;
}

void addEntries(QMenu& view, const std::vector<MenuEntry>& entries, const Choose& choose,
                MenuDrawnBy drawnBy) {
    for (const MenuEntry& entry : entries) {
        if (entry.isSeparator()) {
            view.addSeparator();
        } else if (entry.isSubmenu) {
            addEntries(*view.addMenu(captionOf(entry, drawnBy)), entry.children, choose, drawnBy);
        } else {
            QAction* const action = view.addAction(captionOf(entry, drawnBy));
            action->setCheckable(entry.checked);
            action->setChecked(entry.checked);
            QObject::connect(action, &QAction::triggered, [choose, chosen = entry.action] {
                if (chosen)
                    choose(chosen);
            });
        }
    }
}

} // namespace

void fillMenu(QMenu& view, const Menu& menu, const Choose& choose, MenuDrawnBy drawnBy) {
    view.clear();
    qDeleteAll(view.findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    view.setWindowTitle(toQt(menu.name));
    addEntries(view, menu.entries(), choose, drawnBy);
}

void popUp(QWidget& over, const Menu& menu, const QPoint& place, const Choose& choose) {
    auto* const view = new QMenu(&over);
    view->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*view, menu, choose, MenuDrawnBy::qt);
    view->popup(place);
}

} // namespace larkspin
