// A real mouse on the display: on all that can be clicked, and on what is dragged.
#include "platform/qt/windows/real_mouse.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <QAbstractButton>
#include <QListView>
#include <gtest/gtest.h>

namespace larkspin {

namespace {

// What reaches a control. In its place it does nothing else.
struct Reached {
    int downs = 0, clicks = 0, doubleClicks = 0;

    explicit Reached(Control& control) {
        control.onMouseDown = [this] { ++downs; };
        control.onClick = [this] { ++clicks; };
        control.onDoubleClick = [this] { ++doubleClicks; };
    }
};

bool isClicked(const Control& control) {
    using Kind = Control::Kind;
    return control.onClick || control.onDoubleClick || control.onMouseDown ||
           control.kind == Kind::list || control.kind == Kind::button;
}

QPoint middleOf(QWidget& widget, int row = 0) {
    QRect aim = widget.rect();
    if (auto* const list = qobject_cast<QListView*>(&widget))
        aim = list->visualRect(list->model()->index(row, 0));
    return widget.mapToGlobal(aim.center());
}

QPoint seenAt(const QWidget& widget) {
    QProcess tool;
    tool.start("xdotool", {"getwindowgeometry", "--shell", QString::number(widget.winId())});
    tool.waitForFinished();
    const auto lines = tool.readAll().split('\n'); // WINDOW=, X=, Y= and others
    return {lines.value(1).mid(2).toInt(), lines.value(2).mid(2).toInt()};
}

} // namespace

TEST(Mouse, ClicksEveryControlOfEveryWindowOnce) {
    Desk desk;
    int reached = 0;
    for (Window* window : desk.program->windows()) {
        window->place.left = window->place.top = 1500;
        window->centred = false;
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.show(window->name)));
        for (Control& control : window->controls) {
            if (!isClicked(control) || !isShown(*window, control))
                continue;
            SCOPED_TRACE(window->name + '.' + control.name);
            if (control.rows && control.rows->count() == 0)
                control.rows->add("a row");
            desk.settle();
            const Control kept = control;
            const Reached counts(control);
            point(middleOf(desk.control(window->name, control.name.c_str())));
            hand({"click", "--repeat", "2", "--delay", "40", "1"});
            EXPECT_TRUE(comes(desk, [&] { return counts.doubleClicks > 0; }));
            EXPECT_EQ(counts.downs, 1);
            EXPECT_EQ(counts.clicks, 1);
            EXPECT_EQ(counts.doubleClicks, 1);
            control.onMouseDown = kept.onMouseDown;
            control.onClick = kept.onClick;
            control.onDoubleClick = kept.onDoubleClick;
            ++reached;
        }
        window->visible = false;
        desk.settle();
    }
    EXPECT_GT(reached, 30);
}

TEST(Mouse, ClicksTwiceWhereNothingReactsToADoubleClick) {
    Desk desk;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.show("mp3s")));
    auto& button = desk.control<QAbstractButton>("mp3s", "nextButton");
    const Reached counts(desk.window("mp3s").control("nextButton"));
    desk.window("mp3s").control("nextButton").onDoubleClick = nullptr;
    point(middleOf(button));
    hand({"click", "3", "click", "--repeat", "2", "--delay", "40", "1"});
    EXPECT_TRUE(comes(desk, [&] { return counts.clicks == 2; }));
    EXPECT_EQ(counts.downs, 2);
    EXPECT_FALSE(button.isDown());
}

TEST(Mouse, SelectsTheRowsThatItIsDrawnOver) {
    Desk desk;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.show("mp3s")));
    auto& list = desk.control<QListView>("mp3s", "playlistView");
    const RowList& rows = desk.state().playlistView;
    point(middleOf(list));
    hand({"mousedown", "1"});
    EXPECT_TRUE(comes(desk, [&] { return rows.isSelected(0); }));
    point(middleOf(list, 2));
    EXPECT_TRUE(comes(desk, [&] { return list.selectionModel()->isRowSelected(2); }));
    hand({"mouseup", "1"});
    EXPECT_TRUE(comes(desk, [&] { return rows.selectedCount() == 3; }));
}

// Each by a real hand, which goes by what is on the display.
TEST(Mouse, DragsEveryWindowLeavesItTheKeyboardAndIsFreeAfterwards) {
    Desk desk;
    for (Window* window : desk.program->windows()) {
        if (window->name == "dire" || window->name == "stops")
            continue; // it comes and goes by itself
        SCOPED_TRACE(window->name);
        window->place.left = window->place.top = 1500;
        QWidget& widget = desk.show(window->name);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
        ASSERT_TRUE(comes(desk, [&] { return widget.pos() == QPoint(100, 100); }));
        point(130, 110);
        hand({"mousedown", "1"});
        EXPECT_TRUE(comes(desk, [&] { return window->dragged; }));
        int way = 0; // on which the window manager takes over, which tells of it at the end
        EXPECT_TRUE(comes(desk, [&] {
            way += 4;
            point(130 + way, 110 + way);
            return seenAt(widget).x() > 140;
        }));
        hand({"mouseup", "1"});
        EXPECT_TRUE(comes(desk, [&] { return window->place.left > 2000; }));
        EXPECT_TRUE(comes(desk, [&] { return !window->dragged; }));
        EXPECT_TRUE(comes(desk, [&] { return widget.isActiveWindow(); }));
        EXPECT_EQ(window->place.top, window->place.left);
        hand({"key", "Escape"});
        EXPECT_TRUE(comes(desk, [&] { return !window->visible; }));
    }
    const Place place = desk.window("mp3s").place;
    desk.restart();
    EXPECT_EQ(desk.setting("mp3slpos"), std::to_string(place.left));
    EXPECT_EQ(desk.show("mp3s").pos(), QPoint(place.left / 15, place.top / 15));
    for (const auto& [button, hint] :
         {std::pair("nextButton", "  next song"), std::pair("prevButton", "  previous song")}) {
        QPoint mouse = middleOf(desk.control("mp3s", button));
        EXPECT_TRUE(comes(desk, [&, said = hint] { // the window may come after the mouse has
            point(mouse += {mouse.x() % 2 * 2 - 1, 0});
            return desk.state().mediaCaption == said;
        })) << hint;
    }
}

} // namespace larkspin
