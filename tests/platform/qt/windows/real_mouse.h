// A real mouse and real keys, and what comes of them by way of the display.
#pragma once

#include "platform/qt/windows/desk.h"

#include <QProcess>
#include <QTest>

namespace larkspin {

inline void hand(const QStringList& does) {
    QProcess::execute("xdotool", does);
}

template <typename Condition> bool comes(Desk& desk, Condition condition) {
    return QTest::qWaitFor([&] {
        desk.settle();
        return condition();
    });
}

} // namespace larkspin
