// What is said in rooms that take no codes for how text looks.
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcSpeechTest : public InMusic {
protected:
    // Refuses lines with codes, and when `isQuiet` all lines.
    void refuse(const std::string& answer, bool isQuiet = false) {
        server.takes = [=, this](const std::string& line) {
            const bool isCoded = line.find_first_of("\x02\x03\x0F\x1F") != line.npos;
            const bool isRefused = line.starts_with("PRIVMSG #music ") && (isCoded || isQuiet);
            if (isRefused)
                server.say(":irc " + answer);
            return isRefused;
        };
    }
    void connectWith(const std::string& capabilities) {
        server.capabilities = capabilities;
        server.takes = nullptr;
        seenOf([&] { irc.connect({.host = "irc.test"}, {.nick = "Owner"}, "#music"); });
    }
    bool goesOutWithCodes(const std::string& line) {
        return sentOf([&] { room.say(line); }, 30s).find('\x02') != std::string::npos;
    }
};

TEST_F(IrcSpeechTest, WhatARoomRefusesForItsCodesIsSaidAgainWithoutThem) {
    for (const std::string capabilities : {"echo-message", ""})
        for (const std::string answer :
             {"404 Owner #music :Cannot send to channel",
              "404 Owner #Music :Can't send colors to channel (+c is set)",
              "408 Owner #music :You cannot use control codes on this channel. Not sent: x"}) {
            connectWith(capabilities);
            refuse(answer);
            EXPECT_EQ(typed("<b>1</b> and <b>2</b>"), "Owner: <b>1</b> and <b>2</b>\n") << answer;
            EXPECT_EQ(server.sent.back(), "PRIVMSG #music :1 and 2");
            EXPECT_FALSE(goesOutWithCodes("<b>3</b>"));
            EXPECT_EQ(typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
            EXPECT_EQ(server.sent.back(), "PRIVMSG #music :'\u00AClks - volume set:  7 ");
            told(":ann!a@h MODE #music -c");
            EXPECT_TRUE(goesOutWithCodes("<b>4</b>"));
        }
}

TEST_F(IrcSpeechTest, WhatIsSaidAgainGoesBeforeWhatWaits) {
    for (const std::string capabilities : {"echo-message", ""}) {
        connectWith(capabilities);
        refuse("404 Owner #music :Cannot send to channel");
        const std::string all = sentOf(
            [&] {
                room.say("<b>first");
                room.say("<b>next");
                type(20);
            },
            30s);
        const auto again = all.find("PRIVMSG #music first\nPRIVMSG #music next\n");
        EXPECT_LT(again, all.find("typed 7")) << all;
    }
}

TEST_F(IrcSpeechTest, WhereNothingMayBeSaidTheOwnerIsToldAndTheRoomKeepsItsCodes) {
    for (const std::string capabilities : {"echo-message", ""}) {
        connectWith(capabilities);
        refuse("404 Owner #music :Cannot send to channel", true);
        EXPECT_EQ(sentOf([&] { room.say("<b>hi"); }), "PRIVMSG #music \x02hi\nPRIVMSG #music hi\n");
        EXPECT_NE(seen.find("- #music: Cannot send to channel\n- not said in #music: hi\n"),
                  seen.npos)
            << seen;
        refuse("404 Owner #music :Cannot send to channel (+m)", true);
        EXPECT_EQ(sentOf([&] { room.say("<b>hi"); }), "PRIVMSG #music \x02hi\n");
        EXPECT_NE(seen.find("- #music: Cannot send to channel (+m)\n"), seen.npos) << seen;
    }
}

TEST_F(IrcSpeechTest, AModeTellsThatARoomTakesNoCodes) {
    const struct {
        const char* told;
        bool takesCodes;
    } steps[] = {
        {":ann!a@h MODE #music +tc-n", false},
        {":ann!a@h MODE #music -c", true},
        {":ann!a@h MODE #other +c", true},
        {":irc 324 Owner #music +lc 7", false},
        {":irc 324 Owner #music +nt", true},
        {":ann!a@h MODE #music +S", true},
        {":irc 005 Owner EXTBAN=$,ajrxz :are supported", true},
        {":irc 005 Owner EXTBAN=,ACNORSTU :are supported", false},
    };
    for (const auto& [line, takesCodes] : steps) {
        told(line);
        EXPECT_EQ(goesOutWithCodes("<b>1</b>"), takesCodes) << line;
    }
}

} // namespace
} // namespace larkspin
