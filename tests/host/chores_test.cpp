// Errands in the client, by the room and by the tray.
#include "support/pretend_host.h"
#include "support/talk.h"

#include <iterator>

namespace larkspin {
namespace {

struct WithClient : VirtualMachine {
    WithClient() { start(); }
    Lines deeds() { // since they were asked for last
        Lines all = client.closed.empty() ? Lines() : Lines{"close"};
        client.closed.clear();
        for (Lines* some : {&client.keywords, &client.keys, &client.messages, &launching.started})
            std::ranges::move(std::exchange(*some, {}), std::back_inserter(all));
        return all;
    }
    PretendHost client{*this};
};

TEST(Chores, AreSaidAndDoneInSilenceOnlyDone) {
    const struct {
        std::string line, said;
        Lines deeds;
    } cases[] = {
        {"'kw Caf\u00E9 Now", "goto keyword:  <b>Caf\u00E9 Now", {"Caf\xE9 Now"}},
        {"'PR Den 2", "private room ~> <b>Den 2", {"aol://2719:2-2-Den 2"}},
        {"'url a.b/x.exe", "world wide web:  <b>a.b/x.exe", {"open http://a.b/x.exe"}},
        {"'url c:\\x.exe", "world wide web:  <b>c:\\x.exe", {}},
        {"'new", "opening new mail", {"^r"}},
        {"'old", "opening old mail", {"%MRO"}},
        {"'sent", "opening sent mail", {"%MRS"}},
        {"'signoff", "signing off this piece of shit!", {"%OO"}},
        {"'imson", "ims are now on", {"close", "aol://9293:$IM_ON", "$IM_ON: lks"}},
        {"'imsoff", "ims are now off", {"close", "aol://9293:$IM_OFF", "$IM_OFF: lks"}},
        {"'aim?", "login aim sn > <b> ", {}},
        {"'hidewelc", "welcome window = hidden", {}},
    };
    WithClient machine;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        for (const bool silent : {false, true}) {
            machine.state().silnt = silent;
            EXPECT_EQ(machine.answer(c.line), silent ? "" : c.said);
            EXPECT_EQ(machine.deeds(), c.deeds);
        }
        machine.state().silnt = false;
    }
    EXPECT_EQ(machine.client.shown.back(), std::pair(machine.client.welcome, 0));
    EXPECT_EQ(machine.client.shown.size(), 2u);
    for (const char* entry : {"hidewel", "imo", "imf"}) // of the tray, without a word
        EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray(entry); }), "");
    EXPECT_EQ(machine.client.shown.size(), 3u);
    EXPECT_EQ(machine.deeds(), (Lines{"close", "aol://9293:$IM_ON", "aol://9293:$IM_OFF",
                                      "$IM_ON: lks", "$IM_OFF: lks"}));
    EXPECT_EQ(machine.answer("'closeaol"), "closing this piece of shit!");
    EXPECT_EQ(machine.deeds(), Lines{"close"});
}

TEST(Chores, EndWithTheRunTheyBeganIn) {
    for (const std::string line : {"'kw x", "'url x.org", "'new", "'pr x", "'signoff", "'closeaol"})
        for (const auto moment : {0ms, 199ms}) { // in the message, or in a wait after it
            WithClient machine;
            machine.loop.once(moment, [&] {
                machine.deeds();
                machine.restart();
            });
            machine.owner(line, 9s);
            EXPECT_EQ(machine.deeds(), Lines{}) << line;
        }
    for (const auto moment : {20ms, 300ms}) // before the windows, or after the clock's
        for (const std::string line : {"'imson", "'ot", "'x ann"}) {
            WithClient machine;
            machine.client.people = {"Owner", "ann", "anna"};
            machine.loop.once(moment, [&] { machine.restart(); });
            machine.owner(line, 9s);
            EXPECT_EQ(machine.said(), "load:  <b>2</b> - mp3s played:  <b>0</b>") << line;
        }
}

TEST(Chores, AreSaidWithoutAClient) {
    VirtualMachine machine(Lines{});
    EXPECT_EQ(machine.answer("'imson"), "ims are now on");
    EXPECT_EQ(machine.answer("'pr x"), "private room ~> <b>x");
    EXPECT_EQ(machine.answer("'ot"), "");
}

TEST(Chores, WhereThereIsNoMailThatIsSaid) {
    VirtualMachine machine(Lines{});
    for (const char* line : {"'new", "'old", "'sent"})
        EXPECT_EQ(machine.answer(line), "there is no mail here") << line;
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'new"), "[box] there is no mail here");
}

TEST(OnlineTime, IsReadOffTheClientsNotice) {
    const std::pair<std::string, std::string> cases[] = {
        {"It is 7:05 PM. You have been online for 12 minutes.",
         "online for <b>1</b><b>2</b> minutes."},
        {"\xC4h. Eine \xF6hnlich\xFC 3 h\xF6her", "<b>3</b> h\u00F6her"},
        {"You have been: 5 hours", "<b>5</b> hours"},
        {"Short. Too", ""},
    };
    WithClient machine;
    machine.client.addChild("America Online"); // a window without a text
    for (const auto& [notice, said] : cases) {
        machine.client.clockText = notice;
        EXPECT_EQ(machine.answer("'ot"), said);
    }
    EXPECT_EQ(machine.client.pressedButtons, Lines(4, "OK")); // away with each
    machine.client.opensWindows = false;
    EXPECT_EQ(machine.answer("'ot"), "");
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'ot"),
              "[box] use aol's online clock to view online time in silent mode");
    EXPECT_EQ(machine.deeds(), Lines(5, "online clock"));
}

} // namespace
} // namespace larkspin
