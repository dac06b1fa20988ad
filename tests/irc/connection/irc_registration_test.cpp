// How a connection begins, with servers of all kinds.
#include "irc/connection/irc_connection.h"
#include "irc/connection/irc_registration.h"
#include "irc/protocol/base64.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/sha256.h"

#include <gtest/gtest.h>
#include <tuple>

namespace larkspin {
namespace {

class Beginning {
public:
    explicit Beginning(IrcIdentity identity = {.nick = "Owner"}, const IrcServer& server = {})
        : registration(
              std::move(identity), server, [this](const std::string& line) { sent += line; },
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
    for (const char* early : {":irc CAP * LS", ":irc CAP * NEW :batch"})
        EXPECT_EQ(beginning.on(early), "");
    EXPECT_EQ(beginning.on(":irc CAP * LS * :sasl=PLAIN znc.in/self-message echo-message"), "");
    EXPECT_EQ(beginning.on(":irc CAP * LS :multi-prefix server-time tls echo-message"),
              "CAP REQ :echo-message multi-prefix server-time\n");
    EXPECT_EQ(beginning.on(":irc CAP * NEW :batch"), "CAP REQ batch\n");
    for (const char* again : {":irc CAP * NEW :batch", ":irc CAP * LS :chghost"})
        EXPECT_EQ(beginning.on(again), "");
    EXPECT_EQ(beginning.on(":irc CAP * ACK :echo-message ~server-time "), "");
    EXPECT_EQ(beginning.on(":irc CAP * ACK :multi-prefix"), "");
    EXPECT_EQ(beginning.on(":irc CAP * NAK :batch"), "CAP END\n");
    EXPECT_TRUE(echoes(beginning));
    EXPECT_EQ(beginning.on(":irc 001 Ownr :Welcome"), "");
    EXPECT_TRUE(beginning.registration.isDone());
    EXPECT_EQ(beginning.registration.nick(), "Ownr");
    beginning.on(":irc CAP Ownr DEL :echo-message");
    EXPECT_FALSE(echoes(beginning));
    beginning.on(":irc CAP Ownr ACK :-multi-prefix");
    EXPECT_FALSE(beginning.registration.capabilities().holds("multi-prefix"));
    EXPECT_EQ(beginning.on(":irc CAP Ownr NEW :tls multi-prefix server-time echo-message=x"),
              "CAP REQ :multi-prefix echo-message\n");
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
    EXPECT_EQ(beginning.on(":irc 410 * END :Invalid CAP command"), "");
}

// Without TLS, of a server that offers another way, or asks otherwise than agreed, nobody gets the
// password.
TEST(IrcRegistration, TheAccountIsLoggedInToSafelyOrNotAndTheConnectionGoesOn) {
    const std::string offer = ":irc CAP * LS :sasl=EXTERNAL,PLAIN", grant = ":irc CAP * ACK :sasl",
                      go = "AUTHENTICATE +", known = ":irc 900 * Owner!o@h owner :logged in",
                      request = "CAP REQ sasl\nAUTHENTICATE PLAIN\n", end = "CAP END\n",
                      login = request + "AUTHENTICATE AG93bmVyAHNlY3JldA==\n" + end;
    const auto answered = [&](const std::string& answer) {
        return std::vector{offer,
                           go,
                           grant,
                           go,
                           go,
                           known,
                           std::string(":irc 901 * x :out"),
                           answer,
                           std::string(":irc 904 * :again")};
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
        {{offer, grant, go, ":irc 421 * AUTHENTICATE :what"},
         login,
         "the server knows no accounts"},
        {{offer, grant, go, ":irc 451 * AUTHENTICATE :what"},
         login,
         "the server knows no accounts"},
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
        {{offer, grant, "AUTHENTICATE Z", ":irc 906 *"},
         request + "AUTHENTICATE *\n" + end,
         "the server refuses it"},
        {{offer, grant, go}, end, "a password isn't sent without TLS", false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.lines.back());
        Beginning beginning(withAccount, {.encrypted = each.encrypted});
        std::string sent;
        for (const std::string& line : each.lines)
            sent += beginning.on(line);
        EXPECT_EQ(sent, each.sent);
        EXPECT_EQ(beginning.on(":irc 001 Owner :Welcome"), "");
        EXPECT_EQ(beginning.told,
                  each.failure ? "you are not logged in: " + std::string(each.failure) + '\n' : "");
    }
}

TEST(IrcRegistration, TheServersPasswordAndTheOwnersOtherNamesComeFirst) {
    Beginning beginning(
        {.nick = "Owner", .user = "jo/net", .realName = "", .serverPassword = "a b"});
    EXPECT_EQ(beginning.sent, "CAP LS 302\r\nPASS :a b\r\nNICK Owner\r\nUSER jo/net 0 * Owner\r\n");
    EXPECT_TRUE(
        Beginning({.nick = "Owner", .realName = "Jo Doe"}).sent.ends_with(" * :Jo Doe\r\n"));
}

std::string nonceIn(const std::string& line) {
    const std::string first = *fromBase64(std::string_view(line).substr(13, line.size() - 14));
    return first.substr(first.find("r=") + 2);
}

// The server's side of it, by the same words: what a client has said first, and how it ends.
TEST(IrcRegistration, APasswordIsProvedRatherThanSentAndTheServerHasToProveItToo) {
    const std::string salt = "saltsalt", done = ":irc 903 * :done",
                      said = "you are not logged in: the server ";
    enum Server { honest, impostor, silent, mad };
    for (const auto& [server, sent, told] :
         {std::tuple(honest, "AUTHENTICATE +\n", std::string()),
          {impostor, "AUTHENTICATE *\n", said + "doesn't prove that it knows the password\n"},
          {silent, "", said + "hasn't proved that it knows the password\n"},
          {mad, "AUTHENTICATE *\n", said + "doesn't prove that it knows the password\n"}}) {
        Beginning beginning(withAccount);
        beginning.on(":irc CAP * LS :sasl=PLAIN,SCRAM-SHA-256");
        EXPECT_EQ(beginning.on(":irc CAP * ACK :sasl"), "AUTHENTICATE SCRAM-SHA-256\n");
        const std::string begun = beginning.on("AUTHENTICATE +"), nonce = nonceIn(begun) + "+more",
                          first = "r=" + nonce + ",s=" + base64(salt) + ",i=4096";
        std::string answer = "AUTHENTICATE " + base64(server == mad ? "r=x" : first);
        std::string last = beginning.on(answer);
        if (server != mad) {
            const std::string all =
                "n=owner,r=" + nonceIn(begun) + ',' + first + ",c=biws,r=" + nonce;
            const HmacSha256 salted(pbkdf2Sha256("secret", salt, 4096));
            const std::string signature = HmacSha256(salted.of("Server Key")).of(all);
            last = server == silent
                       ? ""
                       : beginning.on("AUTHENTICATE " +
                                      base64("v=" + base64(server == honest ? signature : salt)));
        }
        EXPECT_EQ(last, sent);
        EXPECT_EQ(beginning.on(server == honest || server == silent ? done : ":irc 906 * :aborted"),
                  "CAP END\n");
        EXPECT_EQ(beginning.told, told);
    }
}

TEST(IrcRegistration, WaysToLogInAreTriedInTurnButNoRefusedPasswordTwice) {
    const IrcServer certified{.ownCertificate = "x"};
    const IrcIdentity nobody{.nick = "Owner"};
    const struct {
        const IrcIdentity& identity;
        IrcServer server;
        std::vector<std::string> lines;
        std::string sent, told;
    } cases[] = {
        {nobody,
         certified,
         {":irc CAP * LS :sasl=PLAIN,EXTERNAL", ":irc CAP * ACK :sasl", "AUTHENTICATE +",
          ":irc 903 * :done"},
         "CAP REQ sasl\nAUTHENTICATE EXTERNAL\nAUTHENTICATE +\nCAP END\n",
         ""},
        {nobody, certified, {":irc CAP * LS :sasl=PLAIN"}, "CAP END\n", ""},
        {withAccount,
         certified,
         {":irc CAP * LS :sasl", ":irc CAP * ACK :sasl", "AUTHENTICATE +", ":irc 904 * :who",
          "AUTHENTICATE +", ":irc 904 * :wrong"},
         "CAP REQ sasl\nAUTHENTICATE EXTERNAL\nAUTHENTICATE +\nAUTHENTICATE PLAIN\n"
         "AUTHENTICATE AG93bmVyAHNlY3JldA==\nCAP END\n",
         "you are not logged in: wrong\n"},
        {withAccount,
         certified,
         {":irc CAP * LS :sasl", ":irc CAP * ACK :sasl", ":irc 908 * PLAIN :are available",
          ":irc 904 * :no", ":irc 908 * EXTERNAL :are available"},
         "CAP REQ sasl\nAUTHENTICATE EXTERNAL\nAUTHENTICATE PLAIN\nCAP END\n",
         "you are not logged in: the server knows only other ways than a password\n"},
        {withAccount,
         {},
         {":irc CAP * LS :sasl=SCRAM-SHA-256,PLAIN", ":irc CAP * ACK :sasl", ":irc 904 * :not so",
          "AUTHENTICATE +", ":irc 903 * :done"},
         "CAP REQ sasl\nAUTHENTICATE SCRAM-SHA-256\nAUTHENTICATE PLAIN\n"
         "AUTHENTICATE AG93bmVyAHNlY3JldA==\nCAP END\n",
         ""},
    };
    for (const auto& each : cases) {
        Beginning beginning(each.identity, each.server);
        std::string sent;
        for (const std::string& line : each.lines)
            sent += beginning.on(line);
        EXPECT_EQ(sent, each.sent);
        EXPECT_EQ(beginning.told, each.told);
    }
}

TEST(IrcRegistration, ServicesThatComeLateAreLoggedInToThenButNotWithoutTls) {
    for (const bool encrypted : {true, false}) {
        Beginning beginning(withAccount, {.encrypted = encrypted});
        std::string sent;
        for (const char* const line :
             {":irc CAP * LS :batch", ":irc CAP * ACK :batch", ":irc 001 Owner :hi",
              ":irc CAP Owner NEW :sasl=PLAIN", ":irc CAP Owner ACK :sasl",
              ":irc CAP Owner DEL :batch", "AUTHENTICATE +", ":irc 900 Owner x owner :in",
              ":irc 903 Owner :done", "AUTHENTICATE +", ":irc CAP Owner DEL :sasl",
              ":irc CAP Owner NEW :sasl=PLAIN"})
            sent += beginning.on(line);
        EXPECT_EQ(sent, std::string("CAP REQ batch\nCAP END\n") +
                            (encrypted ? "CAP REQ sasl\nAUTHENTICATE PLAIN\n"
                                         "AUTHENTICATE AG93bmVyAHNlY3JldA==\n"
                                       : ""));
        EXPECT_EQ(beginning.told, std::string("you are not logged in: ") +
                                      (encrypted ? "the server offers no login by a password\n"
                                                   "you are logged in now\n"
                                                 : "a password isn't sent without TLS\n"));
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
    EXPECT_EQ(namesTried("Owner", "431", 30), "Owner_ Owner__ Owner___ Owner1 Owner2 ");
    EXPECT_EQ(namesTried("Ä", "432", 30), "larkspin larkspi__ larksp___ larkspin1 larkspin2 ");
}

} // namespace
} // namespace larkspin
