// What becomes of a connection before and with its welcome.
#include "support/irc_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcBeginning : public IrcTest {};

TEST_F(IrcBeginning, WithWhatAServerSaysBeforeItsWelcome) {
    server.takes = [&](const std::string& line) {
        if (line == "NICK Owner")
            server.say(
                "NOTICE * :*** Looking up\x02 your host\r\n:irc 020 * :Please wait\r\n:irc 421 "
                "* CAP :Unknown\r\n:irc 421 * HI :Unknown\r\n:irc FAIL * X :No\r\n:irc WARN * X :Wet\r\n"
                ":irc NOTE * X :Odd\r\n:irc 372 * :hi\r\nNOTICE\r\nNOTICE * :\r\n:irc 464 "
                "Owner :Password incorrect");
        return false;
    };
    begin();
    EXPECT_EQ(seen,
              "- connecting to irc.test\n- irc.test: *** Looking up your host\n"
              "- irc.test: Please wait\n- irc.test: Unknown\n- irc.test: No\n- irc.test: Wet\n"
              "- irc.test: Odd\n- irc.test: Password incorrect\n"
              "- /pass asks for the password of this server\n- you are Owner on irc.test\n"
              "- you are in #music\n");
}

// The server stays awake for five minutes.
void awaken(IrcMachine& machine) {
    for (int minute = 0; minute < 5; ++minute)
        machine.loop.once(minute * 1min, [&] { machine.server.say("x"); });
}

// Somebody has it as the connection begins.
TEST(IrcBeginnings, TheWantedNameIsTakenBackWhenItIsFreeButNotFromServices) {
    const struct {
        const char *told, *asked;
    } ways[] = {
        {":owner!x@y QUIT :bye", "NICK Owner\n"},
        {":OWNER!x@y NICK other", "NICK Owner\n"},
        {":irc 303 Owner_ :", "NICK Owner\n"},
        {":irc 303 Owner_ :Owner ", ""},
        {":irc 303 Owner_ :ann owner", ""},
        {":irc 005 Owner_ MONITOR=100 :are supported\r\n:irc 731 Owner_ :ann,Owner",
         "MONITOR + Owner\nNICK Owner\n"},
        {":irc 731 Owner_ :ann", ""},
        {":ann!x@y QUIT :owner", ""},
        {":irc 432 Owner_ Owner :Bad\r\n:owner!x@y QUIT :bye", ""},
        {":irc NICK x\r\n:Owner_!o@host NICK Guest1\r\n:Owner!x@y QUIT :bye", ""},
    };
    for (const auto& [told, asked] : ways) {
        IrcMachine machine;
        machine.server.takes = [&](const std::string& line) {
            if (line == "NICK Owner" && machine.server.nick.empty())
                machine.server.say(":irc 433 * Owner :in use");
            return line == "NICK Owner";
        };
        machine.begin();
        EXPECT_EQ(machine.sentOf([&, line = told] { machine.server.say(line); }), asked) << told;
        machine.server.say(":Owner_!o@host NICK Owner");
        const std::string later = machine.sentOf([&] { awaken(machine); }, 5min);
        EXPECT_EQ(later.find("ISON"), later.npos) << told;
        EXPECT_EQ(later.find("MONITOR - Owner\n") != later.npos, asked[0] == 'M') << told;
        EXPECT_EQ(machine.sentOf([&] { machine.server.lose("x"); }, 10s).find("MONITOR"),
                  later.npos);
    }
    IrcMachine machine;
    machine.server.takes = [&](const std::string& line) {
        if (line == "NICK Owner")
            machine.server.say(":irc 433 * Owner :in use");
        return line == "NICK Owner";
    };
    machine.begin();
    EXPECT_NE(machine.seen.find("Owner is somebody else's name now"), machine.seen.npos);
    EXPECT_EQ(machine.sentOf([&] { awaken(machine); }, 239s).substr(0, 11), "ISON Owner\n");
    machine.told(":irc 005 Owner_ MONITOR=100 :are supported");
    EXPECT_EQ(machine.sentOf([&] { awaken(machine); }, 239s).find("ISON"), std::string::npos);
    for (const char* free : {":irc 303 Owner_ :", ":irc 731 Owner_ :Owner"}) {
        EXPECT_EQ(machine.sentOf([&] { machine.server.say(free); }), "NICK Owner\n");
        EXPECT_EQ(machine.seen, ""); // refused once more
        EXPECT_NE(machine.sentOf([&] { awaken(machine); }, 239s).find("ISON Owner\n"),
                  std::string::npos);
    }
    EXPECT_EQ(machine.told(":irc 433 Owner_ Owner :in use"), "- Owner: in use\n");
    machine.told(":irc 734 Owner_ 100 Owner :full"); // it watches nobody more
    EXPECT_NE(machine.sentOf([&] { awaken(machine); }, 239s).find("ISON"), std::string::npos);
}

TEST_F(IrcBeginning, ByTlsWhereTheServerWantsThat) {
    server.capabilities = "sts=port=6690,duration=5 echo-message\r\nNOTICE * :come in";
    playlist({"ride.mp3"});
    start();
    seenOf([&] {
        irc.connect({.host = "irc.test", .port = 6667, .encrypted = false}, {.nick = "O"}, "");
    });
    EXPECT_EQ(server.to, (IrcServer{.host = "irc.test", .port = 6690}));
    EXPECT_EQ(seen, "- connecting to irc.test\n- irc.test wants TLS: connecting to port 6690\n"
                    "- irc.test: come in\n- you are O on irc.test\n");
    server.refuses = true; // and never without, whatever happens
    server.lose("x");
    advance(1h);
    EXPECT_TRUE(server.to.encrypted);
}

} // namespace
} // namespace larkspin
