// How a connection begins, with servers of all kinds.
#include "irc/connection/irc_registration.h"
#include "irc/protocol/irc_message.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

class Beginning {
public:
    explicit Beginning(IrcIdentity identity = {.nick = "Owner"}, bool encrypted = true)
        : registration(
              std::move(identity), encrypted, [this](const std::string& line) { sent += line; },
              [this](const std::string& text) { told += text + '\n'; }) {
        registration.begin();
    }

    // What it sends on that, without the ends of lines.
    std::string on(std::string_view line) {
        sent.clear();
        registration.take(*readIrcMessage(line));
        std::erase(sent, '\r');
        return sent;
    }

    std::string sent, told;
    IrcRegistration registration;
};

const IrcIdentity withAccount{.nick = "Owner", .account = "owner", .password = "secret"};
constexpr const char* plainLogin = "AUTHENTICATE AG93bmVyAHNlY3JldA==\n";

TEST(IrcRegistration, AsksForCapabilitiesInSeveralLines) {
    Beginning beginning;
    EXPECT_EQ(beginning.sent, "CAP LS 302\r\nNICK Owner\r\nUSER larkspin 0 * Owner\r\n");
    EXPECT_EQ(beginning.on(":irc CAP * LS * :sasl=PLAIN znc.in/self-message echo-message"), "");
    EXPECT_EQ(beginning.on(":irc CAP * LS :multi-prefix server-time tls batch"),
              "CAP REQ :echo-message multi-prefix server-time\n");
    EXPECT_EQ(beginning.on(":irc CAP * ACK :echo-message ~server-time "), "");
    EXPECT_EQ(beginning.on(":irc CAP * ACK :multi-prefix"), "CAP END\n");
    EXPECT_TRUE(beginning.registration.echoes());
    EXPECT_EQ(beginning.on(":irc 001 Ownr :Welcome"), "");
    EXPECT_TRUE(beginning.registration.isDone());
    EXPECT_EQ(beginning.registration.nick(), "Ownr");
    beginning.on(":irc CAP Ownr DEL :echo-message");
    EXPECT_FALSE(beginning.registration.echoes());
    EXPECT_EQ(beginning.on(":irc 433 Ownr x :in use"), "");
}

TEST(IrcRegistration, WhatIsRefusedTogetherIsAskedForAlone) {
    Beginning beginning;
    beginning.on(":irc CAP * LS :multi-prefix echo-message");
    EXPECT_EQ(beginning.on(":irc CAP * NAK :multi-prefix echo-message"),
              "CAP REQ multi-prefix\nCAP REQ echo-message\n");
    EXPECT_EQ(beginning.on(":irc CAP * NAK multi-prefix"), "");
    EXPECT_EQ(beginning.on(":irc CAP * ACK echo-message"), "CAP END\n");
    EXPECT_TRUE(beginning.registration.echoes());
}

TEST(IrcRegistration, ServersWithoutCapabilitiesWelcomeAllTheSame) {
    Beginning without(withAccount);
    EXPECT_EQ(without.on(":irc 421 * CAP :Unknown command"), "");
    EXPECT_EQ(without.on(":irc 001 Owner :Welcome"), "");
    EXPECT_EQ(without.told, "you are not logged in: the server knows no accounts\n");
    Beginning beginning;
    EXPECT_EQ(beginning.on(":irc 410 * LS :Invalid CAP command"), "CAP END\n");
}

TEST(IrcRegistration, LogsInByPlainAndGoesOnHoweverThatEnds) {
    const struct {
        const char *answer, *told;
    } cases[] = {
        {":irc 903 * :done", ""},
        {":irc 907 * :already", ""},
        {":irc 904 * :wrong password", "you are not logged in: wrong password\n"},
        {":irc 906 *", "you are not logged in: the server refuses it\n"},
        {":irc 908 * EXTERNAL :are available",
         "you are not logged in: the server knows only other ways than a password\n"},
        {":irc 421 * AUTHENTICATE :what", "you are not logged in: the server knows no accounts\n"},
    };
    for (const auto& [answer, told] : cases) {
        Beginning beginning(withAccount);
        EXPECT_EQ(beginning.on(":irc CAP * LS :sasl=EXTERNAL,PLAIN"), "CAP REQ sasl\n");
        EXPECT_EQ(beginning.on("AUTHENTICATE +"), "");
        EXPECT_EQ(beginning.on(":irc CAP * ACK :sasl"), "AUTHENTICATE PLAIN\n");
        EXPECT_EQ(beginning.on("AUTHENTICATE +"), plainLogin);
        EXPECT_EQ(beginning.on("AUTHENTICATE +"), "");
        beginning.on(":irc 900 * Owner!o@h owner :logged in");
        EXPECT_EQ(beginning.on(answer), "CAP END\n") << answer;
        EXPECT_EQ(beginning.on(":irc 904 * :again"), "");
        beginning.on(":irc 001 Owner :Welcome");
        EXPECT_EQ(beginning.told, told) << answer;
    }
}

TEST(IrcRegistration, ThePasswordGoesToNobodyElse) {
    Beginning plain(withAccount, false);
    EXPECT_EQ(plain.told, "you are not logged in: a password isn't sent without TLS\n");
    EXPECT_EQ(plain.on(":irc CAP * LS :sasl"), "CAP END\n");
    plain.on(":irc CAP * ACK :sasl");
    EXPECT_EQ(plain.on("AUTHENTICATE +"), "");

    Beginning other(withAccount);
    EXPECT_EQ(other.on(":irc CAP * LS :sasl=EXTERNAL,PLAINER"), "CAP END\n");
    EXPECT_EQ(other.on("AUTHENTICATE +"), "");
    EXPECT_EQ(other.told, "you are not logged in: the server offers no login by a password\n");

    Beginning refused(withAccount);
    refused.on(":irc CAP * LS :sasl");
    EXPECT_EQ(refused.on(":irc CAP * NAK :sasl"), "CAP END\n");
    EXPECT_EQ(refused.told, "you are not logged in: the server refuses it\n");

    Beginning challenged(withAccount);
    challenged.on(":irc CAP * LS :sasl");
    challenged.on(":irc CAP * ACK :sasl");
    EXPECT_EQ(challenged.on("AUTHENTICATE cmVhbG0="), "AUTHENTICATE *\n");
    EXPECT_EQ(challenged.on("AUTHENTICATE +"), "");
}

TEST(IrcRegistration, LongPasswordsGoInLinesOfFourHundredBytes) {
    const std::size_t begun = std::string_view("AUTHENTICATE \n").size();
    for (const auto& [size, sent] : {std::pair(290U, begun + 396),
                                     {293U, begun + 400 + begun + 1},
                                     {294U, begun + 400 + begun + 4}}) {
        Beginning beginning({.nick = "x", .account = "owner", .password = std::string(size, 'p')});
        beginning.on(":irc CAP * LS :sasl");
        beginning.on(":irc CAP * ACK :sasl");
        EXPECT_EQ(beginning.on("AUTHENTICATE +").size(), sent);
    }
}

std::string namesTried(std::string wanted, std::string_view answer, std::size_t longest) {
    Beginning beginning({.nick = wanted});
    std::string all, asked = wanted;
    for (int tries = 0; tries < 100; ++tries) {
        const std::string line =
            beginning.on(std::string(answer) + " * " + asked.substr(0, longest) + " :no");
        asked = line.empty() ? "" : line.substr(5, line.size() - 6);
        all += tries < 5 ? asked + ' ' : "";
    }
    EXPECT_EQ(asked, "");
    EXPECT_EQ(beginning.told, "the server gives you none of the names that were tried\n");
    return all;
}

TEST(IrcRegistration, OtherNamesAreTriedButNotForever) {
    EXPECT_EQ(namesTried("Owner", "433", 30), "Owner_ Owner__ Owner___ Owner1 Owner2 ");
    EXPECT_EQ(namesTried("Ownership", "437", 9),
              "Ownership_ Ownersh__ Owners___ Ownershi1 Ownershi2 ");
    EXPECT_EQ(namesTried("ÄÄÄÄ", "436", 8), "ÄÄÄÄ_ ÄÄÄ__ ÄÄ___ ÄÄÄ1 ÄÄÄ2 ");
    EXPECT_EQ(namesTried("2fast4you-really", "432", 30),
              "fast4your fast4yo__ fast4y___ fast4you1 fast4you2 ");
    EXPECT_EQ(namesTried("Ä", "432", 30), "larkspin larkspi__ larksp___ larkspin1 larkspin2 ");
}

} // namespace
} // namespace larkspin
