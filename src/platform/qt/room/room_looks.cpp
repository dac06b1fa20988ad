#include "platform/qt/room/room_looks.h"

#include "host/preferences.h"
#include "platform/qt/looks.h"

#include <QApplication>
#include <QShortcut>
#include <QWheelEvent>
#include <QWidget>

namespace larkspin {

namespace {

constexpr int wheelStep = 120; // what a wheel with notches tells of one of them

} // namespace

RoomLooks::RoomLooks(QWidget& window, Preferences& preferences)
    : window_(window), preferences_(preferences) {
    const auto onKeys = [&](const QList<QKeySequence>& keys, const auto& act) {
        for (const QKeySequence& each : keys)
            connect(new QShortcut(each, &window), &QShortcut::activated, this, act);
    };
    onKeys({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
           [this] { preferences_.changeTextSize(1); });
    onKeys({QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { preferences_.changeTextSize(-1); });
    onKeys({QKeySequence(Qt::CTRL | Qt::Key_0)},
           [this] { preferences_.setTextSize(Preferences::usualText); });
    // Lists and texts would take the wheel for themselves.
    qApp->installEventFilter(this);
    preferences_.onChange([this] { show(); });
    show();
}

void RoomLooks::show() {
    showInColors(preferences_.colors());
    showTextAt(preferences_.textSize());
    const QFont font = fontOf({.family = "Arial", .points = 10}, preferences_.textSize());
    if (window_.font() != font)
        window_.setFont(font);
}

bool RoomLooks::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Wheel || !watched->isWidgetType())
        return false;
    const auto& wheel = static_cast<const QWheelEvent&>(*event);
    if (!(wheel.modifiers() & Qt::ControlModifier) ||
        static_cast<QWidget*>(watched)->window() != &window_)
        return false;
    turned_ += wheel.angleDelta().y();
    if (const int steps = turned_ / wheelStep; steps != 0) {
        turned_ -= steps * wheelStep;
        preferences_.changeTextSize(steps);
    }
    return true;
}

} // namespace larkspin
