// What is kept of conversations, and what a front end has to show of them.
#include "host/called_by_name.h"
#include "support/shown_lines.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class ConversationsTest : public testing::Test {
protected:
    Conversation& begin(Conversation::Kind kind, const std::string& name) {
        return conversations.add({kind, network, name});
    }
    void say(Conversation& in, const std::string& text, bool isForOwner = false) {
        conversations.keep(in, {.kind = KeptLine::Kind::said,
                                .speaker = "ann",
                                .text = text,
                                .isForOwner = isForOwner});
    }

    VirtualLoop loop;
    ChatLines lines{loop};
    Conversations conversations{loop, lines, "lobby"};
    ShownLines shown{conversations, "- "};
    const int network = conversations.newNetwork("net");
    Conversation& den = begin(Conversation::Kind::room, "#den");
};

TEST_F(ConversationsTest, OthersAreCountedUntilTheyAreEnteredAndShownThen) {
    Conversation& ann = begin(Conversation::Kind::person, "ann");
    say(den, "one");
    say(den, "owner: two", true);
    say(ann, "psst", true);
    conversations.keep(den, {.text = "bob comes in"});
    EXPECT_EQ(shown.take(), "- #den: ann: owner: two\n- ann whispers: psst\n");
    EXPECT_EQ(den.unread(), 2);
    EXPECT_EQ(den.unreadForOwner(), 1);
    EXPECT_EQ(ann.unreadForOwner(), 1);
    conversations.enter(den);
    EXPECT_EQ(shown.take(), "- you are in #den\nann: one\nann: owner: two\n- bob comes in\n");
    EXPECT_EQ(den.unread(), 0);
    say(den, "three");
    conversations.enter(ann); // before the front end has come to rest
    conversations.enter(den);
    say(den, "four");
    EXPECT_EQ(shown.take(),
              "ann: three\n- you talk to ann\nann: psst\n- you are in #den\nann: four\n");
}

TEST_F(ConversationsTest, OfTwoPeopleWithOneNameTheOwnerSeesWhoseNetworkEachIsOn) {
    const int other = conversations.newNetwork("other");
    Conversation& ann = conversations.add({Conversation::Kind::person, other, "ann"});
    for (const auto kind : {KeptLine::Kind::said, KeptLine::Kind::done, KeptLine::Kind::noted})
        conversations.keep(ann, {.kind = kind, .speaker = "ann", .text = "hi", .isForOwner = true});
    EXPECT_EQ(shown.take(), "- ann on other whispers: hi\n- ann on other whispers: * ann hi\n"
                            "- ann on other notes: hi\n");
}

TEST_F(ConversationsTest, WhatIsOldIsShownAsItComesAndStandsWhereItBelongs) {
    const auto say = [&](const std::string& text, std::time_t at, bool isOld = false) {
        conversations.keep(den, {.kind = KeptLine::Kind::said,
                                 .speaker = "ann",
                                 .text = text,
                                 .at = at,
                                 .isOld = isOld});
    };
    const auto kept = [&] {
        std::string all;
        for (const KeptLine& line : den.lines())
            all += line.text;
        return all;
    };
    say("a", 10);
    say("e", 50);
    conversations.enter(den);
    shown.take();
    say("c", 30, true);
    say("g", 70);
    say("b", 20, true);
    say("f", 60, true);
    for (int time = 0; time < 2; ++time)
        say("c", 30, true);
    EXPECT_EQ(shown.take(), "ann: b\nann: c\nann: f\nann: g\n");
    EXPECT_EQ(kept(), "abcefg");
    conversations.enter(conversations.home());
    conversations.enter(den);
    EXPECT_EQ(shown.take(), "- you are at home\n- you are in #den\n");
    conversations.enter(conversations.home());
    say("d", 40, true);
    say("h", 80);
    EXPECT_EQ(den.unread(), 2);
    conversations.enter(den);
    EXPECT_EQ(shown.take(), "- you are at home\n- you are in #den\nann: d\nann: h\n");
}

TEST_F(ConversationsTest, WhatIsLeftIsShownBeforeItGoes) {
    conversations.enter(den);
    say(den, "bye");
    conversations.remove(den);
    Conversation& next = begin(Conversation::Kind::room, "#den"); // perhaps at the same address
    conversations.enter(next);
    say(next, "hi");
    EXPECT_EQ(shown.take(),
              "- you are in #den\nann: bye\n- you are at home\n- you are in #den\nann: hi\n");
}

TEST_F(ConversationsTest, ManyUnreadLinesAreNotShownAllAtOnce) {
    for (int line = 0; line < NewLines::mostUnread + 5; ++line)
        say(den, std::to_string(line));
    conversations.enter(den);
    EXPECT_TRUE(shown.take().starts_with("- you are in #den\n- 5 before\nann: 5\n"));
    conversations.showAgain(2);
    EXPECT_EQ(shown.take(), "- you are in #den\n- 203 before\nann: 203\nann: 204\n");
    conversations.showAgain(1000);
    EXPECT_TRUE(shown.take().starts_with("- you are in #den\nann: 0\nann: 1\n"));
}

TEST_F(ConversationsTest, AFloodIsShownWholeAlsoWhereItIsNotKeptWhole) {
    conversations.enter(den);
    shown.take();
    constexpr auto flood = static_cast<std::ptrdiff_t>(Conversation::mostLines + 2'000);
    for (std::ptrdiff_t line = 0; line < flood; ++line)
        say(den, "hi");
    EXPECT_EQ(std::ranges::count(shown.take(), '\n'), flood);
}

TEST_F(ConversationsTest, LinesAreKeptWithinBounds) {
    for (int line = 0; line < 10'005; ++line)
        say(den, "hi");
    EXPECT_EQ(den.lines().size(), Conversation::mostLines);
    EXPECT_EQ(den.lines().front().number, 6U);
    for (int line = 0; line < 1'000; ++line)
        say(den, std::string(5'000, 'x'));
    EXPECT_LE(den.bytes(), Conversation::mostBytes);
    Conversation& quiet = begin(Conversation::Kind::room, "#quiet");
    say(quiet, "hi");
    std::size_t all = 0;
    for (int number = 0; number < 20; ++number) {
        Conversation& room = begin(Conversation::Kind::room, std::to_string(number));
        for (int line = 0; line < 300; ++line)
            say(room, std::string(5'000, 'x'));
    }
    for (const auto& each : conversations.all())
        all += each->bytes();
    EXPECT_LE(all, Conversations::mostBytes);
    EXPECT_EQ(quiet.lines().size(), 1U); // which holds least
}

// A connection brings several lines of several rooms in one event.
TEST_F(ConversationsTest, WhatIsSaidOfALineBelongsWhereThatWasHeard) {
    Conversation& music = begin(Conversation::Kind::room, "#music");
    std::string places;
    const auto speak = [&] {
        const Conversation* const place = conversations.toSpeakIn();
        places += place ? place->name() + ' ' : "nowhere ";
    };
    lines.connect([&](const ChatLine&) {
        speak();
        conversations.enter(music);
        speak();
    });
    loop.post([&] {
        for (const Conversation* place : {&den, &music})
            lines.heard({"Owner", "'stop"}, place->place());
        speak(); // what is about neither
        conversations.enter(den);
        speak(); // it has spoken first elsewhere
        music.isOpen = false;
        speak();
    });
    loop.serveTurn();
    EXPECT_EQ(places, "#den #den #music #music #music #music nowhere ");
    loop.post([&] {
        conversations.enter(music); // where nothing can be said
        speak();
    });
    loop.serveTurn();
    EXPECT_TRUE(places.ends_with(" lobby "));
}

TEST_F(ConversationsTest, LinesHaveTheirTimeAndTheDayIfItIsAnother) {
    say(den, "now");
    conversations.keep(den, {.text = "long ago", .at = loop.moment() - 24 * 3600});
    EXPECT_EQ(stampOf(den.lines()[0], loop), "19:05");
    EXPECT_EQ(stampOf(den.lines()[1], loop), "2003-12-18 19:05");
}

TEST(CalledByName, IsAWordOfItsOwn) {
    for (const char* calls : {"jo", "Jo: hi", "hi JO", "(jo)", "joe and jo", "jo's"})
        EXPECT_TRUE(callsByName(calls, "Jo")) << calls;
    for (const char* not_ : {"", "joe", "banjo", "_jo", "jo2", "jó", "j o"})
        EXPECT_FALSE(callsByName(not_, "Jo")) << not_;
    EXPECT_FALSE(callsByName("hi", ""));
    EXPECT_TRUE(callsByName("hi jo[x]", "Jo[x]"));
}

} // namespace
} // namespace larkspin
