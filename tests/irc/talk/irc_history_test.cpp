// What was said while the owner wasn't there, and what comes in batches.
#include "irc/protocol/irc_time.h"
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcHistoryTest : public IrcTest {
protected:
    void beginWith(const std::string& capabilities) {
        server.capabilities = "echo-message " + capabilities;
        server.takes = [this](const std::string& line) {
            asked += line.starts_with("CHATHISTORY") ? line + '\n' : "";
            return false;
        };
        begin();
    }
    // Lines of #music in a batch of their own, each with its time.
    std::string history(const std::vector<std::pair<const char*, const char*>>& lines,
                        const std::string& kind = "chathistory") {
        std::string all = "BATCH +h " + kind + " #music\r\n";
        for (const auto& [tags, line] : lines)
            all += std::string("@batch=h;time=2001-02-03T") + tags + ' ' + line + "\r\n";
        return told(all + "BATCH -h");
    }
    std::string keptIn(const std::string& name) const {
        std::string all;
        for (const auto& each : conversations.all())
            for (const KeptLine& line : each->lines())
                if (each->name() == name && !line.isProgramsWord())
                    all += line.speaker + ": " + line.text + '\n';
        return all;
    }

    std::string asked;
};

TEST_F(IrcHistoryTest, IsAskedForAsARoomIsEntered) {
    for (const std::string capabilities :
         {"chathistory batch", "chathistory server-time", "batch server-time", "",
          "draft/chathistory batch server-time", "chathistory batch server-time"}) {
        beginWith(capabilities);
        const bool isThere = capabilities.ends_with("chathistory batch server-time");
        EXPECT_EQ(std::exchange(asked, ""), isThere ? "CHATHISTORY LATEST #music * 50\n" : "")
            << capabilities;
    }
    told("@time=2001-02-03T04:05:05.000Z :ann!a@h PRIVMSG #music :one\r\n"
         "@time=2001-02-03T04:05:06.789Z;msgid=x :Owner!o@host PRIVMSG #music :elsewhere");
    seenOf([&] { server.lose("x"); }, 60s);
    EXPECT_EQ(std::exchange(asked, ""),
              "CHATHISTORY LATEST #music timestamp=2001-02-03T04:05:06.000Z 100\n");
    told(":irc 005 Owner CHATHISTORY=20 :are supported");
    joined("#den");
    EXPECT_EQ(asked, "CHATHISTORY LATEST #den * 20\n");
    EXPECT_EQ(told(":irc FAIL CHATHISTORY MESSAGE_ERROR LATEST #den :no"), "");
}

TEST_F(IrcHistoryTest, ATimeIsOneOfTheCalendarAndOfTheZoneThatAllKnow) {
    EXPECT_EQ(momentOfIrc("2001-02-03T04:05:06.789Z"), 981173106);
    for (const char* const wrong :
         {"2001-02-03T04:05:06", "2001-02-03T04:05Z", "2001-02-03 04:05:06Z",
          "x001-02-03T04:05:06Z", "2001-13-03T04:05:06Z", "2001-02-30T04:05:06Z",
          "2001-02-32T04:05:06Z", "2001-02-03T24:05:06Z", "2001-02-03T04:60:06Z",
          "2001-02-03T04:05:61Z"})
        EXPECT_EQ(momentOfIrc(wrong), std::nullopt) << wrong;
}

TEST_F(IrcHistoryTest, IsKeptInItsPlaceOnce) {
    beginWith("batch server-time chathistory");
    told("@time=2001-02-03T10:00:00.000Z;msgid=a :ann!a@h PRIVMSG #music :first");
    told("@time=2001-02-03T12:00:00.000Z :ann!a@h PRIVMSG #music :last");
    server.takes = [](const std::string& line) { return line.starts_with("PRIVMSG"); };
    typed("mine");
    told("@time=2001-02-03T13:00:00.000Z;msgid=m :Owner!o@host PRIVMSG #music :mine");
    joined("#den");
    seenOf([&] { irc.enterRoom("#den"); });
    const std::vector<std::pair<const char*, const char*>> lines{
        {"10:00:00.000Z;msgid=a", ":ann!a@h PRIVMSG #music :first"},
        {"10:00:00.000Z;msgid=b", ":ann!a@h PRIVMSG #music :first"},
        {"11:00:00.000Z", ":bob!b@h PRIVMSG #music :Owner: where are you?"},
        {"11:00:01.000Z", ":Owner!o@host PRIVMSG #music :from elsewhere"},
        {"12:00:00.000Z;msgid=c", ":ann!a@h PRIVMSG #music :last"},
        {"13:00:00.000Z;msgid=m", ":Owner!o@host PRIVMSG #music :mine"}};
    EXPECT_EQ(history(lines), "- #music: bob: Owner: where are you?\n");
    for (const char* kind : {"chathistory", "znc.in/playback"})
        EXPECT_EQ(history(lines, kind), "") << kind;
    const std::string all = "ann: first\nann: first\nbob: Owner: where are you?\n"
                            "Owner: from elsewhere\nann: last\nOwner: mine\n";
    EXPECT_EQ(keptIn("#music"), all);
    const Conversation& music = *conversations.numbered(1);
    EXPECT_EQ(music.unread(), 2);
    EXPECT_EQ(music.unreadForOwner(), 1);
    told(":ann!a@h PRIVMSG #music :new");
    EXPECT_EQ(seenOf([&] { irc.enterRoom("#music"); }),
              "- you are in #music\nann: first\nbob: Owner: where are you?\n"
              "Owner: from elsewhere\nann: new\n");
    EXPECT_EQ(traced().back(), "line of others");
}

TEST_F(IrcHistoryTest, ThousandsOfOneSecondAreEachKeptOnce) {
    beginWith("batch server-time");
    std::vector<std::string> texts;
    std::vector<std::pair<const char*, const char*>> lines;
    for (int number = 0; number < 2000; ++number)
        texts.push_back(":ann!a@h PRIVMSG #music :'volume " + std::to_string(number));
    for (const std::string& text : texts)
        lines.emplace_back("10:00:00Z", text.c_str());
    for (int times = 0; times < 2; ++times) {
        history(lines);
        const std::string all = keptIn("#music");
        EXPECT_EQ(std::ranges::count(all, '\n'), 2000);
    }
}

TEST_F(IrcHistoryTest, HisOwnLinesAreKnownByWhatTheySayWhereTheyHaveNoMark) {
    server.capabilities = "batch server-time";
    begin();
    const std::string line = std::string(150, 'x') + ' ' + std::string(150, 'y');
    typed("hi");
    typed(line);
    advance(100s);
    const struct {
        int secondsAgo;
        std::string text, kept;
    } cases[] = {
        {130, "hi", ""},
        {70, "hi", ""},
        {130, std::string(150, 'x'), ""}, // a piece of it
        {100, "h", "Owner: h\n"},
        {190, "hi", "Owner: hi\n"},
    };
    for (const auto& each : cases) {
        told("BATCH +h chathistory #music\r\n@batch=h;time=" +
             ircTime(loop.moment() - each.secondsAgo) +
             " :Owner!o@host PRIVMSG #music :" + each.text + "\r\nBATCH -h");
        EXPECT_EQ(seen, each.kept) << each.text << each.secondsAgo;
    }
}

TEST_F(IrcHistoryTest, TalksArePlayedBackIntoTheirConversations) {
    beginWith("batch server-time");
    history({{"10:00:00Z", ":ann!a@h PRIVMSG Owner :psst"},
             {"10:00:01Z", ":Owner!o@host PRIVMSG ann :'volume 7"},
             {"10:00:02Z", ":ann!a@h PRIVMSG Owner :\x01"
                           "ACTION waves\x01"},
             {"10:00:03Z", ":irc NOTICE Owner :*** an old notice"},
             {"10:00:04Z", ":eve!e@h NOTICE Owner :look"}},
            "znc.in/playback");
    EXPECT_EQ(seen, "- ann whispers: psst\n- ann whispers: * ann waves\n- eve notes: look\n");
    EXPECT_EQ(told(":eve!e@h NOTICE Owner :again"), "- eve notes: again\n");
    EXPECT_EQ(keptIn("ann"), "ann: psst\nOwner: 'volume 7\nann: waves\n");
    EXPECT_EQ(keptIn("eve"), "eve: look\neve: again\n");
}

TEST_F(IrcHistoryTest, ServersThatLoseEachOtherAreToldInOneLine) {
    beginWith("batch");
    server.names["#music"] = "Owner a b c d e f g";
    server.names["#den"] = "Owner a b";
    server.lose("x");
    advance(10s);
    joined("#den");
    const auto batch = [&](const std::string& kind, const char* what) {
        std::string all = "BATCH +n " + kind + " one.net two.net\r\n";
        for (const char* who : {"a", "b", "c", "d", "e", "f"})
            all += std::string("@batch=n :") + who + "!x@y " + what + "\r\n";
        return told(all + "BATCH -n");
    };
    EXPECT_EQ(batch("netsplit", "QUIT :one.net two.net"),
              "- a, b, c, d, e and 1 other go: one.net and two.net have lost each other\n");
    EXPECT_EQ(conversations.numbered(2)->lines().back().text,
              "a, b go: one.net and two.net have lost each other");
    EXPECT_EQ(room.people().count(), 2);
    EXPECT_EQ(batch("netjoin", "JOIN #music"),
              "- a, b, c, d, e and 1 other come back: one.net and two.net have found each other\n");
    EXPECT_EQ(room.people().count(), 8);
    for (const char* other : {"other", "netsplit", "netjoin"})
        EXPECT_EQ(batch(other, "PART #music").substr(0, 9), "- a goes\n") << other;
    EXPECT_EQ(batch("netsplit", "JOIN #music").substr(0, 13), "- a comes in\n");
}

TEST_F(IrcHistoryTest, BatchesThatNeverEndAreForgotten) {
    beginWith("batch labeled-response");
    std::string many;
    for (int number = 0; number < 1000; ++number)
        many += "BATCH +" + std::to_string(number) + " x\r\n";
    EXPECT_EQ(told(many + "@batch=1 :bob!b@h KICK #music Owner :x"), "");
    EXPECT_EQ(told("@batch=999 :bob!b@h PART #music"), "- bob goes\n");
    seenOf([&] { server.lose("x"); }, 10s);
    EXPECT_EQ(told("@batch=999 :ann!a@h PART #music"), ""); // it was another connection's
    EXPECT_EQ(typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
}

} // namespace
} // namespace larkspin
