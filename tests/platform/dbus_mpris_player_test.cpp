// The other player, among pretended ones on a bus of the test's own.
#include "platform/dbus/mpris_player.h"

#include "support/private_bus.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
using Then = PretendService::Then;
using Answer = std::function<void(sd_bus_message* reply)>;

constexpr auto bound = 250ms, slack = 200ms; // of a question; for a busy machine
constexpr auto prefix = "org.mpris.MediaPlayer2.";

// What a player of that title answers.
Answer song(const char* status, const char* title) {
    return [=](sd_bus_message* reply) {
        sd_bus_message_append(reply, "a{sv}", 3, "Volume", "d", 0.5, "PlaybackStatus", "s", status,
                              "Metadata", "a{sv}", 1, "xesam:title", "s", title);
    };
}

class MprisPlayerTest : public testing::Test {
protected:
    // A player that answers so, or not at all; the buttons that are pressed come into the pipe.
    std::unique_ptr<PretendService> add(const std::string& name, Answer answer,
                                        Then then = Then::stays) {
        const auto called = [this, answer = std::move(answer), then](sd_bus_message* call) {
            const std::string member = sd_bus_message_get_member(call);
            if (member != "GetAll") {
                const bool quiet = sd_bus_message_get_expect_reply(call) == 0;
                buttons.write(member + (quiet ? "\n" : " waits\n"));
                return then;
            }
            sd_bus_message* reply = nullptr;
            sd_bus_message_new_method_return(call, &reply);
            const BusMessage kept(reply);
            if (answer)
                answer(reply);
            if (answer)
                sd_bus_send(nullptr, reply, nullptr);
            return then;
        };
        return std::make_unique<PretendService>(bus.address(), prefix + name,
                                                "/org/mpris/MediaPlayer2", called);
    }
    std::string pressed() {
        pollfd readable{buttons.out(), POLLIN, 0};
        ::poll(&readable, 1, 5000);
        return buttons.readNow();
    }
    std::chrono::nanoseconds timeOf(const std::function<void()>& action) {
        const auto begin = std::chrono::steady_clock::now();
        action();
        return std::chrono::steady_clock::now() - begin;
    }

    Pipe buttons;
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
        EXPECT_EQ(player.title(), set.chosen);
        EXPECT_EQ(player.press(OtherPlayer::Button::next), set.chosen.has_value());
        if (set.chosen)
            EXPECT_EQ(pressed(), "Next\n");
    }
}

TEST_F(MprisPlayerTest, PressesEachButtonWithoutWaitingForIt) {
    const auto one = add("one", song("Playing", "x"));
    using Button = OtherPlayer::Button;
    const std::vector<std::pair<Button, std::string>> members{{Button::previous, "Previous\n"},
                                                              {Button::play, "Play\n"},
                                                              {Button::stop, "Stop\n"},
                                                              {Button::next, "Next\n"}};
    for (const auto& [button, member] : members) {
        EXPECT_TRUE(player.press(button));
        EXPECT_EQ(pressed(), member);
    }
}

TEST_F(MprisPlayerTest, OneThatHangsHidesNoneAndHoldsNobodyUp) {
    const auto hanging = add("a", {});
    EXPECT_LT(timeOf([&] { EXPECT_EQ(player.title(), ""); }), bound + slack);
    EXPECT_TRUE(player.press(OtherPlayer::Button::next));
    EXPECT_EQ(pressed(), "Next\n");
    const auto works = add("b", song("Stopped", "it works")), hangsToo = add("c", {});
    EXPECT_LT(timeOf([&] { EXPECT_EQ(player.title(), "it works"); }), bound + slack);
}

TEST_F(MprisPlayerTest, TakesTitlesAsTheyComeAndGarbageForNone) {
    const std::string euro = "\u20AC", many(1000, 'x');
    const std::vector<std::pair<std::string, Answer>> answers{
        {"Low, Nick - x",
         [](auto* reply) {
             sd_bus_message_append(reply, "a{sv}", 2, "Metadata", "a{sv}", 2, "xesam:artist", "as",
                                   3, "Low", "", "Nick", "xesam:title", "s", "x", "Rate", "i", 7);
         }},
        {" a  b ", song("Playing", "\na\r\nb\u0085")},
        {"", song("Playing", "")},
        {std::string(300, 'x'), song("Playing", many.c_str())},
        {std::string(299, 'x') + euro,
         [&](auto* reply) { song("Playing", (many.substr(1, 299) + euro + euro).c_str())(reply); }},
        {"y",
         [](auto* reply) {
             sd_bus_message_append(reply, "a{sv}", 2, "PlaybackStatus", "i", 3, "Metadata", "a{sv}",
                                   2, "xesam:artist", "s", "no list", "xesam:title", "s", "y");
         }},
        {"",
         [](auto* reply) {
             sd_bus_message_append(reply, "a{sv}", 2, "PlaybackStatus", "as", 0, "Metadata",
                                   "a{sv}", 1, "xesam:title", "as", 1, "a list");
         }},
        {"", [](auto* r) { sd_bus_message_append(r, "a{sv}", 1, "Metadata", "s", "none"); }},
        {"", [](auto* r) { sd_bus_message_append(r, "s", "no properties"); }},
        {"", [](auto*) {}},
    };
    for (std::size_t at = 0; at < answers.size(); ++at) {
        const auto one = add("one", answers[at].second);
        EXPECT_EQ(player.title(), answers[at].first) << at;
    }
}

TEST_F(MprisPlayerTest, OneThatGoesAwayMeanwhileIsNone) {
    {
        const auto leaving = add("a", {}, Then::leaves);
        EXPECT_LT(timeOf([&] { EXPECT_EQ(player.title(), std::nullopt); }), bound + slack);
    }
    const auto leaving = add("a", song("Playing", "the last"), Then::leaves);
    EXPECT_EQ(player.title(), "the last");
    EXPECT_EQ(player.title(), std::nullopt);
    EXPECT_FALSE(player.press(OtherPlayer::Button::play));
}

TEST_F(MprisPlayerTest, WithoutABusThatAnswersThereIsNone) {
    const auto one = add("one", song("Playing", "x"));
    const auto isNone = [&](MprisPlayer&& asked) {
        EXPECT_LT(timeOf([&] { EXPECT_EQ(asked.title(), std::nullopt); }), bound + slack);
        EXPECT_FALSE(asked.press(OtherPlayer::Button::play));
    };
    bus.signal(SIGSTOP);
    isNone(MprisPlayer(bus.address()));
    bus.signal(SIGCONT);
    EXPECT_EQ(player.title(), "x") << "it answers again";
    bus.signal(SIGKILL);
    isNone(MprisPlayer(bus.address()));
    for (const auto* address : {"", "unix:path=/nonexistent", "no address", "unix:", "autolaunch:"})
        isNone(MprisPlayer(address));
}

TEST_F(MprisPlayerTest, LeavesNoDescriptorBehind) {
    const auto answers = add("a", song("Playing", "x"));
    const auto count = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = count();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(player.title(), "x");
    EXPECT_EQ(count(), before);
}

} // namespace
} // namespace larkspin
