#include "support/talk.h"

namespace larkspin {

TEST(FirstRun, WelcomesTheOwnerAndRemembersTheDay) {
    VirtualMachine machine;
    ASSERT_TRUE(machine.start());
    ASSERT_EQ(machine.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(machine.lastBox().starts_with("this must be your first time running"));
    EXPECT_EQ(machine.allSaid(),
              (Lines{"larkspin player - by moraine", "load:  <b>1</b> - mp3s played:  <b>0</b>"}));
    EXPECT_EQ(machine.setting("load"), "2"); // stored at once, in case it is killed
    EXPECT_EQ(machine.setting("trigger"), "'");
    EXPECT_EQ(machine.setting("first load"), "Friday, December 19, 2003 at 07:05 pm");
}

} // namespace larkspin
