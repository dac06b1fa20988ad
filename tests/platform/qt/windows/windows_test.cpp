// Where the windows stand, when they come, and whom they leave the keys to.
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_loop.h"
#include "platform/qt/windows/real_mouse.h"
#include "shell/control_events.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QWindow>
#include <gtest/gtest.h>

namespace larkspin {

namespace {

QWidget& showAgain(Desk& desk, const std::string& name) {
    desk.window(name).visible = false;
    desk.settle();
    return desk.show(name);
}

} // namespace

TEST(Windows, AppearWhereTheyAreDescribedAndLeaveTheFocusAlone) {
    Desk desk;
    QLineEdit chat;
    chat.show();
    chat.activateWindow();
    ASSERT_TRUE(comes(desk, [&] { return chat.hasFocus(); }));
    for (Window* window : desk.program->windows()) {
        SCOPED_TRACE(window->name);
        window->centred = false;
        window->place.left = 1500;
        window->place.top = 750;
        QWidget& widget = desk.show(window->name);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
        desk.settle();
        EXPECT_EQ(widget.pos(), QPoint(100, 50));
        EXPECT_EQ(widget.size(),
                  QSize(window->place.width / 15 + 2, window->place.height / 15 + 2));
        EXPECT_EQ(widget.windowFlags() & Qt::FramelessWindowHint, Qt::FramelessWindowHint);
        const auto* const aloud = QAccessible::queryAccessibleInterface(&widget);
        EXPECT_EQ(aloud->role(), QAccessible::Window);
        EXPECT_EQ(aloud->text(QAccessible::Name).toStdString(), window->spoken);
        EXPECT_TRUE(chat.hasFocus());
        window->alpha = 100; // as it fades
        desk.settle();
        EXPECT_NEAR(widget.windowOpacity(), 100 / 255.0, 0.01);
        window->visible = false;
        desk.settle();
        EXPECT_FALSE(widget.isVisible());
    }
}

TEST(Windows, ComeBackFromBeingMinimizedAndLeaveTheFocusAlone) {
    Desk desk;
    QLineEdit chat;
    chat.show();
    keepontop(desk.window("mp3s"));
    QWidget& media = desk.show("mp3s");
    EXPECT_TRUE(media.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    const std::function<void()> ways[] = {[&] { desk.owner("'media"); },
                                          [&] { desk.run(desk.desktop.icon->onDoubleClick); }};
    for (const auto& comeBack : ways) {
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&media));
        hand({"windowminimize", QString::number(media.winId())}); // by the window manager
        ASSERT_TRUE(comes(desk, [&] { return media.isMinimized(); }));
        chat.activateWindow();
        ASSERT_TRUE(comes(desk, [&] { return chat.hasFocus(); }));
        comeBack();
        desk.settle();
        EXPECT_TRUE(comes(desk, [&] { return media.windowHandle()->isExposed(); }));
        EXPECT_TRUE(chat.hasFocus());
        chat.setGeometry(media.geometry());
        chat.raise();
        const QPoint middle = media.geometry().center();
        EXPECT_TRUE(comes(desk, [&] { return QApplication::topLevelAt(middle) == &media; }));
    }
}

TEST(Windows, DontCoverWhatWaitsForAnAnswer) {
    Desk desk;
    QDialog older, newer;
    for (QDialog* box : {&older, &newer}) {
        box->setWindowFlag(Qt::WindowStaysOnTopHint);
        box->setGeometry(310, 310, 200, 100);
        box->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(box));
    }
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.show("mp3s")));
    EXPECT_TRUE(comes(desk, [&] { return QApplication::topLevelAt(350, 350) == &newer; }));
}

TEST(Windows, LeaveTheKeysToTheOwnerUnlessTheyAnswerAPressOfHis) {
    struct : QtLoop {
        Nanoseconds now() const override { return QtLoop::now() + skipped; }
        Nanoseconds skipped{};
    } loop;
    QtDialogs dialogs(loop);
    QLineEdit chat;
    chat.show();
    const auto boxTakesKeys = [&] {
        chat.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([&] { return chat.hasFocus(); }));
        bool takes = false;
        loop.post([&takes] {
            for (QWidget* window : QApplication::topLevelWidgets())
                if (auto* const box = qobject_cast<QDialog*>(window)) {
                    EXPECT_TRUE(QTest::qWaitForWindowExposed(box));
                    takes = QTest::qWaitFor([&] { return box->isActiveWindow(); }, 500);
                    box->close();
                }
        });
        dialogs.box("anything");
        return takes;
    };
    EXPECT_FALSE(boxTakesKeys());
    dialogs.ownerPresses();
    EXPECT_TRUE(boxTakesKeys());
    loop.skipped = 2s;
    EXPECT_FALSE(boxTakesKeys()) << "that was an answer to something else";
}

TEST(Windows, StandInTheMiddleOfTheScreenUntilTheyAreMoved) {
    Desk desk;
    QWidget& splash = desk.show("dire");
    const QPoint middle = QApplication::primaryScreen()->availableGeometry().center();
    EXPECT_TRUE(
        comes(desk, [&] { return (splash.geometry().center() - middle).manhattanLength() <= 2; }));
    const QRect screen = QApplication::primaryScreen()->availableGeometry();
    Q_EMIT QApplication::primaryScreen()->availableGeometryChanged(screen);
    desk.settle();
    EXPECT_TRUE(desk.window("dire").centred);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&splash));
    splash.move(90, 60);
    EXPECT_TRUE(comes(desk, [&] { return desk.window("dire").place.left == 90 * 15; }));
    EXPECT_EQ(showAgain(desk, "dire").pos(), QPoint(90, 60));
}

TEST(Windows, AreFetchedBackOntoTheScreen) {
    const QRect screen = QApplication::primaryScreen()->availableGeometry();
    const int width = screen.width(), height = screen.height();
    const QPoint end = screen.bottomRight() + QPoint(1, 1); // for the window's lower right corner
    const std::pair<QPoint, QPoint> corners[] = {{{-3000, -200}, {0, 0}},
                                                 {{width, 5}, {end.x(), 5}},
                                                 {{5, height - 6}, {5, end.y()}},
                                                 {{5, height - 61}, {5, end.y()}},
                                                 {{-200, 5}, {0, 5}},
                                                 {{5, 5}, {5, 5}}};
    for (const auto& [wanted, reached] : corners) {
        SCOPED_TRACE(wanted.x());
        Desk desk;
        Window& window = desk.window("mp3s");
        window.place.left = wanted.x() * 15;
        window.place.top = wanted.y() * 15;
        const QWidget& widget = desk.show("mp3s");
        // The window manager takes its time.
        EXPECT_TRUE(comes(desk, [&, at = reached] {
            return (at.x() == end.x() ? widget.geometry().right() + 1 : widget.x()) == at.x() &&
                   (at.y() == end.y() ? widget.geometry().bottom() + 1 : widget.y()) == at.y();
        }));
        EXPECT_EQ(window.place.left, widget.x() * 15);
        EXPECT_EQ(window.place.top, widget.y() * 15);
    }
    Desk desk;
    QWidget& widget = desk.show("mp3s");
    widget.move(-200, 5); // by the owner, who can fetch it back
    EXPECT_TRUE(comes(desk, [&] { return desk.window("mp3s").place.left == -200 * 15; }));
    showAgain(desk, "mp3s");
    EXPECT_TRUE(comes(desk, [&] { return widget.x() == -200; }));
}

// Qt sends what changes to the display in its next turn, so there must be one.
TEST(Windows, AskForOneMoreTurnWhenSomethingHasChanged) {
    Desk desk;
    Window& window = desk.window("mp3s");
    int rests = 0;
    desk.loop.beforeSleep([&] { ++rests; });
    const std::function<void()> changes[] = {[&] { window.visible = true; },
                                             [&] { window.place.left += 150; },
                                             [&] { window.place.height = 315; },
                                             [&] { window.alpha = 100; },
                                             [&] { ++window.calls; },
                                             [&] { window.visible = false; }};
    for (const auto& change : changes) {
        change();
        for (const int turns : {2, 1}) {
            rests = 0;
            desk.advance(1ns);
            EXPECT_EQ(rests, turns) << &change - changes;
        }
    }
}

TEST(Windows, ShowTheStripAloneInTheSmallHeight) {
    Desk desk;
    desk.show("mp3s");
    auto& title = desk.control("mp3s", "mediaCaption");
    QTest::mousePress(&title, Qt::LeftButton);
    desk.settle();
    QTest::mouseRelease(&title, Qt::LeftButton, {}, {-50, -50});
    desk.settle();
    EXPECT_FALSE(desk.window("mp3s").dragged);
    QTest::mouseClick(&title, Qt::LeftButton);
    QTest::mouseDClick(&title, Qt::LeftButton);
    desk.settle();
    EXPECT_EQ(desk.window("mp3s").place.height, 315);
    QTest::mousePress(&desk.control("mp3s", "closeButton"), Qt::LeftButton);
    EXPECT_FALSE(desk.window("mp3s").dragged) << "by another control";
    // The window manager takes its time.
    EXPECT_TRUE(QTest::qWaitFor([&] { return desk.widget("mp3s").height() == 21 + 2; }));
    EXPECT_TRUE(desk.control("mp3s", "closeButton").isVisible());
    EXPECT_FALSE(desk.control("mp3s", "playButton").isVisible()) << "nor reached by Tab";
    QTest::keyClick(&title, Qt::Key_Return);
    desk.settle();
    EXPECT_EQ(desk.window("mp3s").place.height, 2520);
    EXPECT_TRUE(desk.control("mp3s", "playButton").isVisible());
}

} // namespace larkspin
