// What the owner's hand does to a described control.
#include "shell/control_events.h"

#include "shell/controls.h"
#include "text/row_list.h"

#include <gtest/gtest.h>
#include <tuple>
#include <utility>

namespace larkspin {
namespace {

using Kind = Control::Kind;

struct ControlEventsTest : testing::Test {
    ControlEventsTest() {
        for (const char* row : {"one", "two", "three"})
            rows.add(row);
        window.name = "toy";
        window.place = {0, 0, 1000, 500};
        window.visible = true;
        window.controls = {
            logged({.name = "button", .kind = Kind::button}),
            logged({.name = "list", .kind = Kind::list, .rows = &rows, .selectsMany = true}),
            logged({.name = "combo", .kind = Kind::combo, .rows = &rows}),
            logged({.name = "slider", .kind = Kind::slider, .least = -10, .most = 10}),
            logged({.name = "field", .kind = Kind::textField}),
            {.name = "still"},
            logged({.name = "below", .place = {0, 500, 100, 100}}),
        };
        window.control("list").onMenu = [this] { log += "menu "; };
        window.control("slider").value = [this] { return value; };
    }

    Control logged(Control control) {
        control.onMouseDown = [this] { log += "down "; };
        control.onClick = [this] { log += "click" + std::to_string(rows.currentIndex()) + ' '; };
        control.onDoubleClick = [this] { log += "double "; };
        control.onMouseMove = [this] { log += "move "; };
        control.onKey = [this](Key key) { log += key == Key::del ? "delete " : "key "; };
        control.onChange = [this](int now) { log += std::to_string(value = now) + ' '; };
        control.onEdit = [this](const std::string& text) { log += text + ' '; };
        return control;
    }
    // What reached the handlers, or that nothing was reached.
    std::string after(bool reached) {
        return reached ? std::exchange(log, {}) : "nothing" + std::exchange(log, {});
    }

    RowList rows;
    Window window;
    std::string log;
    int value = 0;
};

TEST_F(ControlEventsTest, EachGestureCallsWhatItMeans) {
    EXPECT_EQ(after(mouseDown(window, "button")), "down ");
    EXPECT_EQ(after(press(window, "button")), "down click-1 ");
    EXPECT_EQ(after(pressTwice(window, "button")), "down click-1 double ");
    EXPECT_EQ(after(press(window, "list", 1)), "down click1 ");
    EXPECT_EQ(after(pressTwice(window, "list", 2)), "down click2 double ");
    EXPECT_EQ(after(askMenu(window, "list", 2)), "menu ");
    EXPECT_EQ(after(selectRows(window, "list", {2, 0})), "click0 ");
    EXPECT_EQ(after(chooseRow(window, "combo", 1)), "click1 ");
    EXPECT_EQ(after(press(window, "combo", 2)), "click2 ");
    EXPECT_EQ(after(pressKey(window, "list", Key::del)), "delete ");
    EXPECT_EQ(after(hover(window, "button")), "move ");
    EXPECT_EQ(after(editText(window, "field", "words")), "words ");
    for (const auto& [moved, told] : {std::pair(7, "7 "), {7, ""}, {1000, "10 "}, {-1000, "-10 "}})
        EXPECT_EQ(after(moveSlider(window, "slider", moved)), told) << moved;
    EXPECT_EQ(after(press(window, "still")), "");
    EXPECT_EQ(after(hover(window, "still")), "");
    EXPECT_EQ(after(click(window, "list", 1)), "click2 ") << "where the mouse has been down";
    EXPECT_EQ(after(doubleClick(window, "button")), "double ");
    EXPECT_EQ(after(drop(window, {"c:\\a.mp3"})), "nothing");
    window.onDrop = [this](const auto& paths) { log += paths.back(); };
    EXPECT_EQ(after(drop(window, {"c:\\", "c:\\a.mp3"})), "c:\\a.mp3");
    window.dragged = true;
    EXPECT_EQ(after(click(window, "gone")), "nothing");
    EXPECT_FALSE(window.dragged) << "the button that held it is up";
    EXPECT_EQ(after(closeWindow(window)), "nothing");
    window.controls.push_back(closeLabel(window, {.name = "X"}));
    EXPECT_EQ(after(closeWindow(window)), "");
    EXPECT_FALSE(window.visible);
}

TEST_F(ControlEventsTest, SelectsTheRowsThatArePressed) {
    press(window, "list", 1);
    selectRows(window, "list", {2, 0});
    EXPECT_EQ(rows.selectedCount(), 2);
    EXPECT_FALSE(rows.isSelected(1));
    EXPECT_EQ(rows.currentIndex(), 0);
}

TEST_F(ControlEventsTest, AsksForTheMenuOfARowAndKeepsASelectionThatItBelongsTo) {
    EXPECT_EQ(after(askMenu(window, "list")), "nothing") << "no row is current";
    selectRows(window, "list", {2, 0});
    for (const auto& [row, current, selected] :
         {std::tuple(2, 2, 2), {noRow, 2, 2}, {1, 1, 1}, {noRow, 1, 1}}) {
        EXPECT_TRUE(askMenu(window, "list", row));
        EXPECT_EQ(rows.currentIndex(), current);
        EXPECT_EQ(rows.selectedCount(), selected);
    }
}

TEST_F(ControlEventsTest, NothingIsReachedWhereThereIsNothing) {
    EXPECT_EQ(after(press(window, "gone")), "nothing");
    EXPECT_EQ(after(press(window, "Button")), "nothing");
    EXPECT_EQ(after(press(window, "below")), "nothing");
    EXPECT_EQ(after(press(window, "button", 0)), "nothing");
    EXPECT_EQ(after(editText(window, "button", "words")), "nothing");
    EXPECT_EQ(after(moveSlider(window, "button", 1)), "nothing");
    EXPECT_EQ(after(selectRows(window, "list", {})), "nothing");
    for (const int outside : {-1, 3}) {
        EXPECT_EQ(after(press(window, "list", outside)), "nothing");
        EXPECT_EQ(after(askMenu(window, "list", outside)), "nothing");
        EXPECT_EQ(after(selectRows(window, "list", {0, outside})), "nothing");
        EXPECT_EQ(after(chooseRow(window, "combo", outside)), "nothing");
    }
    window.control("list").selectsMany = false;
    EXPECT_EQ(after(selectRows(window, "list", {0, 1})), "nothing");
    EXPECT_EQ(rows.currentIndex(), -1);

    window.control("button").visible = false;
    EXPECT_EQ(after(press(window, "button")), "nothing");
    window.visible = false;
    EXPECT_EQ(after(pressKey(window, "list", Key::del)), "nothing");
    EXPECT_EQ(after(hover(window, "still")), "nothing");
}

// Each handler here removes what the rest of its gesture is meant for.
TEST_F(ControlEventsTest, AGestureEndsWhenItHasLostItsAim) {
    window.control("list").onMouseDown = [this] { rows.clear(); };
    EXPECT_EQ(after(pressTwice(window, "list", 2)), "");
    rows.add("one");
    window.control("list").onMouseDown = [this] { window.visible = false; };
    EXPECT_EQ(after(press(window, "list", 0)), "");
    EXPECT_EQ(rows.currentIndex(), -1);
    window.visible = true;
    window.control("button").onClick = [this] {
        window.controls.clear();
        log += "cleared";
    };
    EXPECT_EQ(after(pressTwice(window, "button")), "down cleared");
}

} // namespace
} // namespace larkspin
