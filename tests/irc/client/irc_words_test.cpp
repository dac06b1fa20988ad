// The words that lead to rooms on a network, typed in a room without a program, and what they leave
// for the next run.
#include "host/slash_examples.h"
#include "irc/client/irc_words_fixture.h"

namespace larkspin {
namespace {

TEST_F(IrcWordsTest, HaveAnExampleWhereSomethingIsTypedAfterThem) {
    for (const SlashWord& word : words.all())
        EXPECT_EQ(exampleOf(word.name).empty(), word.arguments.empty()) << word.name;
}

TEST_F(IrcWordsTest, LeadToANetworkAboutInItsRoomsAndBack) {
    server.names["#music"] = "@jo ann";
    const std::string nowhere = "you are on no network: /connect leads to one\n";
    const std::pair<const char*, std::string> talk[]{
        {"/join #music", nowhere},
        {"/disconnect", nowhere},
        {"/room den", "you are in den\n"},
        {"/connect plain irc.test jo music",
         "connecting to irc.test\nyou are jo on irc.test\nyou are in #music\n"},
        {"/join #den", "#den is room 2\n"},
        {"/room", "0  den\n1  #music (here)\n2  #den\n"},
        {"/buffer +1", "you are in #den\n"},
        {"/window +1", "you are in den\n"},
        {"/room -1", "you are in #den\n"},
        {"/window goto 1", "you are in #music\n"},
        {"/window list", "0  den\n1  #music (here)\n2  #den\n"},
        {"/room DEN", "you are in #den\n"},
        {"/room Home", "you are in den\n"},
        {"/room a,b", "a room's name is short and has no blanks or commas\n"},
        {"/join #music", "you are in #music\n"},
        {"/room #music", "you are in #music\n"},
        {"/room attic", "you are not in attic\n"},
        {"/room 1 2", "! /room [NAME|NUMBER]\n"},
        {"/lines 1", "you are in #music\n9 before\n! /room [NAME|NUMBER]\n"},
        {"/lines 0", "! /lines [NUMBER]\n"},
        {"/find", "! /find TEXT\n"},
        {"/lastlog  Music ", "no line here holds Music\n"},
        {"/room 3", "there is no room 3\n"},
        {"/room 0", "you are in den\n"},
        {"/as ann hi", "ann comes in\nann: hi\n"},
        {"/topic", "you are in no room\n"},
        {"/leave", "you are in den\n"},
        {"/query ann psst", "you talk to ann\njo: psst\n"},
        {"/lines", "you talk to ann\njo: psst\n"},
        {"/find JO: PS", "  19:05 jo: psst\n"},
        {"/find psst", "  19:05 jo: psst\n"},
        {"/query #a", "a name has no blanks and commas\n"},
        {"/msg a,b hi", "a name has no blanks and commas\n"},
        {"/notice a,b hi", "a name has no blanks and commas\n"},
        {"/room", "0  den\n1  #music\n2  #den\n3  ann (here)\n"},
        {"/leave", "you are in den\n"},
        {"/room 1", "you are in #music\n"},
        {"/query ann", "you talk to ann\n"},
        {"/room ANN", "you talk to ann\n"},
        {"/again", "nothing of yours was lost here\n"},
        {"/leave", "you are in #music\n"},
        {"/names", "#music, 2 people\n  @jo\n  ann\n"},
        {"/topic", "there is no topic\n"},
        {"/topic  all songs", "jo sets the topic:  all songs\n"},
        {"/topic", "the topic is:  all songs\n"},
        {"/msg ann  <b>psst", "to ann:  psst\n"},
        {"/msg #x psst", "you are not in #x\n"},
        {"/as ann hi", "on a network others come, go and speak by themselves\n"},
        {"/nick a,b", "! /nick NAME\n"},
        {"/nick Joe", "you are now called Joe\n"},
        {"/room 2", "you are in #den\n"},
        {"/leave", "you have left #den\nyou are in #music\n"},
        {"/room den", "you are in den\n"},
        {"/room 1", "you are in #music\n"},
        {"/limit", "larkspin says as many lines as the server allows\n"},
        {"/limit 1", "larkspin says at most 1 line a minute\n"},
        {"/limit x", "! /limit [LINES]\n"},
        {"/disconnect two", "you aren't on two\n"},
        {"/reconnect two", "that network isn't known: /connect leads to one\n"},
        {"/disconnect", "you are in den\nyou have left irc.test\n"},
        {"/room", "0  den (here)\n1  #music (left)\n2  ann (left)\n"},
        {"/room 2", "you talk to ann\njo:  <b>psst\n"},
        {"/leave", "you are in den\n"},
        {"/leave", "you are on no network: /connect leads to one\n"},
    };
    for (const auto& [line, told] : talk)
        EXPECT_EQ(typed(line), told) << line;
    EXPECT_EQ(kept(), "server=irc.test\nport=6667\ntls=no\nnick=Joe\nroom=#music\nconnect=no\n"
                      "lines a minute=1\n");
}

TEST_F(IrcWordsTest, AnswerALineThatIsNotOfTheirFormByThatForm) {
    typed("/connect irc.test jo #music");
    server.sent.clear();
    for (const char* const wrong : {"/join",
                                    "/join #a b c",
                                    "/names x",
                                    "/msg",
                                    "/msg ann",
                                    "/query",
                                    "/nick a b",
                                    "/again x",
                                    "/ns",
                                    "/notice",
                                    "/notice ann",
                                    "/limit 1 2",
                                    "/reconnect a b",
                                    "/networks x",
                                    "/networks forget",
                                    "/networks x y",
                                    "/quote",
                                    "/oper",
                                    "/whowas",
                                    "/list a 5 x",
                                    "/invite",
                                    "/invite a b c",
                                    "/ban a b",
                                    "/unban",
                                    "/unban a b",
                                    "/ignore a\x01b",
                                    "/pass keep x",
                                    "/user a,b",
                                    "/user jo \x01",
                                    "/certificate \x01",
                                    "/connect as a,b irc.test jo",
                                    "/onconnect (x"})
        EXPECT_TRUE(typed(wrong).starts_with("! " + std::string(wrong, strcspn(wrong, " "))))
            << wrong << seen;
    for (const char* const tooLong :
         {"/ignore ", "/user jo ", "/certificate ", "/nick ", "/onconnect x "})
        EXPECT_TRUE(typed(tooLong + std::string(501, 'x')).starts_with("! ")) << tooLong;
    EXPECT_EQ(server.sent, Lines{});
}

TEST_F(IrcWordsTest, WaitForANetworkThatIsNotReachedYet) {
    server.refuses = true;
    typed("/connect irc.test jo #music");
    EXPECT_TRUE(kept().ends_with("room=#music\nconnect=yes\n")) << kept();
    for (const char* const line : {"/nick jane", "/msg ann hi", "/topic", "/names"})
        EXPECT_TRUE(typed(line).starts_with("you are not connected\n")) << line;
    typed("/leave");
    server.refuses = false;
    loop.waitUntil(loop.now() + 1min);
    EXPECT_EQ(typed("/room"), "0  home (here)\n");
    server.say(":jo!o@host JOIN #music"); // by services, on a connection on which he left nothing
    typed("/limit");
    EXPECT_EQ(typed("/room"), "0  home\n1  #music (here)\n");
}

TEST_F(IrcWordsTest, NothingOfARunIsLeftBehind) {
    for (const char* const line : {"/connect irc.test jo #music", "/limit 1", "/login jo"})
        typed(line);
    for (int line = 0; line < 9; ++line)
        words.run("/msg ann hi");
    server.say(":ann!a@h JOIN #music");
    loop.waitUntil(loop.now() + 1ms);
    shown.reset();
    rooms.reset();
    EXPECT_FALSE(server.isOpen());
    EXPECT_TRUE(loop.hasNothingToDo());
}

TEST_F(IrcWordsTest, KeepALimitForTheNextRun) {
    for (const char* const line : {"/connect irc.test jo #music", "/limit 1"})
        typed(line);
    begin();
    server.sent.clear();
    for (int line = 0; line < 3; ++line)
        loop.post([this] { rooms->room.sendChatLine("hi"); });
    loop.waitUntil(loop.now() + 1s);
    EXPECT_EQ(server.sent, Lines{"PRIVMSG #music hi"});
}

TEST_F(IrcWordsTest, ReadServersWithPortsAndAddresses) {
    const std::string usage = "! /connect [NAME] | [as NAME] [plain] SERVER[:PORT] NICK [#ROOM] | "
                              "windows\n";
    for (const char* const wrong :
         {"", " irc.test", " irc.test #music", " irc.test:0 jo", " irc.test:70000 jo",
          " irc.test: jo", " ::1 jo", " [::1 jo", " [::1]6667 jo", " irc/test jo",
          " irc.test jo a,b", " irc.test jo #a b", " plain"})
        EXPECT_EQ(typed(std::string("/connect") + wrong), usage) << wrong;
    EXPECT_EQ(kept(), "");
    const std::pair<const char*, const char*> right[]{
        {"irc.test", "server=irc.test\nport=6697\ntls=yes\n"},
        {"irc.test:7000", "server=irc.test\nport=7000\ntls=yes\n"},
        {"plain [::1]", "server=::1\nport=6667\ntls=no\n"},
        {"PLAIN [::1]:7000", "server=::1\nport=7000\ntls=no\n"},
    };
    for (const auto& [server, written] : right) {
        typed(std::string("/connect ") + server + " jo");
        EXPECT_NE(kept().find(std::string(written) + "nick=jo\nconnect=yes\n"), std::string::npos);
    }
}

TEST_F(IrcWordsTest, KeepAPasswordOnlyIfToldToAndGiveItToNoOtherServer) {
    offerAccounts();
    const std::string jo = " AGpvAHBzIHQ="; // "jo", "ps t"
    for (const char* const wrong : {"/login", "/login jo kept", "/login jo keep x"})
        EXPECT_EQ(typed(wrong), "! /login USER [keep]\n") << wrong;
    EXPECT_EQ(typed("/login jo"), "(password of jo)\n");
    EXPECT_EQ(toldOf("ps t"), "you log in as jo from the next /connect on\n");
    typed("/connect irc.test jo");
    EXPECT_EQ(logins, jo);
    EXPECT_EQ(kept(), "server=irc.test\nport=6697\ntls=yes\nnick=jo\nconnect=yes\n"
                      "login server=irc.test\nlogin=jo\n");
    other.capabilities = server.capabilities;
    other.takes = server.takes;
    typed("/connect evil.test jo");
    EXPECT_EQ(logins, jo);
    typed("/disconnect evil.test");
    typed("/connect IRC.test:7000 jo");
    EXPECT_EQ(logins, jo + jo);
    begin();
    EXPECT_EQ(logins, jo + jo);

    typed("/login jo KEEP");
    toldOf("ps t");
    EXPECT_NE(kept().find("\nlogin server=IRC.test\nlogin=jo\npassword=ps t\nnetwork=evil.test\n"),
              std::string::npos)
        << kept();
    const auto rights = std::filesystem::status(disk.path() / "irc.txt").permissions();
    EXPECT_EQ(static_cast<int>(rights), 0600);
    begin();
    EXPECT_EQ(logins, jo + jo + jo);

    typed("/disconnect IRC.test");
    typed("/login ann"); // at home, for the network that is gone to next
    toldOf("sesame");
    typed("/connect IRC.test");
    EXPECT_NE(kept().find("login=ann\n"), std::string::npos) << kept();
    EXPECT_EQ(kept().find("sesame"), std::string::npos) << kept();
    EXPECT_TRUE(typed("/connect as IRC.test else.test jo")
                    .starts_with("you don't log in as ann, which is for IRC.test\n"))
        << seen;
}

TEST_F(IrcWordsTest, WaitForNoPasswordForEver) {
    typed("/login jo keep");
    EXPECT_EQ(toldOf(""), "without a password all stays as it was\n");
    typed("/login jo keep");
    EXPECT_EQ(toldOf("a\nb"), "this can't be a password\n");
    typed("/login jo keep");
    loop.waitUntil(loop.now() + 10min);
    EXPECT_FALSE(answered);
    EXPECT_EQ(shown->take(), "nobody has typed a password\n");
    EXPECT_EQ(kept(), "");
    typed("/login jo");
    EXPECT_EQ(toldOf(std::string(501, 'p')), "this can't be a password\n");
    typed("/login jo");
    EXPECT_EQ(toldOf(std::string(500, 'p')), "you log in as jo from the next /connect on\n");
}

TEST_F(IrcWordsTest, ALineThatMakesNoSenseIsLeftOutOfTheFile) {
    const std::string sound = "server=irc.test\nport=6667\ntls=yes\nnick=jo\nconnect=yes\n"
                              "login server=irc.test\nlogin=jo\npassword=sesame\n";
    for (const char* const bad :
         {"port=0\n", "port=99999\n", "port= 1\n", "tls=maybe\n", "server=a b\n", "nick=\x01\n",
          "nick=#a\n", "nick=a!b\n", "room=a,b\n", "room=\n", "user=\n", "user=\x01\n",
          "user of a b=x\n", "server password of irc.test:0=x\n", "lines a minute=-1\n",
          "more\r\n[x]\r\nother=1\r\n"}) {
        disk.write("irc.txt", "\xEF\xBB\xBF" + sound + bad); // from an editor
        const int opened = server.opened;
        begin();
        EXPECT_EQ(server.opened, opened + 1) << bad;
        typed("/limit 5");
        EXPECT_EQ(kept(), sound + "lines a minute=5\n") << bad;
    }
    const std::string withoutLogin = sound.substr(0, sound.find("login"));
    for (const char* const bad : {"login server=a b\n", "login=a b\n", "password=\x7F\n"}) {
        disk.write("irc.txt", sound + bad);
        begin();
        typed("/limit 5");
        EXPECT_EQ(kept(), withoutLogin + "lines a minute=5\n") << bad;
    }
    disk.write("irc.txt", std::string(400'000, 'x') + '\n' + sound);
    const int opened = server.opened;
    begin();
    EXPECT_EQ(server.opened, opened) << "too large";
}

TEST_F(IrcWordsTest, AFileThatCouldNotBeReadIsNotWrittenOver) {
    const std::string login = "login server=irc.test\nlogin=jo\npassword=sesame\n"
                              "user of irc.test=joe\n";
    const std::string before =
        "server=irc.test\nport=6667\ntls=yes\nnick=jo\nroom=#a\nconnect=no\n" + login;
    disk.write("irc.txt", before);
    files.unreadable = true;
    begin();
    typed("/limit 5");
    EXPECT_EQ(kept(), before);
    EXPECT_EQ(keptFiles.takeNews(),
              (Lines{"couldn't load <b>irc account</b>:  the disk can't be read",
                     "couldn't load <b>those you ignore</b>:  the disk can't be read",
                     "couldn't load <b>settings</b>:  the disk can't be read",
                     "couldn't save <b>irc account</b>:  the disk can't be read"}));
    files.unreadable = false;
    typed("/limit 6");
    EXPECT_EQ(kept(), before + "lines a minute=6\n");
    files.unreadable = true;
    begin();
    files.unreadable = false;
    typed("/connect other.test anna");
    EXPECT_EQ(kept(), "server=other.test\nport=6697\ntls=yes\nnick=anna\nconnect=yes\n"
                      "network=irc.test\n" +
                          before + "lines a minute=6\n");
    disk.write("irc.txt", before);
    files.unreadable = true;
    begin();
    files.unreadable = false;
    typed("/connect irc.test anna");
    EXPECT_EQ(kept(), "server=irc.test\nport=6697\ntls=yes\nnick=anna\nconnect=yes\n" + login);
}

TEST_F(IrcWordsTest, TheLogHoldsWhatWasSaidOnEachNetworkUpToTheEnd) {
    typed("/log on");
    typed("/connect plain IRC.test jo music");
    server.say(":Ann!a@h PRIVMSG jo :psst\r\n:ann!a@h PRIVMSG #music :hi");
    typed("/msg ann yes?");
    begin();
    EXPECT_EQ(disk.read("logs/irc.test/ann.2003-12.txt"),
              "2003-12-19 19:05  Ann: psst\n2003-12-19 19:05  jo: yes?\n");
    EXPECT_EQ(disk.read("logs/irc.test/#music.2003-12.txt"), "2003-12-19 19:05  ann: hi\n");
    EXPECT_EQ(typed("/log").substr(0, 30), "what is said is written down i");
    EXPECT_EQ(typed("/log of"), "! /log [on|off]\n");
}

TEST_F(IrcWordsTest, TabCompletesWordsAndThenNames) {
    server.names["#music"] = "jo ann Anna \xE2\x80\xAE"
                             "anz";
    typed("/connect irc.test jo #music");
    const auto completed = [&](const char* begun) {
        const auto others = [](std::string_view typed) {
            return typed == "'pla" ? Completion{.replaced = 3, .text = "play ", .choices = {}}
                                   : Completion();
        };
        const Completion found = rooms->completionOf(begun, words, others);
        std::string all = std::to_string(found.replaced) + found.text;
        for (const Completion::Choice& choice : found.choices)
            all += found.addsNothing ? ' ' + choice.shown : "";
        return all;
    };
    EXPECT_EQ(completed("/con"), "4/connect");
    EXPECT_EQ(completed("/msg A"), "1ann");
    EXPECT_EQ(completed("hi anN"), "3ann ann Anna");
    EXPECT_EQ(completed("'x anna"), "4Anna");
    EXPECT_EQ(completed("anna"), "4Anna: ");
    EXPECT_EQ(completed("ann"), "3ann ann Anna");
    EXPECT_EQ(completed("'pla"), "3play ");
    for (const char* const none : {"hi ", "hi jo", "xann", ""})
        EXPECT_EQ(completed(none), "0") << none;
}

} // namespace
} // namespace larkspin
