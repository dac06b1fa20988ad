// Works every control of every window as shell/control_events has it, in every situation.
#include "shell/control_events.h"
#include "support/every_control.h"

namespace larkspin {

namespace {

void workControl(Window& window, const std::string& name) {
    const Control* const control = window.find(name);
    const bool hasRows = control && control->rows;
    const int last = hasRows ? control->rows->count() - 1 : noRow;
    hover(window, name);
    for (const int row : {hasRows ? 0 : noRow, last}) {
        press(window, name, row);
        pressTwice(window, name, row);
    }
    selectRows(window, name, {last, 0});
    for (const Key key : {Key::enter, Key::escape, Key::del})
        pressKey(window, name, key);
    for (const int value : {-70'000, 0, 37, 70'000})
        moveSlider(window, name, value);
    for (const char* text : {"", "x", "<font color=#00ff00>"})
        editText(window, name, text);
}

} // namespace

TEST(EveryControl, CanBeWorkedInEverySituation) {
    VirtualMachine machine(Lines{});
    workAll(machine, workControl);
    EXPECT_TRUE(machine.advance(60s)) << "still runs";
}

// Each recital waits between its lines, and the owner's hand comes in there.
TEST(EveryControl, CanBeWorkedInTheMiddleOfEveryRecital) {
    VirtualMachine machine(Lines{});
    const Lines recitals{"'scrn",  "'scra", "'rn i",  "'load i", "'rmva i", "'stats", "'top 5",
                         "'pstat", "'adv",  "'scrpl", "'scrd",   "'yes",    "'ref"};
    for (const std::string& recital : recitals)
        for (Window* window : machine.program->windows())
            for (const std::string& name : controlNames(*window)) {
                furnish(machine);
                machine.owner(recital == "'yes" ? "'play song" : "'no");
                machine.dialogs.answers = {"yes", "yes", "yes"};
                bool isWorked = false;
                machine.loop.once(100ms, [&] {
                    workControl(*window, name);
                    chooseFromPopups(machine);
                    isWorked = true;
                });
                machine.owner(recital, 8s);
                EXPECT_TRUE(isWorked);
                expectWhole(machine, recital + " with " + window->name + "." + name);
            }
}

} // namespace larkspin
