// A real mouse and real keys, and what comes of them by way of the display.
#pragma once

#include "platform/qt/windows/desk.h"
#include "support/patience.h"

#include <QProcess>
#include <QTest>

namespace larkspin {

inline void hand(const QStringList& does) {
    QProcess::execute("xdotool", does);
}

inline void point(int x, int y) {
    hand({"mousemove", QString::number(x), QString::number(y)});
}

inline void point(const QPoint& at) {
    point(at.x(), at.y());
}

template <typename Condition> bool comes(Desk& desk, Condition condition) {
    const auto looks = [&] {
        desk.settle();
        return condition();
    };
    return QTest::qWaitFor(looks, patienceInMilliseconds);
}

} // namespace larkspin
