// Boxes on a real display, as they come up while the owner types elsewhere.
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_loop.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {

TEST(Dialogs, TakeTheKeysOnlyWhereTheyAnswerAPress) {
    QtLoop loop;
    QtDialogs dialogs(loop);
    QLineEdit chat;
    chat.show();
    const auto openBox = [] {
        const auto windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(windows, [](QWidget* window) {
            return qobject_cast<QDialog*>(window) && window->isVisible();
        });
        return found == windows.end() ? nullptr : *found;
    };
    for (const bool answersPress : {false, true}) {
        SCOPED_TRACE(answersPress);
        chat.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return chat.hasFocus(); }));
        chat.clear();
        loop.post([&] {
            QWidget* const box = openBox();
            ASSERT_TRUE(QTest::qWaitForWindowExposed(box));
            EXPECT_EQ(answersPress, QTest::qWaitFor([&] { return box->isActiveWindow(); }, 300));
            QProcess::execute("xdotool", {"key", "space"});
            EXPECT_TRUE(QTest::qWaitFor([&] { return !openBox() || !chat.text().isEmpty(); }));
            EXPECT_EQ(answersPress, !openBox());
            box->close();
        });
        if (answersPress)
            dialogs.ownerPresses();
        dialogs.box("anything");
    }
}

} // namespace larkspin
