// The same walk as with the plain events, by keys and by the mouse on the terminal's screen.
#include "platform/terminal/windows/window_desk.h"
#include "shell/control_events.h"
#include "support/every_control.h"

namespace larkspin {

namespace {

class EveryControlOnScreen : public WindowDesk {
protected:
    EveryControlOnScreen() : WindowDesk(Lines{}) {}

    WorkControl byKeys() {
        return [this](Window& window, const std::string& name) {
            goInto(window);
            tabTo(window, name);
            if (focusOf(window) == name)
                workByKeys(window);
            else
                EXPECT_FALSE(isWorked(window, name)) << window.name << '.' << name;
        };
    }
    WorkControl byMouse() {
        return [this](Window& window, const std::string& name) {
            bringUp(window);
            const Area area = areaOf(window.name, name);
            EXPECT_EQ(area.isEmpty(), !isShown(window, *window.find(name)))
                << window.name << '.' << name;
            if (!area.isEmpty())
                workByMouse(area);
        };
    }

private:
    // Whether a key must lead to it; a title, which is only dragged, moves by others.
    static bool isWorked(Window& window, const std::string& name) {
        const Control& control = *window.find(name);
        return isShown(window, control) &&
               (control.rows || control.onClick || control.onDoubleClick || control.onEdit ||
                control.onChange);
    }
    void goInto(Window& window) {
        bringUp(window);
        draw();
        for (int tries = 0; tries < 8 && !hasKeyboard(window); ++tries)
            function(6);
    }
    bool hasKeyboard(Window& window) {
        const WindowLayer* const layer = stage.find(window);
        return layer && stage.hasKeyboard(*layer);
    }
    std::string focusOf(Window& window) {
        const WindowLayer* const layer = stage.find(window);
        return layer ? layer->focused() : "";
    }
    void tabTo(Window& window, const std::string& name) {
        for (std::size_t tabs = 0; tabs < window.controls.size() && focusOf(window) != name; ++tabs)
            key(Struck::tab);
    }
    void workByKeys(Window& window) {
        const std::string name = focusOf(window);
        for (const Struck each :
             {Struck::end, Struck::home, Struck::down, Struck::up, Struck::right, Struck::left,
              Struck::pageDown, Struck::pageUp, Struck::enter, Struck::del, Struck::escape})
            for (const bool shift : {false, true}) {
                if (!hasKeyboard(window))
                    goInto(window);
                tabTo(window, name);
                key(each, shift);
                stage.menu.close();
            }
        goInto(window);
        type(" ");
        function(10, true);
        stage.menu.close();
    }
    void workByMouse(const Area& area) {
        const Cursor corner{area.top, area.left};
        const Cursor end{area.bottom() - 1, area.right() - 1};
        mouse(Mouse::move, corner, Button::none);
        for (const Cursor& at : {corner, end}) {
            click(at);
            doubleClick(at);
            stage.menu.close();
            click(at, Button::right);
            stage.menu.close();
        }
        mouse(Mouse::press, corner);
        mouse(Mouse::move, end);
        mouse(Mouse::release, end);
        mouse(Mouse::wheelDown, end, Button::none);
        mouse(Mouse::wheelUp, end, Button::none);
    }
};

} // namespace

TEST_F(EveryControlOnScreen, CanBeWorkedByKeysAndByTheMouse) {
    for (const auto& [high, wide] : {std::pair{24, 80}, {60, 200}}) {
        rows = high;
        columns = wide;
        for (const Situation& situation : situations) {
            workAllOf(machine, situation, high == 24 ? "" : "yes", byKeys());
            workAllOf(machine, situation, high == 24 ? "yes" : "", byMouse());
            machine.forget();
        }
    }
    EXPECT_TRUE(machine.advance(60s)) << "still runs";
}

} // namespace larkspin
