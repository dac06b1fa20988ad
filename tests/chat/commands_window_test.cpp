// The commands window with the catalogue.
#include "shell/control_events.h"
#include "support/talk.h"

namespace larkspin {

TEST(CommandsWindow, ShowsTheFormsUnderTheTriggerOfTheMoment) {
    VirtualMachine machine(Lines{});
    const RowList& names = machine.state().commandNames;
    const auto form = [&](int row) { return std::string(names.row(row)); };
    EXPECT_EQ(form(0), "'ac *");
    for (const std::string trigger : {".", "none"}) {
        machine.owner("'trig " + trigger);
        machine.owner(".trig " + trigger);
        const std::string opening = trigger == "none" ? "" : trigger;
        EXPECT_EQ(form(0), opening + "ac *");
        EXPECT_EQ(form(124), opening + "xlist *");
        EXPECT_EQ(form(125), "'trig?");
    }
    EXPECT_EQ(names.count(), 126);
}

TEST(CommandsWindow, HelpsWithTheSelectedCommand) {
    VirtualMachine machine(Lines{});
    Window& larkmain = machine.window("larkmain");
    const auto help = [&] { return larkmain.control("commandText").text(); };
    EXPECT_FALSE(larkmain.visible);
    EXPECT_EQ(machine.answer("'coms"), "viewing <b>126</b> commands");
    EXPECT_TRUE(larkmain.onTop);
    const std::pair<int, std::string> rows[] = {{0, "changes ascii color"},
                                                {38, "a command for the love of my life"},
                                                {124, "deletes a playlist"},
                                                {125, "tells your current trigger"}};
    for (const auto& [row, text] : rows) {
        EXPECT_TRUE(press(larkmain, "commandNames", row));
        EXPECT_EQ(help(), text);
    }
    machine.owner("'trig .");
    EXPECT_EQ(help(), "");
    EXPECT_EQ(machine.state().commandNames.currentIndex(), -1);
}

TEST(CommandsWindow, OpensAlsoInSilenceAndCloses) {
    VirtualMachine machine(Lines{});
    Window& larkmain = machine.window("larkmain");
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'coms"), "");
    EXPECT_TRUE(press(larkmain, "closeLabel"));
    EXPECT_FALSE(larkmain.visible);
    machine.chooseFromTray("comz");
    EXPECT_TRUE(larkmain.visible);
    mouseDown(larkmain, "commandsTitle");
    EXPECT_TRUE(larkmain.dragged);
    machine.restart();
    EXPECT_FALSE(larkmain.visible);
    EXPECT_EQ(machine.state().commandNames.count(), 126);
}

} // namespace larkspin
