// Moderation as its owner sees it, in the room of a chat client and in his own.
#include "app/program.h"
#include "host/window_tree/host_wait.h"
#include "support/own_room_machine.h"
#include "support/pretend_host.h"
#include "support/talk.h"

#include <algorithm>

namespace larkspin {
namespace {

// The client's room, which is the owner's.
struct HisRoom : VirtualMachine {
    explicit HisRoom(const Lines& people = {"Owner", "Bob", "<b>ann", "zoe x"}) {
        host.ownsRoom = true;
        start();
        host.people = people;
    }
    bool ignores(const std::string& name) { return std::ranges::count(host.ignored, name) == 1; }
    // What comes of a line, with what happens in the middle of the first message.
    std::string answerAmid(const std::string& line, const Task& meanwhile) {
        inMessage("<b>", meanwhile);
        return answer(line);
    }
    double seconds(const std::string& line) {
        const auto before = loop.now();
        answer(line);
        return std::chrono::duration<double>(loop.now() - before).count();
    }

    PretendHost host{*this};
};

TEST(Moderation, SparesNobodyWhoseNameHoldsTheFragment) {
    HisRoom m;
    converse(m, {Turn("'x B", "<b>Bob</b>, ignored bastard\n<b><b>ann</b>, ignored bastard"),
                 Turn("'unx ann", "<b><b>ann</b>, unignored bastard"),
                 Turn({"'x owner", "'ban owner"}, ""),
                 Turn({"'x nobody", "'ban nobody", "'unban o"}, "fag not found"),
                 Turn("'ban e x", "<b>zoe x</b>, ejected bastard"),
                 Turn("'unx ", "<b>Bob</b>, unignored bastard\n<b><b>ann</b>, unignored bastard")});
    m.host.ownsRoom = false;
    converse(m, {Turn({"'ban b", "'unban z"}, "you aren't the owner, dumbass")});
    m.host.ownsRoom = true;
    converse(m, {Turn("'unban ", "<b>zoe x</b>, unbanned bastard"),
                 Turn("'silent", "silent mode - <b>on"),
                 Turn({"'x nobody", "'ban ann", "'x bob"}, "")});
    EXPECT_TRUE(m.ignores("Bob"));
    EXPECT_FALSE(m.ignores("zoe x"));
}

TEST(Moderation, TakesAThousandPeople) {
    HisRoom m;
    for (int number = 0; number < 1000; ++number)
        m.host.people.push_back("guest " + std::to_string(number));
    EXPECT_NEAR(m.seconds("'x o"), 0.9 + 2 * 0.06, 0.001); // the owner as well
    EXPECT_NEAR(m.seconds("'x guest"), 300 + 1000 * 0.06, 0.01);
    EXPECT_TRUE(m.ignores("guest 999"));
    EXPECT_EQ(m.room.lines.size(), 1000u);
}

TEST(Moderation, ACommandThatComesMeanwhileRunsAfterwards) {
    HisRoom m;
    EXPECT_EQ(m.answerAmid("'x b",
                           [&] {
                               for (const char* line : {"'ban ann", "'trig?", "'unban a", "'x bob"})
                                   m.owner(line);
                           }),
              "<b>Bob</b>, ignored bastard\nyour trigger is '\n<b><b>ann</b>, ignored bastard\n"
              "<b><b>ann</b>, ejected bastard\n<b><b>ann</b>, unbanned bastard\n"
              "<b>Bob</b>, ignored bastard");
    m.answerAmid("'x bob", [&] {
        for (int time = 0; time < 1000; ++time)
            m.owner("'x bob");
    });
    EXPECT_EQ(m.room.lines.size(), 65u);
}

TEST(Moderation, EndsWithTheRun) {
    HisRoom m;
    m.owner("'ban bob");
    m.owner("'ban zoe");
    m.answerAmid("'unban ", [&] {
        m.owner("'ban bob");
        m.program->restart();
        m.owner("'x nobody");
    });
    EXPECT_EQ(m.said(), "fag not found"); // of the new run, after all that the last one left
    converse(m, {Turn("'ban ann", "<b><b>ann</b>, ejected bastard"), // the people show again
                 Turn("'unban z", "<b>zoe x</b>, unbanned bastard"),
                 Turn("'unban ", "<b><b>ann</b>, unbanned bastard")});
    m.loop.once(0ms, [&] { m.program->restart(); }); // before anything is done
    m.owner("'x ann", 1s);
    EXPECT_FALSE(m.ignores("<b>ann"));
}

TEST(Moderation, EndsWithTheProcess) {
    HisRoom m;
    m.inMessage("<b>Bob", [&] { m.program->end(); });
    EXPECT_FALSE(m.owner("'x "));
    EXPECT_TRUE(m.ignores("Bob"));
    EXPECT_FALSE(m.ignores("zoe x"));
}

TEST(Moderation, HitsNobodyInThePlaceOfOneWhoHasGone) {
    OwnRoomMachine m;
    m.start();
    for (const char* name : {"ann", "bob", "cid", "dan"})
        m.own.comeIn(name);
    m.inMessage("<b>ann", [&] {
        m.own.leave("bob");
        m.own.comeIn("eve");
    });
    EXPECT_EQ(m.answer("'ban "), "<b>ann</b>, ejected bastard\n<b>cid</b>, ejected bastard\n"
                                 "<b>dan</b>, ejected bastard");
    EXPECT_EQ(m.answer("'x "), "<b>eve</b>, ignored bastard");
    m.inMessage("<b>ann", [&] { m.own.enterRoom("den"); }); // and so elsewhere
    EXPECT_EQ(m.answer("'unban "), "<b>ann</b>, unbanned bastard");
}

TEST(Moderation, PressesTheClientsButtons) {
    HisRoom m({"Owner", "ann", "", "bob"});
    const HostHandle button = m.host.host.findRoomIcon("Ignor*");
    m.loop.once(45ms, [&] { EXPECT_TRUE(m.host[button].isHeld); });
    converse(m, {Turn("'x ann", "<b>ann</b>, ignored bastard"),
                 Turn("'x bob", ""), // after an empty row
                 Turn("'unban b", "fag not found")});
    EXPECT_EQ(m.host.pressedButtons, (Lines{"Ignore Member", "Ejected List", "People List"}));
}

TEST(Moderation, EndsAtAButtonThatNeverComes) {
    HisRoom m({"Owner", "ann", "bob", "eve"});
    for (const char* button : {"Ignor*", "Allo*"})
        m.host.remove(m.host.host.findRoomIcon(button));
    m.host.ejected = {"cid", "dan"};
    const auto before = m.loop.now();
    converse(m, {Turn({"'x ", "'unban "}, "")});
    EXPECT_LT(m.loop.now() - before, 2 * longestHostWait + 1s);
    EXPECT_EQ(m.host.pressedButtons, (Lines{"Ejected List", "People List"}));
    HostHandle next = 0; // in which he is after a while without a room
    m.inMessage("<b>ann", [&] {
        m.host.remove(m.host.room);
        m.loop.once(400ms, [&] { next = m.host.addRoom(); });
    });
    converse(m, {Turn("'ban ", "<b>ann</b>, ejected bastard"), Turn("'x ", "fag not found")});
    EXPECT_GT(m.host[m.host.first(next, "_AOL_Listbox")].row, 9u); // none is selected
    EXPECT_EQ(m.host.pressedButtons.size(), 3u);                   // the last one for ann
}

// In the question whether he owns the room, or in the way to those who were put out.
TEST(Moderation, EndsWithTheRunInASearchForAButton) {
    HisRoom m;
    m.host.ejected = {"ann"};
    const auto findsItLate = [&] {
        m.host.remove(m.host.host.findRoomIcon("Ejecte*"));
        m.loop.once(20ms, [&] { m.program->restart(); });
        m.loop.once(40ms, [&] { m.host.add(m.host.room, "_AOL_Icon", "Ejected List"); });
    };
    findsItLate();
    m.owner("'unban ann", 9s);
    EXPECT_EQ(m.host.ejected, Lines{"ann"});
    m.host.asked = [&](HostHandle) { findsItLate(); };
    m.owner("'unban ann", 9s);
    EXPECT_EQ(m.host.ejected, Lines{"ann"});
    EXPECT_EQ(m.host.pressedButtons, (Lines{"Ejected List", "People List"}));
}

} // namespace
} // namespace larkspin
