#include "support/talk.h"

namespace larkspin {

TEST(FirstRun, WelcomesTheOwnerAndRemembersTheDay) {
    VirtualMachine machine;
    ASSERT_TRUE(machine.start());
    ASSERT_EQ(machine.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(machine.lastBox().starts_with("this must be your first time running"));
    EXPECT_EQ(machine.allSaid(),
              (std::vector<std::string>{"larkspin player - by moraine",
                                        "load:  <b>1</b> - mp3s played:  <b>0</b>"}));
    EXPECT_EQ(machine.setting("load"), "2");
    EXPECT_EQ(machine.setting("first load"), "Friday, December 19, 2003 at 07:05 pm");
    machine.song("rock", "ride.mp3");
    machine.owner("'scan " + machine.drive("music"));
    EXPECT_SAID(machine, "found <b>1</b> (<b>mp3</b>) in <b>1</b> directories");
    machine.owner("'transfer");
    machine.owner("'play RI");
    EXPECT_SAID(machine, "playing:  <b>1</b>.  <b><u>RI</b></u>de");
    EXPECT_FALSE(machine.owner("'exit"));
    EXPECT_SAID(machine, "larkspin player - unload");
}

} // namespace larkspin
