// What a real hand types after it has clicked in some window: it goes to the room's line.
#include "app/program.h"
#include "platform/qt/room/find_view.h"
#include "platform/qt/room/qt_room.h"
#include "platform/qt/windows/qt_windows.h"
#include "support/patience.h"
#include "support/pretend_irc.h"
#include "support/virtual_machine.h"

#include <QApplication>
#include <QListView>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct TypedKeysTest : testing::Test {
    TypedKeysTest() {
        machine.host = &room.rooms.room;
        room.show();
        machine.start();
        windows = std::make_unique<QtWindows>(
            machine.loop, machine.program->windows(), HandTells{},
            MainWindow(room.window, [this] { return room.window.openParts(); }));
        machine.run([this] { room.open([] {}); });
        EXPECT_TRUE(comes([&] { return room.window.isActiveWindow(); }));
    }
    template <typename Condition> bool comes(Condition condition) {
        return QTest::qWaitFor(
            [&] {
                QCoreApplication::processEvents();
                machine.advance(1ms);
                return condition();
            },
            patienceInMilliseconds);
    }
    void hand(const QStringList& does) { QProcess::execute("xdotool", does); }
    void click(QWidget& widget, QPoint at) {
        const QPoint point = widget.mapToGlobal(at);
        hand({"mousemove", QString::number(point.x()), QString::number(point.y()), "click", "1"});
    }
    QWidget& show(const char* name) {
        Window& window = machine.window(name);
        machine.run([&] { bringUp(window); });
        EXPECT_TRUE(comes([&] {
            QWidget* const widget = windows->widgetOf(window);
            return widget && widget->windowHandle() && widget->windowHandle()->isExposed();
        }));
        return *windows->widgetOf(window);
    }
    // A click on it gives it the keyboard.
    QWidget& clicked(const char* window, const char* control) {
        QWidget& widget = *show(window).findChild<QWidget*>(control);
        click(widget, widget.rect().center());
        EXPECT_TRUE(comes([&] { return widget.window()->isActiveWindow(); })) << control;
        return widget;
    }
    std::string said() { return findView<Transcript>(room.window).toPlainText().toStdString(); }
    bool reads(const char* text) {
        return comes([&] { return input().text() == text; });
    }
    InputLine& input() { return findView<InputLine>(room.window); }

    VirtualMachine machine{Lines{"ride.mp3", "ride on.mp3", "rain.mp3"}};
    PretendIrc server{machine.loop};
    QtRoom room{machine.loop,
                machine.lines,
                lent({&server}),
                machine.kept,
                DataDirectory(machine.drive("data")),
                "Owner"};
    std::unique_ptr<QtWindows> windows;
};

TEST_F(TypedKeysTest, AreALineAfterAClickOnTheStopWindow) {
    machine.owner("'play ride");
    machine.owner("'view");
    int presses = 0;
    machine.window("stops").control("label").onClick = [&presses] { ++presses; };
    clicked("stops", "label");
    EXPECT_TRUE(comes([&] { return presses == 1; }));
    hand({"type", "'m 1"});
    hand({"key", "Return"});
    EXPECT_TRUE(comes([&] { return said().find("Owner: 'm 1") != std::string::npos; })) << said();
    EXPECT_EQ(presses, 1) << "neither Space nor Return pressed it";
}

TEST_F(TypedKeysTest, GoToTheLineFromAllThatTakesNoText) {
    int presses = 0;
    machine.window("mp3s").control("nextButton").onClick = [&presses] { ++presses; };
    for (const auto& [window, control] : {std::pair("mp3s", "nextButton"),
                                          {"mp3s", "playlistView"},
                                          {"mp3s", "mediaCaption"},
                                          {"colors", "HScroll1"},
                                          {"larkmain", "commandText"}}) {
        SCOPED_TRACE(control);
        clicked(window, control);
        hand({"type", "a b"});
        EXPECT_TRUE(reads("a b"));
        EXPECT_TRUE(comes([&] { return input().hasFocus(); }));
        input().typing.empty();
    }
    for (QWidget* const part : {static_cast<QWidget*>(&findView<Transcript>(room.window)),
                                static_cast<QWidget*>(&findView<PeopleView>(room.window))}) {
        part->setFocus(Qt::MouseFocusReason);
        hand({"type", "ab"});
        EXPECT_TRUE(reads("ab"));
        input().typing.empty();
    }
    EXPECT_EQ(presses, 1) << "by the mouse";
}

// What is struck one after the other makes one letter, though the first of it comes after a click.
TEST_F(TypedKeysTest, AreComposedOnTheirWayToTheLine) {
    const auto setKeyboard = [](const QStringList& layout) {
        QProcess::execute("setxkbmap", layout);
    };
    setKeyboard({"us", "intl", "compose:rctrl"});
    const std::pair<QStringList, const char*> cases[] = {
        {{"key", "dead_acute", "e"}, "\u00E9"}, {{"key", "Multi_key", "e", "equal"}, "\u20AC"}};
    for (const auto& [struck, letter] : cases) {
        clicked("mp3s", "playlistView");
        hand(struck);
        EXPECT_TRUE(reads(letter)) << letter << ", not " << input().text().toStdString();
        EXPECT_TRUE(comes([&] { return input().hasFocus(); }));
        input().typing.empty();
    }
    setKeyboard({"us"});
}

TEST_F(TypedKeysTest, LeaveListsFieldsAndWhomTabHasLedToTheirOwn) {
    std::string reached;
    auto& next = machine.window("mp3s").control("nextButton");
    next.onClick = [&] { reached += "next "; };
    machine.window("mp3s").control("playlistView").onDoubleClick = [&] { reached += "row "; };
    QWidget& button = clicked("mp3s", "nextButton");
    EXPECT_TRUE(comes([&] { return reached == "next "; }));
    hand({"key", "space", "Return"});
    EXPECT_TRUE(comes([&] {
        hand({"key", "Tab"});
        QCoreApplication::processEvents();
        return QApplication::focusWidget() == &button;
    }));
    EXPECT_EQ(reached, "next ") << "it was reached by the mouse";
    hand({"key", "space", "Return"});
    EXPECT_TRUE(comes([&] { return reached == "next next next "; })) << reached;
    input().setText("begun");
    reached.clear();
    auto& list = static_cast<QListView&>(clicked("mp3s", "playlistView"));
    click(*list.viewport(), list.visualRect(list.model()->index(1, 0)).center());
    EXPECT_TRUE(comes([&] { return machine.state().playlistView.currentIndex() == 1; }));
    hand({"key", "Up", "Return"});
    EXPECT_TRUE(comes([&] { return reached == "row "; })) << reached;
    EXPECT_EQ(machine.state().playlistView.currentIndex(), 0);
    hand({"key", "BackSpace", "space", "x"});
    EXPECT_TRUE(reads("begu x"));
}

} // namespace
} // namespace larkspin
