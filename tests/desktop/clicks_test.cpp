// A real mouse on all that can be clicked, in every window that there is.
#include "desktop/desk.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <QListView>
#include <QTest>
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

void point(const QPoint& at) {
    hand({"mousemove", QString::number(at.x()), QString::number(at.y())});
}

} // namespace

TEST(Clicks, ReachEveryControlOfEveryWindowOnce) {
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
            EXPECT_TRUE(QTest::qWaitFor([&] {
                desk.settle();
                return counts.doubleClicks > 0;
            }));
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

} // namespace larkspin
