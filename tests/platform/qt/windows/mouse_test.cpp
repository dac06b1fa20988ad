// A real mouse on the display: on all that can be clicked, and on what is dragged.
#include "platform/qt/windows/real_mouse.h"
#include "shell/control_events.h"
#include "text/row_list.h"

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

QPoint middleOf(QWidget& widget) {
    QRect aim = widget.rect();
    if (auto* const list = qobject_cast<QListView*>(&widget))
        aim = list->visualRect(list->model()->index(0, 0));
    return widget.mapToGlobal(aim.center());
}

void point(int x, int y) {
    hand({"mousemove", QString::number(x), QString::number(y)});
}

void point(const QPoint& at) {
    point(at.x(), at.y());
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

// Each by a real hand, which goes by what is on the display.
TEST(Mouse, DragsEveryWindowAndLeavesItTheKeyboard) {
    Desk desk;
    for (Window* window : desk.program->windows()) {
        if (window->name == "dire" || window->name == "stops")
            continue; // it comes and goes by itself
        SCOPED_TRACE(window->name);
        window->place.left = 1500;
        window->place.top = 1500;
        QWidget& widget = desk.show(window->name);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
        ASSERT_TRUE(comes(desk, [&] { return widget.pos() == QPoint(100, 100); }));
        point(130, 110);
        hand({"mousedown", "1"});
        EXPECT_TRUE(comes(desk, [&] { return window->dragged; }));
        for (const int way : {4, 20, 40, 60}) {
            point(130 + way, 110 + way);
            desk.settle();
        }
        hand({"mouseup", "1"});
        EXPECT_TRUE(comes(desk, [&] { return window->place.left > 1500; }));
        EXPECT_TRUE(comes(desk, [&] { return !window->dragged; }));
        EXPECT_TRUE(comes(desk, [&] { return widget.isActiveWindow(); }));
        hand({"key", "Escape"});
        EXPECT_TRUE(comes(desk, [&] { return !window->visible; }));
    }
}

TEST(Mouse, DragsByTheTitleAndIsFreeAfterwards) {
    Desk desk;
    const QPoint start = desk.show("mp3s").pos();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.widget("mp3s")));
    point(start + QPoint(50, 10));
    hand({"mousedown", "1"});
    ASSERT_TRUE(comes(desk, [&] { return desk.window("mp3s").dragged; }));
    for (const int way : {4, 20, 40, 60}) {
        point(start + QPoint(50 + way, 10 + way / 2));
        EXPECT_TRUE(comes(desk, [&] { return !desk.window("mp3s").dragged; })) << "by others";
    }
    hand({"mouseup", "1"});
    const Place& place = desk.window("mp3s").place; // but for the little way to begin with
    EXPECT_TRUE(comes(desk, [&] { return place.left >= 4500 + 55 * 15; }));
    EXPECT_NEAR(place.top, 4500 + 30 * 15, 5 * 15);
    point(middleOf(desk.control("mp3s", "nextButton")));
    EXPECT_TRUE(comes(desk, [&] { return desk.state().mediaCaption == "  next song"; }));
    point(middleOf(desk.control("mp3s", "closeButton")));
    hand({"click", "1"});
    EXPECT_TRUE(comes(desk, [&] { return !desk.window("mp3s").visible; })) << "the mouse is free";
    const QPoint end(place.left / 15, place.top / 15);
    desk.restart();
    EXPECT_EQ(desk.setting("mp3slpos"), std::to_string(15 * end.x()));
    EXPECT_EQ(desk.show("mp3s").pos(), end);
}

} // namespace larkspin
