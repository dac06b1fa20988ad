// Idle mode: its count, and what it does in the client.
#include "support/pretend_host.h"
#include "support/talk.h"

namespace larkspin {
namespace {

TEST(IdleMode, CountsEachMinuteUntilItEnds) {
    VirtualMachine machine(Lines{});
    converse(machine, {{"'idleoff", "idLed:  0 hr, 0 min - end"},
                       {"'idle Lunch, now", "idLe:  Lunch, now - begin", 58min}});
    EXPECT_EQ(machine.saidWithin(1min), Lines{"idLe:  Lunch, now - 0 hr, 59 min"});
    EXPECT_EQ(machine.saidWithin(90s), Lines{"idLe:  Lunch, now - 1 hr, 0 min"});
    converse(machine, {{"'idle tea", "idLe:  tea - begin", 59s}});
    EXPECT_EQ(machine.saidWithin(1s), Lines{"idLe:  tea - 0 hr, 1 min"});
    converse(machine, {{"'idleoff", "idLed:  0 hr, 1 min - end"},
                       {"'idleoff", "idLed:  0 hr, 0 min - end"},
                       {"'silent", "silent mode - <b>on"},
                       {"'idle x", "[box] silent idle enabled - idLe:  x - begin", 61s},
                       {"'idleoff", "[box] idLed:  0 hr, 1 min - end"}});
    EXPECT_EQ(machine.saidWithin(3min), Lines{});
}

TEST(IdleMode, AnswersTheQuestionWhetherTheOwnerIsThere) {
    VirtualMachine machine;
    PretendHost client(machine);
    machine.start();
    machine.owner("'idle x", 1s);
    for (const std::string text : {"You have been idle for a while. Well?", "Sign off?",
                                   "So. Do you wish to continue to stay online?"}) {
        client.showModal("", {text});
        machine.advance(1min);
        EXPECT_EQ(client.has(client.modal), text == "Sign off?");
    }
}

TEST(IdleMode, TellsOfTransfersAfterTheMinutes) {
    VirtualMachine machine;
    PretendHost client(machine);
    machine.start();
    client.showDownload("File Transfer - 45%", {"Now Downloading x.zip", "a"});
    machine.owner("'idle x", 59s);
    EXPECT_EQ(machine.saidWithin(1s),
              (Lines{"idLe:  x - 0 hr, 1 min",
                     "download:  <b>x.zip</b> - <b>45%</b> - min:  <b>less than 1"}));
    machine.state().silnt = true;
    machine.dialogs.whileOpen = [&] { machine.advance(150s); }; // one box is enough
    machine.saidWithin(61s);
    EXPECT_EQ(machine.dialogs.boxes, Lines{"download:  x.zip - 45% - min:  less than 1"});
}

TEST(IdleMode, StopsInTheMiddleOfAMinutesWord) {
    VirtualMachine machine(Lines{});
    machine.owner("'idle x", 59s);
    machine.inMessage("idLe:", [&] { machine.hear("'idleoff"); });
    EXPECT_EQ(machine.saidWithin(2min).back(), "idLed:  0 hr, 1 min - end");
    machine.owner("'idle x", 59s);
    machine.inMessage("idLe:", [&] { machine.restart(); });
    EXPECT_EQ(machine.saidWithin(2min).back(), "load:  <b>2</b> - mp3s played:  <b>0</b>");
    EXPECT_EQ(machine.answer("'idleoff"), "idLed:  0 hr, 0 min - end");
}

} // namespace
} // namespace larkspin
