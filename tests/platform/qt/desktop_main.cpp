// The tests of the desktop run on an X display with a window manager, which is theirs alone.
#include "platform/qt/looks.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <cstdio>
#include <gtest/gtest.h>

// A window that comes while the window manager begins may stay unmanaged.
static bool givesFrames() {
    QWidget probe;
    probe.show();
    return QTest::qWaitFor([&] { return probe.frameGeometry() != probe.geometry(); }, 200);
}

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (qgetenv("DISPLAY").isEmpty()) {
        std::puts("a display is needed: xvfb-run -a desktop_tests");
        return 1;
    }
    QApplication application(count, arguments);
    application.setQuitOnLastWindowClosed(false);
    larkspin::applyLooks(application);
    QProcess manager;
    manager.start("openbox", {"--sm-disable"});
    if (!manager.waitForStarted() || !QTest::qWaitFor(givesFrames)) {
        std::puts("the window manager doesn't begin");
        return 1;
    }
    const int result = RUN_ALL_TESTS();
    manager.terminate();
    manager.waitForFinished();
    return result;
}
