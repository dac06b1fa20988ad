#include "platform/qt/windows/window_mover.h"

#include "platform/qt/looks.h"
#include "platform/qt/places.h"
#include "shell/controls.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace larkspin {

namespace {

constexpr int firstWay = 3;   // in pixels, before the window follows
constexpr int leastSeen = 48; // in pixels, of the strip by which a window can be fetched back

int distance(QPoint point, const QRect& area) {
    const auto beyond = [](int at, int first, int last) {
        return std::max({first - at, at - last, 0});
    };
    return beyond(point.x(), area.left(), area.right()) +
           beyond(point.y(), area.top(), area.bottom());
}

} // namespace

QPoint WindowMover::described() const {
    return pixelsOf(window_.place, widget_.logicalDpiX()).topLeft();
}

// A window that the owner leaves half outside the screens stays there, as long as he can fetch it
// back. Where one first appears it is moved to be seen whole, if it fits.
QPoint WindowMover::onScreen(QPoint corner, Seen wanted) const {
    const QRect window(corner, widget_.size());
    const int strip = std::min(pixelsOf(stripHeight, widget_.logicalDpiX()), window.height());
    const QRect handle(corner, QSize(window.width(), strip));
    QRect nearest;
    QRegion areas;
    bool isInReach = false;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        const QRect seen = area & handle;
        areas += area;
        if (seen.width() >= std::min(leastSeen, window.width()) && seen.height() == strip)
            isInReach = true;
        if (nearest.isNull() ||
            distance(window.center(), area) < distance(window.center(), nearest))
            nearest = area;
    }
    const bool isWhole = (QRegion(window) - areas).isEmpty();
    const bool stays = wanted == Seen::whole ? isWhole : isInReach;
    return stays || nearest.isNull() ? corner : cornerWithin(nearest, window);
}

QPoint WindowMover::middleOfScreen() const {
    QRect window = widget_.rect();
    if (neighbours_.main.isSeen()) {
        window.moveCenter(neighbours_.main.area().center());
        return window.topLeft();
    }
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return described();
    window.moveCenter(screen->availableGeometry().center());
    return window.topLeft();
}

// A main window that comes up at the same time gets its place later.
bool WindowMover::comesBeside(bool appears) {
    const MainWindow& main = neighbours_.main;
    const bool isWanted = window_.beside && !window_.standsOn && main.exists() && !main.isAway() &&
                          (appears || awaitsMain_);
    awaitsMain_ = isWanted && !main.isSeen();
    return isWanted && !awaitsMain_;
}

QPoint WindowMover::beside() const {
    const MainWindow& main = neighbours_.main;
    const QSize above(0, pixelsOf(neighbours_.above(window_), widget_.logicalDpiX()));
    return cornerBeside(main.area(), widget_.size() + above, main.frame(), main.parts(),
                        neighbours_.others(window_), window_.passes ? Near::foot : Near::top) +
           QPoint(0, above.height());
}

bool WindowMover::refresh(bool appears, bool areOtherScreens) {
    const QPoint wanted = described();
    const bool isBeside = comesBeside(appears);
    if (!isBeside && !appears && !areOtherScreens && wanted == asked_)
        return false;
    const Seen seen = wanted == asked_ ? Seen::strip : Seen::whole;
    const QPoint corner = isBeside          ? beside()
                          : window_.centred ? middleOfScreen()
                                            : onScreen(wanted, seen);
    // Qt tells of this move as well, which isn't one of the owner's.
    isAsking_ = true;
    widget_.move(corner);
    isAsking_ = false;
    asked_ = wanted;
    // The description is told where the window really stands.
    if (corner != wanted)
        tellPlace();
    return true;
}

void WindowMover::moved() {
    if (isAsking_ || !widget_.isVisible() || widget_.pos() == described())
        return;
    // A window manager may have its own idea of the place before the window is seen.
    if (widget_.windowHandle()->isExposed())
        window_.centred = window_.beside = false;
    tellPlace();
}

void WindowMover::tellPlace() {
    window_.place.left = twipsOf(widget_.x(), widget_.logicalDpiX());
    window_.place.top = twipsOf(widget_.y(), widget_.logicalDpiX());
    asked_ = described();
}

void WindowMover::grip(QPoint mouse) {
    window_.dragged = false; // a quick click may have left it so
    gripped_ = mouse;
    hold_ = mouse - widget_.pos();
    follows_ = false;
}

// The window manager moves the window, and keeps the mouse to itself until the button is up. If
// there is none that can do this, the window is moved from here.
void WindowMover::follow(QPoint mouse) {
    if (!window_.dragged)
        return;
    if (!follows_) {
        if ((mouse - gripped_).manhattanLength() < firstWay)
            return;
        if (widget_.windowHandle()->startSystemMove()) {
            window_.dragged = false;
            return;
        }
        follows_ = true;
    }
    widget_.move(mouse - hold_);
}

void WindowMover::nudge(QPoint way) {
    widget_.move(onScreen(widget_.pos() + way, Seen::strip));
}

} // namespace larkspin
