#include "platform/qt/window_mover.h"

#include "platform/qt/looks.h"
#include "shell/controls.h"

#include <QCursor>
#include <QGuiApplication>
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

QPoint movedInto(const QRect& area, const QRect& window) {
    const auto into = [](int start, int length, int first, int last) {
        return std::max(first, std::min(start, last + 1 - length));
    };
    return {into(window.left(), window.width(), area.left(), area.right()),
            into(window.top(), window.height(), area.top(), area.bottom())};
}

} // namespace

QPoint WindowMover::described() const {
    return pixelsOf(window_.place, widget_.logicalDpiX()).topLeft();
}

// One that the owner has left half outside stays so, as long as he can fetch it back.
QPoint WindowMover::onScreen(QPoint corner) const {
    const QRect window(corner, widget_.size());
    const int strip = std::min(pixelsOf(stripHeight, widget_.logicalDpiX()), window.height());
    const QRect handle(corner, QSize(window.width(), strip));
    QRect nearest;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        const QRect seen = area & handle;
        if (seen.width() >= std::min(leastSeen, window.width()) && seen.height() == strip)
            return corner;
        if (nearest.isNull() ||
            distance(window.center(), area) < distance(window.center(), nearest))
            nearest = area;
    }
    return nearest.isNull() ? corner : movedInto(nearest, window);
}

QPoint WindowMover::middleOfScreen() const {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return described();
    QRect window = widget_.rect();
    window.moveCenter(screen->availableGeometry().center());
    return window.topLeft();
}

bool WindowMover::refresh(bool inAnyCase) {
    const QPoint wanted = described();
    if (!inAnyCase && wanted == asked_)
        return false;
    const QPoint corner = window_.centred ? middleOfScreen() : onScreen(wanted);
    isAsking_ = true;
    widget_.move(corner);
    isAsking_ = false;
    asked_ = wanted;
    if (corner != wanted)
        tellPlace();
    return true;
}

void WindowMover::moved() {
    if (isAsking_ || !widget_.isVisible() || widget_.pos() == described())
        return;
    window_.centred = false;
    tellPlace();
}

void WindowMover::tellPlace() {
    window_.place.left = twipsOf(widget_.x(), widget_.logicalDpiX());
    window_.place.top = twipsOf(widget_.y(), widget_.logicalDpiX());
    asked_ = described();
}

void WindowMover::grip(QPoint mouse) {
    gripped_ = mouse;
    hold_ = mouse - widget_.pos();
    follows_ = false;
}

// The window manager moves it, and keeps the mouse to itself until the button is up. Where there is
// none, it is moved from here.
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
    widget_.move(onScreen(widget_.pos() + way));
}

} // namespace larkspin
