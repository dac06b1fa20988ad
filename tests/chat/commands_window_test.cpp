// The commands window with the catalogue.
#include "shell/control_events.h"
#include "support/talk.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace larkspin {

TEST(CommandsWindow, ShowsTheFormsUnderTheTriggerOfTheMoment) {
    VirtualMachine machine(Lines{});
    const RowList& names = machine.state().commandNames;
    const int last = names.count() - 1;
    for (const auto& [line, opening] :
         {std::pair("'stop", "'"), {"'trig .", "."}, {".trig none", ""}}) {
        machine.owner(line);
        EXPECT_EQ(names.row(0), opening + std::string("ac *"));
        EXPECT_EQ(names.row(last - 1), opening + std::string("xlist *"));
        EXPECT_EQ(names.row(last), "'trig?");
    }
    EXPECT_EQ(names.count(), last + 1);
}

TEST(CommandsWindow, HelpsWithTheSelectedCommandAndCloses) {
    VirtualMachine machine(Lines{});
    Window& larkmain = machine.window("larkmain");
    const auto help = [&] { return larkmain.control("commandText").text(); };
    const Lines names = rowsOf(machine.state().commandNames);
    EXPECT_FALSE(larkmain.visible);
    EXPECT_EQ(machine.answer("'coms"),
              "viewing <b>" + std::to_string(names.size()) + "</b> commands");
    EXPECT_TRUE(larkmain.onTop);
    for (const auto& [name, text] : {std::pair("'sela", "a command for the love of my life"),
                                     {"'trig?", "tells your current trigger"}}) {
        const auto row = std::ranges::find(names, name) - names.begin();
        EXPECT_TRUE(press(larkmain, "commandNames", static_cast<int>(row)));
        EXPECT_EQ(help(), text);
    }
    machine.owner("'trig .");
    EXPECT_EQ(help(), "");
    EXPECT_EQ(machine.state().commandNames.currentIndex(), -1);
    EXPECT_TRUE(press(larkmain, "closeLabel"));
    EXPECT_FALSE(larkmain.visible);
    machine.owner(".silent");
    EXPECT_EQ(machine.answer(".coms"), "");
    EXPECT_TRUE(larkmain.visible);
    mouseDown(larkmain, "commandsTitle");
    EXPECT_TRUE(larkmain.dragged);
    machine.restart();
    EXPECT_FALSE(larkmain.visible);
    machine.chooseFromTray("comz");
    EXPECT_TRUE(larkmain.visible);
    EXPECT_EQ(machine.state().commandNames.count(), std::ssize(names));
}

} // namespace larkspin
