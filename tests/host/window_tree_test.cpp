// The chat client as a tree of windows, worked by the program and directly.
#include "support/pretend_host.h"
#include "support/talk.h"

namespace larkspin {

TEST(WindowTree, CarriesTheTalk) {
    VirtualMachine machine;
    PretendHost host(machine);
    machine.start();
    EXPECT_EQ(machine.answer("'clear"), "chat window cleared");
}

} // namespace larkspin
