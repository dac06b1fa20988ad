// The other player, among pretended ones on a bus of the test's own.
#include "platform/dbus/mpris_player.h"

#include "support/private_bus.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using Then = PretendService::Then;
using Answer = std::function<void(sd_bus_message* reply)>;

template <class... Values> Answer values(Values... all) {
    return [=](sd_bus_message* reply) { sd_bus_message_append(reply, all...); };
}
Answer song(const char* status, const char* title) {
    return values("a{sv}", 3, "Volume", "d", 0.5, "PlaybackStatus", "s", status, "Metadata",
                  "a{sv}", 1, "xesam:title", "s", title);
}

struct MprisPlayerTest : testing::Test {
    // A player that answers so, or not at all.
    std::unique_ptr<PretendService> add(const std::string& name, Answer answer,
                                        Then then = Then::stays) {
        const auto called = [this, answer = std::move(answer), then](sd_bus_message* call) {
            const std::string member = sd_bus_message_get_member(call);
            sd_bus_message* reply = nullptr;
            if (member != "GetAll") {
                buttons.write(member + (sd_bus_message_get_expect_reply(call) ? " waits" : ""));
            } else if (answer && sd_bus_message_new_method_return(call, &reply) >= 0) {
                answer(reply);
                sd_bus_send(nullptr, BusMessage(reply).get(), nullptr);
            }
            return then;
        };
        return std::make_unique<PretendService>(bus.address(), "org.mpris.MediaPlayer2." + name,
                                                "/org/mpris/MediaPlayer2", called);
    }
    static void expectTitle(MprisPlayer& asked, const std::optional<std::string>& title) {
        std::optional<std::string> told;
        EXPECT_TRUE(comesQuickly([&] { return (told = asked.title()) == title; }));
        EXPECT_EQ(told, title);
    }
    void expectPress(OtherPlayer::Button button, const std::string& member) {
        EXPECT_TRUE(comesQuickly([&] { return player.press(button); }));
        EXPECT_TRUE(buttons.readSoon().ends_with(member)) << member;
    }

    Pipe buttons; // what was pressed
    PrivateBus bus;
    MprisPlayer player{bus.address()};
};

TEST_F(MprisPlayerTest, IsThePlayingOneBeforeThePausedBeforeTheFirst) {
    struct Case {
        std::vector<std::pair<std::string, const char*>> players;
        std::optional<std::string> chosen;
    };
    const std::vector<Case> cases{
        {{}, std::nullopt},
        {{{"larkspin", "Playing"}, {"larkspin.x", "Playing"}, {"playerctld", "Playing"}},
         std::nullopt},
        {{{"b", "Stopped"}, {"a", "Stopped"}, {"larkspinner", "Stopped"}}, "a"},
        {{{"a", "Stopped"}, {"c", "Paused"}, {"b", "Paused"}}, "b"},
        {{{"a", "Paused"}, {"d", "Playing"}, {"c.instance2", "Playing"}}, "c.instance2"},
    };
    for (const Case& set : cases) {
        std::vector<std::unique_ptr<PretendService>> services;
        for (const auto& [name, status] : set.players)
            services.push_back(add(name, song(status, name.c_str())));
        expectTitle(player, set.chosen);
        if (set.chosen)
            expectPress(OtherPlayer::Button::next, "Next");
        else
            EXPECT_FALSE(player.press(OtherPlayer::Button::next));
    }
}

TEST_F(MprisPlayerTest, PressesEachButtonWithoutWaitingAndLeavesNothingOpen) {
    const auto one = add("one", song("Playing", "x"));
    const auto open = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = open();
    using enum OtherPlayer::Button;
    const std::vector<std::pair<OtherPlayer::Button, std::string>> members{
        {previous, "Previous"}, {play, "Play"}, {stop, "Stop"}, {next, "Next"}};
    for (const auto& [button, member] : members)
        expectPress(button, member);
    EXPECT_EQ(open(), before);
}

TEST_F(MprisPlayerTest, OneThatHangsHidesNoneAndHoldsNobodyUp) {
    const auto hangs = add("a", {});
    expectTitle(player, "");
    expectPress(OtherPlayer::Button::next, "Next");
    const auto works = add("b", song("Stopped", "it works")), hangsToo = add("c", {});
    expectTitle(player, "it works");
}

TEST_F(MprisPlayerTest, TakesTitlesAsTheyComeAndGarbageForNone) {
    const std::string most(299, 'x'), euro = "\u20AC", longer = most + euro + euro;
    const std::vector<std::pair<std::string, Answer>> answers{
        {"Low, Nick - x", values("a{sv}", 2, "Metadata", "a{sv}", 2, "xesam:artist", "as", 3, "Low",
                                 "", "Nick", "xesam:title", "s", "x", "Rate", "i", 7)},
        {" a  b ", song("Playing", "\na\r\nb\u0085")},
        {"", song("Playing", "")},
        {most + euro, song("Playing", longer.c_str())},
        {"y", values("a{sv}", 2, "PlaybackStatus", "i", 3, "Metadata", "a{sv}", 2, "xesam:artist",
                     "s", "no list", "xesam:title", "s", "y")},
        {"", values("a{sv}", 1, "Metadata", "a{sv}", 1, "xesam:title", "as", 1, "a list")},
        {"", values("a{sv}", 1, "Metadata", "s", "none")},
        {"", values("s", "no properties")},
        {"", values("")}};
    for (const auto& [title, answer] : answers) {
        const auto one = add("one", answer);
        expectTitle(player, title);
    }
}

TEST_F(MprisPlayerTest, OneThatGoesAwayMeanwhileIsNone) {
    const auto leaves = add("a", {}, Then::leaves);
    expectTitle(player, std::nullopt);
    add("a", song("Playing", "x")).reset();
    expectTitle(player, std::nullopt);
    EXPECT_FALSE(player.press(OtherPlayer::Button::play));
}

TEST_F(MprisPlayerTest, WithoutABusThatAnswersThereIsNone) {
    const auto one = add("one", song("Playing", "x"));
    bus.signal(SIGSTOP);
    expectTitle(player, std::nullopt);
    EXPECT_FALSE(player.press(OtherPlayer::Button::play));
    bus.signal(SIGCONT);
    expectTitle(player, "x");
    bus.signal(SIGKILL);
    for (const auto& address : {bus.address(), std::string(), std::string("unix:path=/none"),
                                std::string("no address"), std::string("autolaunch:")}) {
        MprisPlayer none(address);
        expectTitle(none, std::nullopt);
    }
}

} // namespace
} // namespace larkspin
