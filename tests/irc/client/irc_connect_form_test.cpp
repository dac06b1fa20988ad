// The form for going to a network: what it takes, what it does, and what it shows of that later.
#include "irc/client/irc_connect_form.h"
#include "irc/client/irc_words_fixture.h"

namespace larkspin {
namespace {

struct IrcConnectFormTest : IrcWordsTest {
    std::string goes(const IrcConnectForm& form) {
        const std::string problem = connectBy(rooms->networks, form);
        seenWithin(1s);
        return problem;
    }
    IrcConnectForm shownFor(const std::string& network) {
        return connectFormOf(*rooms->networks.named(network));
    }
};

TEST_F(IrcConnectFormTest, TellsWhatIsMissingOrMakesNoSense) {
    const IrcConnectForm good{.host = "irc.test", .nick = "jo"};
    EXPECT_EQ(problemOf(good), "");
    struct Case {
        std::string problem;
        std::function<void(IrcConnectForm&)> spoil;
    };
    for (const auto& [problem, spoil] : std::initializer_list<Case>{
             {"which server?", [](auto& form) { form.host = ""; }},
             {"irc test can't be a server's name", [](auto& form) { form.host = "irc test"; }},
             {"irc.test:x can't be a server's name", [](auto& form) { form.host = "irc.test:x"; }},
             {"which name do you want there?", [](auto& form) { form.nick = ""; }},
             {"#jo can't be a name there", [](auto& form) { form.nick = "#jo"; }},
             {"my net can't be a network's name: it has no blanks",
              [](auto& form) { form.network = "my net"; }},
             {std::string(250, 'b') + " can't be a room",
              [](auto& form) { form.rooms = "#a " + std::string(250, 'b'); }},
             {"j o can't be an account", [](auto& form) { form.user = "j o"; }},
             {"the password of which account?", [](auto& form) { form.password = "x"; }},
             {"this can't be a password", [](auto& form) {
                  form.user = "jo";
                  form.password = "a\nb";
              }}}) {
        IrcConnectForm form = good;
        spoil(form);
        EXPECT_EQ(problemOf(form), problem);
        EXPECT_EQ(goes(form), problem);
    }
    EXPECT_EQ(server.opened, 0);
}

TEST_F(IrcConnectFormTest, LeadsThereWithTheLoginAndIntoTheRooms) {
    offerAccounts();
    EXPECT_EQ(goes({.network = "home",
                    .host = "irc.test",
                    .port = 7000,
                    .nick = "jo",
                    .rooms = " #music,  #den,#attic",
                    .user = "jo",
                    .password = "sesame",
                    .keepsPassword = true}),
              "");
    EXPECT_EQ(server.to.port, 7000);
    EXPECT_TRUE(server.to.encrypted);
    EXPECT_NE(logins, "");
    for (const char* room : {"#music", "#den", "#attic"})
        EXPECT_EQ(std::ranges::count_if(rooms->conversations.all(),
                                        [&](const auto& each) { return each->name() == room; }),
                  1)
            << room;
    begin(); // the next run, which comes back there
    EXPECT_EQ(server.opened, 2);
    const IrcConnectForm form = shownFor("home");
    EXPECT_EQ(form.host, "irc.test");
    EXPECT_EQ(form.port, 7000);
    EXPECT_EQ(form.nick, "jo");
    EXPECT_EQ(form.rooms, "#music #den #attic");
    EXPECT_EQ(form.user, "jo");
    EXPECT_EQ(form.password, "");
    EXPECT_TRUE(form.keepsPassword);
    EXPECT_TRUE(form.atStart);
}

TEST_F(IrcConnectFormTest, TakesAPortAfterTheServerToo) {
    struct Case {
        const char *typed, *host;
        int port;
    };
    for (const auto& [typed, host, port] :
         {Case{"irc.test", "irc.test", 6697}, Case{"irc.test:7000", "irc.test", 7000},
          Case{"2001:db8::1", "2001:db8::1", 6697}, Case{"[2001:db8::1]", "2001:db8::1", 6697},
          Case{"[2001:db8::1]:7000", "2001:db8::1", 7000}}) {
        EXPECT_EQ(goes({.network = "home", .host = typed, .nick = "jo"}), "");
        EXPECT_EQ(server.to.host, host);
        EXPECT_EQ(server.to.port, port) << typed;
    }
}

TEST_F(IrcConnectFormTest, ChangesWhatIsKeptOfANetworkAndNoMore) {
    typed("/onconnect MODE jo +i");
    goes({.host = "irc.test",
          .encrypted = false,
          .nick = "jo",
          .rooms = "#music #den",
          .user = "jo",
          .password = "sesame",
          .keepsPassword = true});
    IrcConnectForm form = shownFor("irc.test");
    form.rooms = "#music #attic";
    form.atStart = false;
    goes(form);
    EXPECT_NE(kept().find("password=sesame"), std::string::npos) << "it was left blank";
    EXPECT_EQ(shownFor("irc.test").rooms, "#music #attic");
    EXPECT_EQ(typed("/onconnect"), "1  MODE jo ...\n2  /join #attic\n");
    EXPECT_EQ(rooms->networks.all().size(), 2u);
    begin();
    EXPECT_EQ(server.opened, 2) << "it doesn't come back there by itself";
    form = shownFor("irc.test");
    EXPECT_FALSE(form.atStart);
    form.user = "";
    goes(form);
    EXPECT_EQ(kept().find("sesame"), std::string::npos);
}

TEST_F(IrcConnectFormTest, IsToldAtStartByAWordToo) {
    EXPECT_EQ(typed("/atstart"), "no network is known: /connect leads to one\n");
    typed("/connect irc.test jo #music");
    const std::string comes = "larkspin comes back to irc.test when it starts, if you are there "
                              "at the end\n",
                      stays = "larkspin doesn't go to irc.test by itself when it starts\n";
    for (const auto& [line, told] : std::vector<std::pair<std::string, std::string>>{
             {"/atstart", comes},
             {"/atstart OFF", stays},
             {"/atstart", stays},
             {"/atstart perhaps", "! /atstart [on|off]\n"},
             {"/atstart on", comes}})
        EXPECT_EQ(typed(line), told) << line;
}

} // namespace
} // namespace larkspin
