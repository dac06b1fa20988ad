#include "platform/qt/qt_desktop.h"

#include "platform/qt/icon.h"
#include "platform/qt/menu_view.h"

#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

// How long a tray that starts together with the program is waited for.
constexpr Nanoseconds startOfTray = 1s;
constexpr Nanoseconds doubleClickTime = 400ms;

// Where the pointer is. When a key has called the menu, the pointer may be far from all that the
// owner looks at.
QPoint placeOfPopup() {
    const QPoint pointer = QCursor::pos();
    const QWidget* const focus = QApplication::focusWidget();
    if (!focus || QApplication::topLevelAt(pointer))
        return pointer;
    return focus->mapToGlobal(focus->rect().center());
}

} // namespace

QtDesktop::QtDesktop(EventLoop& loop)
    : loop_(loop), trayMenu_(std::make_unique<QMenu>()), popup_(std::make_unique<QMenu>()) {
    QObject::connect(trayMenu_.get(), &QMenu::aboutToShow, [this] { fillTrayMenu(); });
}

QtDesktop::~QtDesktop() = default;

void QtDesktop::addTrayIcon(const TrayIcon& icon) {
    removeTrayIcon();
    icon_ = icon;
    icon_->menu.entries = [this, others = icon.menu.entries] {
        std::vector<MenuEntry> all = ownEntries_;
        for (MenuEntry& entry : others())
            all.push_back(std::move(entry));
        return all;
    };
    showIcon();
    giveUp_ = loop_.once(startOfTray, [this] {
        if (!tray_)
            showIcon();
        if (!tray_ || !QSystemTrayIcon::isSystemTrayAvailable())
            withoutTray_();
    });
}

// When Qt is first asked about trays it finds out which kind there is, and stays with that kind. So
// it isn't asked before there is one. From then on it follows the tray by itself.
void QtDesktop::showIcon() {
    if (!icon_ || (!tray_ && !hasTray_()))
        return;
    if (!tray_) {
        tray_ = std::make_unique<QSystemTrayIcon>(programIcon());
        tray_->setToolTip("larkspin");
        tray_->setContextMenu(trayMenu_.get());
        QObject::connect(tray_.get(), &QSystemTrayIcon::activated,
                         [this](QSystemTrayIcon::ActivationReason reason) { takeClick(reason); });
    }
    fillTrayMenu();
    tray_->show();
}

void QtDesktop::removeTrayIcon() {
    icon_.reset();
    loop_.cancel(std::exchange(giveUp_, TimerId::none));
    if (!hasDisplay_)
        return;
    trayMenu_->close(); // it is filled again for the next icon
    if (tray_)
        tray_->hide();
}

void QtDesktop::popUp(const Menu& menu) {
    // One menu is open at a time. If one can't be closed, the new one doesn't come.
    while (QWidget* open = QApplication::activePopupWidget())
        if (!open->close())
            return;
    fillMenu(*popup_, menu, chooses(), MenuDrawnBy::qt);
    popup_->popup(placeOfPopup());
}

bool QtDesktop::isInTray() const {
    return icon_ && tray_ && tray_->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

void QtDesktop::popUpTrayMenu() {
    if (icon_)
        popUp(icon_->menu);
}

void QtDesktop::fillTrayMenu() {
    if (icon_)
        fillMenu(*trayMenu_, icon_->menu, chooses(),
                 isDrawnByDesktop() ? MenuDrawnBy::desktop : MenuDrawnBy::qt);
}

std::function<void(const Task&)> QtDesktop::chooses() {
    return [this](const Task& action) {
        pressed_();
        loop_.post(action);
    };
}

// An icon in a window of Qt's own has a place; one that the desktop draws has none.
bool QtDesktop::isDrawnByDesktop() const {
    return !tray_->geometry().isValid();
}

// The desktop tells of single clicks only. So each of them counts as a double click, except one
// that comes right after another. From its own window Qt tells of double clicks as well.
void QtDesktop::takeClick(int reason) {
    if (reason == QSystemTrayIcon::DoubleClick)
        toggle();
    if (reason != QSystemTrayIcon::Trigger || !isDrawnByDesktop())
        return;
    const Nanoseconds now = loop_.now();
    if (!toggledAt_ || now - *toggledAt_ >= doubleClickTime) {
        toggledAt_ = now;
        toggle();
    }
}

void QtDesktop::toggle() {
    if (icon_ && icon_->onDoubleClick)
        loop_.post(icon_->onDoubleClick);
}

} // namespace larkspin
