#include "app/program.h"
#include "support/talk.h"

namespace larkspin {

TEST(Shutdown, EndsAtOnceInTheMiddleOfAWait) {
    for (const std::string said : {"", "\nlarkspin player - unload"}) {
        VirtualMachine machine(Lines{});
        machine.directories.driveTexts = {"q:", "r:"};
        machine.owner("'volume 7");
        machine.loop.every(300ms, [&] {
            if (said.empty())
                machine.program->end(); // as a signal does
            machine.hear("'exit");
        });
        EXPECT_EQ(machine.answer("'scanpc"), "scanning pc for <b>mp3</b>, please wait.." + said);
        EXPECT_EQ(machine.program, nullptr);
        EXPECT_EQ(machine.setting("volume"), "7");
        EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
    }
}

TEST(Shutdown, SavesNothingWhileLoading) {
    VirtualMachine machine;
    machine.writeDataFile("larkspin.ini", "[lark]\r\ntrigger='\r\nload=3\r\n");
    machine.loop.once(50ms, [&] { machine.program->end(); });
    EXPECT_FALSE(machine.start());
    EXPECT_EQ(machine.dataFile("larkspin.ini"), "[lark]\r\ntrigger='\r\nload=3\r\n");
}

TEST(Shutdown, SavesAllAsSoonAsAllIsLoadedWithWhatWasTypedMeanwhile) {
    for (const auto moment : {150ms, 250ms, 350ms, 500ms}) { // greeted, loading, the splash goes
        VirtualMachine machine;
        machine.writeDataFile("larkspin.ini", "[lark]\r\ntrigger='\r\nload=3\r\nvolume=12\r\n");
        const auto open = [&] { machine.loop.post([&] { machine.hear("'volume 66"); }); };
        machine.loop.once(1ms, [&] { machine.program->opensBy(open); });
        machine.loop.once(moment, [&] { machine.program->end(); });
        if (machine.start())
            machine.advance(1s);
        EXPECT_EQ(machine.program, nullptr) << moment.count();
        EXPECT_EQ(machine.setting("volume"), "66") << moment.count();
    }
}

TEST(Shutdown, IsHeldUpByNothingThatWasTypedAtTheStart) {
    VirtualMachine machine;
    machine.start();
    machine.program->opensBy([&] { machine.loop.post([&] { machine.hear("'scanpc"); }); });
    machine.directories.driveTexts = {"q:", "r:"};
    const auto before = machine.loop.now();
    EXPECT_FALSE(machine.endProcess());
    EXPECT_LT(machine.loop.now() - before, 1s);
}

TEST(Shutdown, WaitsForNoRecitalThatCantGoOnBeforeTheEnd) {
    VirtualMachine machine;
    machine.start();
    machine.loop.post([&] { machine.hear("'stats"); });
    machine.loop.serveTurn();
    const auto before = machine.loop.now();
    EXPECT_FALSE(machine.endProcess());
    EXPECT_LT(machine.loop.now() - before, 100ms);
}

TEST(Shutdown, GoesOnWhenTheSessionDoesntEndAfterAll) {
    VirtualMachine machine({"a.mp3"});
    machine.owner("'volume 7");
    machine.program->keep();
    EXPECT_EQ(machine.setting("volume"), "7");
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  a");
}

TEST(Shutdown, RestartsWithEverythingAnew) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 9.9s);
    machine.says({"'volume 7", "'trig .", ".cont", ".num 1", ".rnd b", ".play ", ".pause"});
    machine.state().idleClock.connect(machine.loop, [] {});
    machine.state().idleClock.enable();
    for (const char* unheard : {".volume 9", ".num 1", ".cancel"})
        machine.loop.once(300ms, [&machine, unheard] { machine.hear(unheard); });
    EXPECT_EQ(machine.answerTo([&] { machine.restart(); }),
              "restarting larkspin player\nlarkspin player - by moraine\n"
              "load:  <b>2</b> - mp3s played:  <b>0</b>");
    const AppState& s = machine.state();
    EXPECT_EQ((Lines{s.trigger, s.pauseMark, s.playMark, s.resumeIndex, s.volumeCaption}),
              (Lines{".", "  II", "  l>", "-1", "     volume:  7"}));
    EXPECT_TRUE(s.cintz);
    EXPECT_TRUE(s.playedMemory.empty());
    EXPECT_TRUE(s.choiceList.empty());
    EXPECT_FALSE(s.idleClock.enabled());
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
    EXPECT_EQ(machine.answer(".cancel"), "") << "nothing is left to choose";
    // Each scanner and each timer is there once, and no row is current.
    const int before = std::stoi(s.programSeconds);
    EXPECT_EQ(machine.answer(".next"), "next:  <b>1</b>.  a");
    EXPECT_EQ(machine.saidWithin(20s), (Lines{"next:  <b>2</b>.  b", "next:  <b>1</b>.  a"}));
    EXPECT_EQ(s.programSeconds, std::to_string(before + 20));
    EXPECT_EQ(machine.setting("played"), "2");
}

} // namespace larkspin
