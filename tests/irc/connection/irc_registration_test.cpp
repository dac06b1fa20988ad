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

bool echoes(const Beginning& beginning) {
    return beginning.registration.capabilities().holds("echo-message");
}

TEST(IrcRegistration, AsksForCapabilitiesInSeveralLines) {
    Beginning beginning;
    EXPECT_EQ(beginning.sent, "CAP LS 302\r\nNICK Owner\r\nUSER larkspin 0 * Owner\r\n");
    EXPECT_EQ(beginning.on(":irc CAP * LS * :sasl=PLAIN znc.in/self-message echo-message"), "");
    EXPECT_EQ(beginning.on(":irc CAP * LS :multi-prefix server-time tls"),
              "CAP REQ :echo-message multi-prefix server-time\n");
    EXPECT_EQ(beginning.on(":irc CAP * NEW :batch"), "CAP REQ batch\n");
    EXPECT_EQ(beginning.on(":irc CAP * ACK :echo-message ~server-time "), "");
    EXPECT_EQ(beginning.on(":irc CAP * ACK :multi-prefix"), "");
    EXPECT_EQ(beginning.on(":irc CAP * NAK :batch"), "CAP END\n");
    EXPECT_TRUE(echoes(beginning));
    EXPECT_EQ(beginning.on(":irc 001 Ownr :Welcome"), "");
    EXPECT_TRUE(beginning.registration.isDone());
    EXPECT_EQ(beginning.registration.nick(), "Ownr");
    beginning.on(":irc CAP Ownr DEL :echo-message");
    EXPECT_FALSE(echoes(beginning));
    EXPECT_EQ(beginning.on(":irc CAP Ownr NEW :tls multi-prefix echo-message=x"),
              "CAP REQ echo-message\n");
    beginning.on(":irc CAP Ownr ACK :echo-message");
    EXPECT_TRUE(echoes(beginning));
    EXPECT_EQ(beginning.on(":irc 433 Ownr x :in use"), "");
}

TEST(IrcRegistration, WhatIsRefusedTogetherIsAskedForAlone) {
    Beginning beginning;
    beginning.on(":irc CAP * LS :multi-prefix echo-message");
    EXPECT_EQ(beginning.on(":irc CAP * NAK :multi-prefix echo-message"),
              "CAP REQ multi-prefix\nCAP REQ echo-message\n");
    EXPECT_EQ(beginning.on(":irc CAP * NAK multi-prefix"), "");
    EXPECT_EQ(beginning.on(":irc CAP * ACK echo-message"), "CAP END\n");
    EXPECT_TRUE(echoes(beginning));
}

TEST(IrcRegistration, AServerThatMakesNothingOfCapabilitiesWelcomesAllTheSame) {
    Beginning beginning;
    EXPECT_EQ(beginning.on(":irc 410 * LS :Invalid CAP command"), "CAP END\n");
}

// Without TLS, of a server that offers another way, or asks otherwise than agreed, nobody gets the
// password.
TEST(IrcRegistration, TheAccountIsLoggedInToSafelyOrNotAndTheConnectionGoesOn) {
    const std::string offer = ":irc CAP * LS :sasl=EXTERNAL,PLAIN", grant = ":irc CAP * ACK :sasl",
                      go = "AUTHENTICATE +", known = ":irc 900 * Owner!o@h owner :logged in",
                      request = "CAP REQ sasl\nAUTHENTICATE PLAIN\n", end = "CAP END\n",
                      login = request + "AUTHENTICATE AG93bmVyAHNlY3JldA==\n" + end;
    const auto answered = [&](const std::string& answer) {
        return std::vector{offer, go,    grant,  go,
                           go,    known, answer, std::string(":irc 904 * :again")};
    };
    const struct {
        std::vector<std::string> lines;
        std::string sent;
        const char* failure;
        bool encrypted = true;
    } cases[] = {
        {answered(":irc 903 * :done"), login, nullptr},
        {answered(":irc 907 * :already"), login, nullptr},
        {answered(":irc 904 * :wrong password"), login, "wrong password"},
        {answered(":irc 906 *"), login, "the server refuses it"},
        {answered(":irc 908 * EXTERNAL :are available"), login,
         "the server knows only other ways than a password"},
        {answered(":irc 421 * AUTHENTICATE :what"), login, "the server knows no accounts"},
        {{":irc 421 * CAP :Unknown command"}, "", "the server knows no accounts"},
        {{":irc CAP * LS :sasl", ":irc CAP * NAK :sasl"},
         "CAP REQ sasl\n" + end,
         "the server refuses it"},
        {{":irc CAP * LS :sasl=EXTERNAL,PLAINER", go},
         end,
         "the server offers no login by a password"},
        {{offer, grant, "AUTHENTICATE cmVhbG0=", go, ":irc 906 *"},
         request + "AUTHENTICATE *\n" + end,
         "the server refuses it"},
        {{offer, grant, go}, end, "a password isn't sent without TLS", false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.lines.back());
        Beginning beginning(withAccount, each.encrypted);
        std::string sent;
        for (const std::string& line : each.lines)
            sent += beginning.on(line);
        EXPECT_EQ(sent, each.sent);
        EXPECT_EQ(beginning.on(":irc 001 Owner :Welcome"), "");
        EXPECT_EQ(beginning.told,
                  each.failure ? "you are not logged in: " + std::string(each.failure) + '\n' : "");
    }
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
