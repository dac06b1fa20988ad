// The chat client as a tree of windows. The owner's lines go through it, and each operation is
// tried on windows that come late, stand in another order, or aren't there.
#include "host/window_tree/host_bytes.h"
#include "support/pretend_client.h"
#include "support/talk.h"
#include "text/row_list.h"

namespace larkspin {

namespace {

struct WindowTree : testing::Test {
    WindowTree() { machine.start(); }

    std::chrono::duration<double> timeOf(const Task& operation) {
        const Nanoseconds start = machine.loop.now();
        operation();
        return machine.loop.now() - start;
    }
    Lines namesIn(HostHandle list) {
        RowList names;
        client.readHostList(list, names, true);
        Lines read;
        for (int row = 0; row < names.count(); ++row)
            read.emplace_back(names.row(row));
        return read;
    }
    std::string captionOf(HostHandle icon) { return client.controlText(icon); }

    VirtualMachine machine;
    PretendHost host{machine};
    WindowTreeHost& client = host.host;
};

} // namespace

TEST_F(WindowTree, TakesNothingForARoomThatLacksAControl) {
    host.remove(host.first(host.room, "_AOL_Combobox"));
    EXPECT_EQ(client.findChatRoom(), noHandle);
    EXPECT_EQ(machine.answer("'clear"), "");
}

TEST_F(WindowTree, DoesWhatTheRealWindowsDo) {
    for (const ClientCase& each : clientCases()) {
        PretendClient pretended(machine);
        expectCase(pretended, each);
    }
    machine.host = &machine.room;
}

TEST_F(WindowTree, LosesNoLineToAnotherOne) {
    machine.forget();
    machine.loop.post([&] { client.sendChatLine("in between"); });
    client.sendChatLine("first");
    machine.loop.post([&] { client.clearChatInput(); });
    client.sendChatLine("last");
    EXPECT_EQ(machine.allSaid(), (Lines{"in between", "first", "last"}));
    // Nor what the owner has begun to type in the client, unless he has it cleared.
    std::string& input = host[host.first(host.room, "RICHCNTL")].text;
    input = "half a line";
    machine.loop.post([&] { client.sendChatLine("in between"); });
    client.sendChatLine("first");
    EXPECT_EQ(input, "half a line");
    machine.loop.post([&] { client.clearChatInput(); });
    client.sendChatLine("last");
    EXPECT_EQ(input, "");
}

TEST_F(WindowTree, TakesNoneOfTwoGreetingsThatDiffer) {
    const HostHandle letter = host.addChild("Welcome, Ann!");
    EXPECT_EQ(client.currentScreenName(), "");
    host[letter].text = "Welcome, Owner!";
    EXPECT_EQ(client.currentScreenName(), "Owner");
}

TEST_F(WindowTree, ReadsWhatItCanOfTheLists) {
    host.people = {"Owner", "Ann", "Bob"};
    host.unreadableRow = 1;
    EXPECT_EQ(namesIn(client.peopleList()), (Lines{"Owner", "", "Bob"}));
    host.mayBeRead = false;
    EXPECT_EQ(namesIn(client.peopleList()), Lines{});
    EXPECT_EQ(namesIn(noHandle), Lines{});
    host.mayBeRead = true;
    host.people.assign(40000, "somebody"); // more than a list can have
    EXPECT_EQ(namesIn(client.peopleList()).size(), 32767u);
}

TEST_F(WindowTree, FindsAButtonBehindMany) {
    for (int more = 0; more < 50; ++more)
        host.add(host.room, "_AOL_Icon", "other");
    host.add(host.room, "_AOL_Icon", "Last");
    EXPECT_EQ(captionOf(client.findRoomIcon("La*")), "Last");
}

TEST_F(WindowTree, WaitsForAButtonWithinItsBound) {
    machine.loop.once(3s, [&] { host.add(host.room, "_AOL_Icon", "Late"); });
    EXPECT_EQ(captionOf(client.findRoomIcon("Lat*")), "Late");
    HostHandle found = 1;
    EXPECT_NEAR(timeOf([&] { found = client.findRoomIcon("ejecte*"); }).count(), 10, 0.1);
    EXPECT_EQ(found, noHandle);
    machine.loop.once(2s, [&] { host.remove(host.room); });
    EXPECT_NEAR(timeOf([&] { client.findRoomIcon("never"); }).count(), 2, 0.1);
    EXPECT_EQ(timeOf([&] { client.findRoomIcon("never"); }), 0s);
}

TEST_F(WindowTree, TakesNoOtherProgramForTheClient) {
    client.bringHostForward();
    host.remove(host.frame);
    client.bringHostForward();
    client.sendHostKeys("%OO");
    EXPECT_EQ(host.activated, Lines{"America  Online"});
    EXPECT_EQ(host.keys, Lines{});
}

// The owner is writing one himself, and one is asked for while another waits for its window.
TEST_F(WindowTree, KeepsPrivateMessagesApart) {
    const HostHandle own = host.addMessageWindow("friend");
    const HostHandle text = host.first(own, "RICHCNTL");
    host[text].text = "half a message";
    machine.loop.once(20ms, [&] {
        client.sendInstantMessage("$IM_OFF", "off");
        client.sendInstantMessage("b", "to b");
    });
    client.sendInstantMessage("$IM_ON", "on");
    EXPECT_EQ(host.messages, (Lines{"$IM_ON: on", "$IM_OFF: off", "b: to b"}));
    EXPECT_EQ(host[text].text, "half a message");
}

TEST_F(WindowTree, GivesUpWindowsThatDontCome) {
    host.opensWindows = false;
    const auto send = [&] { client.sendInstantMessage("x", "y"); };
    EXPECT_NEAR(timeOf(send).count(), 10, 0.1);
    EXPECT_NEAR(timeOf([&] { client.waitForClockNotice(); }).count(), 10, 0.1);
    host.remove(host.first(host.frame, "AOL Toolbar"));
    EXPECT_EQ(timeOf(send), 0s); // there is nowhere to ask for one
    host.remove(host.frame);
    EXPECT_EQ(timeOf([&] { client.waitForClockNotice(); }), 0s);
}

TEST_F(WindowTree, ReadsTheMessengersAccount) {
    EXPECT_EQ(client.messengerAccount(), "");
    const std::pair<RegistryValue, const char*> values[] = {
        {{1, std::string("Jo\xEB\0rest", 8)}, "Jo\u00EB"},
        {{1, "whole"}, "whole"},
        {{1, ""}, ""},
        {{3, std::string("\x39\x30\0\0", 4)}, "12345"},
        {{3, "\x07"}, "7"},
        {{3, "\xFF\xFF\xFF\xFF more"}, "4294967295"}};
    for (const auto& [value, account] : values) {
        host.registry["Software\\America Online\\AOL Instant Messenger (TM)\\CurrentVersion\\"
                      "Login|Screen Name"] = value;
        EXPECT_EQ(client.messengerAccount(), account);
    }
}

// Whatever is under way, at whichever call: nothing is followed that isn't there, and no wait goes
// on.
TEST_F(WindowTree, OutlivesTheClientAtEveryCall) {
    bool vanished = true;
    for (int at = 1; vanished; ++at) {
        PretendHost dying(machine);
        WindowTreeHost& c = dying.host;
        dying.showDownload("File Transfer - 3%", {"a", "b"});
        dying.showModal("File Transfer - 3%", {"a", "b"});
        dying.vanishAt = dying.calls + at;
        EXPECT_LE(timeOf([&] {
                      c.sendChatLine("x");
                      c.hideWelcomeWindow();
                      for (const Person& person : c.roomPeople().listPeople())
                          c.roomPeople().toggleIgnored(person);
                      c.roomPeople().beginAllowing();
                      c.roomPeople().endAllowing();
                      c.takePrivateMessages(true);
                      c.timeOnline();
                      c.notices().notice();
                      c.notices().download();
                      c.notices().bringBack();
                      c.bringHostForward();
                      c.closeHost();
                  }),
                  1s)
            << at;
        vanished = dying.calls >= dying.vanishAt;
        machine.advance(1s);
    }
    machine.host = &machine.room;
}

// The program ends, and starts anew, while a message waits for its window.
TEST_F(WindowTree, OutlivesTheProgramsEnd) {
    host.opensWindows = false;
    EXPECT_FALSE(machine.run([&] {
        machine.loop.once(1s, [&] { machine.process.end(); });
        client.sendInstantMessage("x", "y");
    }));
    host.opensWindows = true;
    client.sendInstantMessage("x", "z");
    EXPECT_EQ(host.messages, Lines{"x: z"});
}

TEST(HostBytes, SurviveTheWayThereAndBack) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += byte < '\n' || byte > '\r' ? static_cast<char>(byte) : ' ';
    EXPECT_EQ(toSingleByte(fromSingleByte(all)), all);
    EXPECT_EQ(fromSingleByte("\x80\xAC"), "\u20AC\u00AC");
    EXPECT_EQ(toSingleByte(std::string("a\0b", 3) + "\u4E2D\xFF\u0100"), "ab?\xFF?");
}

} // namespace larkspin
