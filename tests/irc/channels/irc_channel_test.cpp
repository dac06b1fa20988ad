// Who is in a channel, as the server tells it.
#include "irc/channels/irc_channel.h"
#include "irc/protocol/irc_message.h"

#include <ctime>
#include <gtest/gtest.h>
#include <initializer_list>

namespace larkspin {
namespace {

struct IrcChannelTest : testing::Test {
    IrcChannelTest() {
        features.read(*readIrcMessage(
            ":irc 005 me PREFIX=(qaohv)~&@%+ CHANMODES=IXbe,k,fl,imnt CHANTYPES=# :are supported"));
    }
    void told(std::string_view line) { channel.take(*readIrcMessage(line), features); }

    // With their ranks.
    std::string all(const RowList& list) {
        std::string names;
        for (int row = 0; row < list.count(); ++row)
            names.append(channel.ranks(list.row(row), features)).append(list.row(row)) += ' ';
        return names.substr(0, names.size() - 1);
    }
    std::string people() { return all(channel.people()); }
    void expectPeople(std::initializer_list<std::pair<const char*, const char*>> afterLines) {
        for (const auto& [line, expected] : afterLines) {
            told(line);
            EXPECT_EQ(people(), expected) << line;
        }
    }

    IrcFeatures features;
    IrcChannel channel{"#Music"};
};

TEST_F(IrcChannelTest, PeopleComeGoAndAreRenamedInPlace) {
    expectPeople({
        {":me!u@h JOIN #music", "me"},
        {":irc 353 me = #other :eve", "me"},
        {":irc 353 me = #MUSIC :~@ann  +bob!b@host me", "me ~@ann +bob"},
        {":irc 353 me = #music :carl %+@dora", "me ~@ann +bob carl @%+dora"},
        {":ANN!a@h NICK an[", "me ~@an[ +bob carl @%+dora"},
        {":an{!a@h NICK :An{", "me ~@An{ +bob carl @%+dora"},
        {":bob!b@h PART #music :bye", "me ~@An{ carl @%+dora"},
        {":x!x@h KICK #Music CARL :out", "me ~@An{ @%+dora"},
        {":eve!e@h JOIN :#music", "me ~@An{ @%+dora eve"},
        {":eve!e@h NICK", "me ~@An{ @%+dora"}, // whatever he is called now
        {":eve!e@h JOIN :#music", "me ~@An{ @%+dora eve"},
        {":eve!e@h NICK dora", "me ~@An{ dora"},
        {":An[!a@h QUIT :gone", "me dora"},
        {":dora!d@h JOIN #music", "me dora"},
    });
    for (const char* line : {":ann QUIT", ":ann NICK bob", ":x PART #other", ":me PART",
                             "JOIN #music", ":x KICK #music", ":x MODE #music +o",
                             ":irc 353 me = #music :@ +", ":me PRIVMSG #music :a"})
        expectPeople({{line, "me dora"}});
}

TEST_F(IrcChannelTest, RanksFollowModes) {
    told(":irc 353 me = #music :me ann bob");
    expectPeople({
        {":x MODE #music +ov-o+v me ann me me", "+me +ann bob"},
        {":x MODE #music +lkfXo 5 key 3:1 mask ann", "+me @+ann bob"},
        {":x MODE #music -lfknto key ann", "+me +ann bob"},
        {":x MODE #music -l+q ann", "+me ~+ann bob"},
        {":x MODE #music +ooooooooooooooo 1 2 3 4 5 6 7 8 9 10 11 12 ME ann bob",
         "@+me ~@+ann @bob"},
        {":irc 353 me = #music :+me @ann bob", "+me @+ann bob"},
        {":x MODE #music vo ann :bob", "+me @+ann @bob"},
    });
    EXPECT_TRUE(channel.mayEject("BOB", features));
    EXPECT_FALSE(channel.mayEject("me", features));
}

TEST_F(IrcChannelTest, BansAreCalledByTheNickThatTheyAreAbout) {
    for (const char* mask :
         {"bob!*@*", "*!*@host", "BOB!x@y", "bob!*@*", "$a:eve", "~q:ann!*@*", "!x@y"})
        told(std::string(":irc 367 me #music ") + mask + " op 1");
    told(":irc 367 me #music " + std::string(513, 'x'));
    EXPECT_EQ(all(channel.ejected()), "bob *!*@host $a:eve ~q:ann!*@* !x@y");
    EXPECT_EQ(channel.masksOf("bob"), (std::vector<std::string>{"bob!*@*", "BOB!x@y"}));
    told(":x MODE #music -b+bX Bob!*@* ann!*@* mask");
    told(":x MODE #music -b+b nobody!*@* ann!*@*");
    EXPECT_EQ(all(channel.ejected()), "*!*@host BOB $a:eve ~q:ann!*@* !x@y ann");
    for (int ban = 0; ban < 5'000; ++ban)
        told(":irc 367 me #music n" + std::to_string(ban) + "!*@*");
    EXPECT_EQ(channel.ejected().count(), static_cast<int>(IrcBans::most));
}

TEST_F(IrcChannelTest, TheTopicIsTheLastOneTold) {
    told(":irc 332 me #music :old songs");
    EXPECT_EQ(channel.topic(), "old songs");
    told(":ann TOPIC #music :new :songs");
    told(":ann TOPIC #other :x");
    EXPECT_EQ(channel.topic(), "new :songs");
    told(":irc 331 me #music :No topic is set");
    EXPECT_EQ(channel.topic(), "");
}

TEST_F(IrcChannelTest, OfAnyNumberOfNamesAsManyAreKeptAsAListHolds) {
    told(":me!u@h JOIN #music");
    told(":" + std::string(1000, 'x') + "!u@h JOIN #music");
    for (int line = 0; line < 2'000; ++line) {
        std::string names;
        for (int name = 0; name < 100; ++name)
            names += " n" + std::to_string(line * 100 + name);
        told(":irc 353 me = #music :" + names);
    }
    EXPECT_EQ(channel.people().count(), RowList::limit);
    EXPECT_EQ(channel.people().row(0), "me");
}

// One after the other, from the back and from the middle: who stays keeps the order.
TEST_F(IrcChannelTest, ANetworkFallsApartAndComesBackAtOnce) {
    const auto begun = std::clock();
    for (int round = 0; round < 2; ++round) {
        for (int name = 0; name < 30'000; ++name)
            told(":n" + std::to_string(name) + "!u@h JOIN #music");
        EXPECT_EQ(channel.people().count(), 30'000);
        for (int name = 29'999; name >= 0; --name)
            if (name % 10'000 != 7)
                told(":n" + std::to_string(name) + "!u@h QUIT :*.net *.split");
        EXPECT_EQ(people(), "n7 n10007 n20007");
    }
    EXPECT_LT(std::clock() - begun, 5 * CLOCKS_PER_SEC);
}

} // namespace
} // namespace larkspin
