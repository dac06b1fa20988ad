// What other programs ask of this one, and lines that aren't written in UTF-8.
#include "support/irc_machine.h"

namespace larkspin {
namespace {

using namespace std::chrono_literals;

class IrcRequestsTest : public InMusic {
protected:
    // What is sent when that has come from somebody, to the owner or a room.
    std::string answerTo(const std::string& request, const std::string& target = "Owner",
                         const std::string& sender = "ann!a@h") {
        const std::string all = sentOf(
            [&] { server.say(':' + sender + " PRIVMSG " + target + " :\x01" + request + '\x01'); });
        advance(10s);
        return all;
    }
};

TEST_F(IrcRequestsTest, AreAnsweredToWhomeverAsksAlone) {
    for (const auto& [request, answer] : std::vector<std::pair<std::string, std::string>>{
             {"VERSION", "VERSION larkspin 4.3.11"},
             {"version", "VERSION larkspin 4.3.11"},
             {"PING 123 45", "PING 123 45"},
             {"PING \x02\xFF<" + std::string(400, 'x'), "PING <" + std::string(61, 'x')},
             {"CLIENTINFO", "CLIENTINFO ACTION CLIENTINFO PING TIME VERSION"}})
        for (const char* target : {"Owner", "#music"})
            EXPECT_EQ(answerTo(request, target), "NOTICE ann :\x01" + answer + "\x01\n") << target;
    EXPECT_TRUE(answerTo("TIME").starts_with("NOTICE ann :\x01TIME 2003-12-19 19:0"));
    EXPECT_EQ(seen, "- ann's program asks for TIME\n");
    EXPECT_EQ(answerTo("DCC SEND x 1 2"), "");
    EXPECT_EQ(seen, "- ann's program asks for DCC\n");
    const std::vector<std::pair<std::string, std::string>> others{
        {"VERSION", "$*"}, {"VERSION", "#den"}, {"", "Owner"}, {"ACTION waves", "Owner"}};
    for (const auto& [request, target] : others)
        EXPECT_EQ(answerTo(request, target == "#den" ? "bob" : target), "") << request << target;
    for (const char* sender : {"irc.test", "Owner!o@host"})
        EXPECT_EQ(answerTo("VERSION", "Owner", sender), "") << sender;
    typed("'x bob", 1s);
    EXPECT_EQ(answerTo("VERSION", "Owner", "bob!b@h"), "") << "he is ignored";
}

TEST_F(IrcRequestsTest, NeitherNoticesNorWhatWasLongAgoIsAnswered) {
    const std::string version = " Owner :\x01VERSION\x01";
    for (const std::string& line :
         {":ann!a@h NOTICE" + version, "@time=2003-12-19T19:00:00.0Z :ann!a@h PRIVMSG" + version,
          "@batch=1 :ann!a@h PRIVMSG" + version})
        EXPECT_EQ(sentOf([&] { server.say(line); }), "") << line;
    EXPECT_NE(
        sentOf([&] { server.say("@time=2003-12-19T19:05:00.0Z :ann!a@h PRIVMSG" + version); }), "");
}

TEST_F(IrcRequestsTest, StrangersNeitherKeepTheProgramBusyNorTheOwner) {
    const auto flood = [&] {
        for (int who = 0; who < 20; ++who)
            server.say(":x" + std::to_string(who) + "!a@h PRIVMSG Owner :\x01PING 1\x01");
    };
    const auto all = sentOf(flood, 10s);
    EXPECT_EQ(std::ranges::count(all, '\n'), 3) << all;
    EXPECT_EQ(std::ranges::count(seen, '\n'), 3) << seen;
    EXPECT_NE(answerTo("PING 1"), "") << "later";
    advance(1min);
    addNotes(40);
    irc.limitSaid(10);
    seenOf([&] { room.say("'scrn"); }, 15s);
    EXPECT_EQ(answerTo("VERSION").find("VERSION"), std::string::npos) << "it has something to say";
}

TEST_F(IrcRequestsTest, LinesThatAreNotInUtf8AreReadInCp1252) {
    for (const auto& [bytes, text] : std::vector<std::pair<std::string, std::string>>{
             {"caf\xE9 \x80\x93\x81\xFF", "caf\u00E9 \u20AC\u201C\uFFFD\u00FF"},
             {"\x02"
              "caf\xE9",
              "<b>caf\u00E9"},
             {"caf\u00E9", "caf\u00E9"},
             {"\u00E9 caf\xE9!", "\u00C3\u00A9 caf\u00E9!"},
             {"\u00E9 cut \xE2\x82", "\u00E9 cut \uFFFD\uFFFD"}})
        EXPECT_EQ(told(":ann!a@h PRIVMSG #music :" + bytes), "ann: " + text + '\n');
    EXPECT_EQ(told(":ann!a@h TOPIC #music :caf\xE9"), "- ann sets the topic: caf\u00E9\n");
    EXPECT_EQ(seenOf([&] { irc.topic(std::nullopt); }), "- the topic is: caf\u00E9\n");
    EXPECT_EQ(told(":irc 301 Owner ann :caf\xE9"), "- ann: caf\u00E9\n");
    EXPECT_EQ(told(":ann!a@h MODE #music +b caf\xE9"), "- ann sets +b caf\u00E9\n");
    EXPECT_EQ(told(":caf\xE9!a@h PRIVMSG #music :hi"), "caf\uFFFD: hi\n");
}

} // namespace
} // namespace larkspin
