// Every window of the program, laid out on screens of all sizes.
#include "platform/terminal/windows/cell_layout.h"
#include "platform/terminal/windows/window_desk.h"
#include "shell/control_events.h"

namespace larkspin {

namespace {

struct ScreenSize {
    int rows, columns;
};
constexpr ScreenSize sizes[] = {{60, 200}, {35, 120}, {24, 80}, {24, 50}, {12, 40}, {5, 20}};

bool areApart(const Place& a, const Place& b) {
    return a.left + a.width <= b.left || b.left + b.width <= a.left || a.top + a.height <= b.top ||
           b.top + b.height <= a.top;
}

class LaidOut : public WindowDesk {
protected:
    // Calls it with each two controls of every window, and their areas, at each size.
    template <typename Look> void forPairs(const Look& look) {
        for (const auto& [high, wide] : sizes)
            for (Window* window : machine.program->windows()) {
                std::vector<int> needed;
                for (const Control& control : window->controls)
                    needed.push_back(neededColumns(control));
                const CellLayout layout = layOut(*window, needed, {high, wide});
                for (std::size_t a = 0; a < window->controls.size(); ++a)
                    for (std::size_t b = 0; b < window->controls.size(); ++b)
                        if (a != b && isOnWindow(*window, window->controls[a]) &&
                            isOnWindow(*window, window->controls[b]))
                            look(*window, a, b, layout);
            }
    }
};

} // namespace

TEST_F(LaidOut, WhatLiesApartStaysApartAndRowsStayRows) {
    forPairs([](const Window& window, std::size_t a, std::size_t b, const CellLayout& layout) {
        const Control& one = window.controls[a];
        const Control& other = window.controls[b];
        const std::string both = window.name + '.' + one.name + " and " + other.name;
        const Area &first = layout.areas[a], &second = layout.areas[b];
        EXPECT_FALSE(first.isEmpty()) << both;
        if (areApart(one.place, other.place)) {
            EXPECT_TRUE(first.within(second).isEmpty()) << both;
        }
        if (one.place.top == other.place.top) {
            EXPECT_EQ(first.top, second.top) << both;
        }
    });
}

TEST_F(LaidOut, NoWindowIsWiderThanTheScreen) {
    forPairs([](const Window& window, std::size_t a, std::size_t, const CellLayout& layout) {
        EXPECT_GE(layout.areas[a].columns, 1) << window.name;
        EXPECT_LE(layout.areas[a].right(), layout.columns) << window.name;
    });
    for (const auto& [high, wide] : sizes)
        for (Window* window : machine.program->windows())
            EXPECT_LE(layOut(*window, {}, {high, wide}).columns, wide) << window->name;
}

TEST_F(LaidOut, AllCaptionsCanBeReadOnAUsualScreen) {
    for (const auto& [high, wide] : {ScreenSize{24, 80}, {60, 200}})
        for (Window* window : machine.program->windows()) {
            rows = high;
            columns = wide;
            bringUp(*window);
            const std::string seen = text();
            for (const Control& control : window->controls)
                if (control.text && isOnWindow(*window, control) &&
                    control.kind != Control::Kind::textField) {
                    EXPECT_NE(seen.find(captionOf(control.text())), std::string::npos)
                        << window->name << '.' << control.name << " in\n"
                        << seen;
                }
            window->visible = false;
            stage.refresh();
        }
}

// By keys alone, on a screen that holds two rows of a window.
TEST_F(LaidOut, EveryControlComesIntoSightOnTheSmallestScreen) {
    rows = 5;
    columns = 20;
    for (Window* window : machine.program->windows()) {
        bringUp(*window);
        function(6);
        for (std::size_t tabs = 0; tabs < window->controls.size(); ++tabs) {
            key(Struck::tab);
            const std::string focus = stage.find(*window)->focused();
            if (!focus.empty()) {
                EXPECT_FALSE(areaOf(window->name, focus).isEmpty())
                    << window->name << '.' << focus << '\n'
                    << text();
            }
        }
        window->visible = false;
        stage.refresh();
    }
}

} // namespace larkspin
