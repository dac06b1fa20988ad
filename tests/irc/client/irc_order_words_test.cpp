// What the owner asks a server for and orders there by words with a slash, and whom he ignores.
#include "irc/client/irc_words_fixture.h"

namespace larkspin {
namespace {

class IrcOrderWordsTest : public IrcWordsTest {
protected:
    void connect() {
        server.names["#music"] = "@jo ann bob";
        typed("/connect irc.test jo #music");
    }
    // What goes out for the line; what is shown is in `seen`.
    std::string sentBy(const std::string& line) {
        server.sent.clear();
        typed(line);
        std::string all;
        for (const std::string& each : server.sent)
            all += (all.empty() ? "" : "\n") + each;
        return all;
    }
    std::string told(const std::string& text) {
        shown->take();
        server.say(text);
        return seenWithin(1s);
    }
    // From now on it answers such a line so.
    void answer(const std::string& line, const std::string& with) {
        server.takes = [this, line, with](const std::string& sent) {
            if (sent == line)
                server.say(with);
            return sent == line;
        };
    }
};

TEST_F(IrcOrderWordsTest, GoOutAsTheProtocolHasThem) {
    connect();
    told(":irc 005 jo CHANTYPES=#&+ :are supported"); // then "+m" could be a room's name
    typed("/join +den");
    const std::pair<const char*, const char*> cases[] = {
        {"/op ann bob", "MODE #music +oo ann bob"},
        {"/deop a b c d", "MODE #music -ooo a b c\nMODE #music -o d"},
        {"/voice ann", "MODE #music +v ann"},
        {"/devoice ann", "MODE #music -v ann"},
        {"/op", ""},
        {"/kick bob", "KICK #music bob"},
        {"/k ann go  away", "KICK #music ann :go  away"},
        {"/kick #den zoe", "KICK #den zoe"},
        {"/kick #den", ""},
        {"/kick +den zoe", "KICK +den zoe"},
        {"/invite zoe", "INVITE zoe #music"},
        {"/invite zoe #den", "INVITE zoe #den"},
        {"/mode +m", "MODE #music +m"},
        {"/mode #den +l 5", "MODE #den +l 5"},
        {"/mode jo +i", "MODE jo +i"},
        {"/ban *!*@spam.example", "MODE #music +b *!*@spam.example"},
        {"/ban $a:zoe", "MODE #music +b $a:zoe"},
        {"/ban ~q:zoe", "MODE #music +b ~q:zoe"},
        {"/unban *!*@other", "MODE #music -b *!*@other"},
        {"/unban *!*@spam.example", "MODE #music -b *!*@spam.example"},
        {"/ns identify hush", "PRIVMSG NickServ :identify hush"},
        {"/away", "AWAY away"},
        {"/away for tea", "AWAY :for tea"},
        {"/back", "AWAY"},
        {"/w ann", "WHOIS ann"},
        {"/whois", "WHOIS jo"},
        {"/raw lusers", "LUSERS"},
        {"/raw :x", ""},
        {"/who *.example", "WHO *.example"},
        {"/oper jo hush", "OPER jo hush"},
        {"/topic -delete", "TOPIC #music :"},
        {"/topic #MUSIC songs", "TOPIC #music songs"},
        {"/topic #den is closed", "TOPIC #music :#den is closed"},
        {"/topic #den", "TOPIC #den"},
        {"/names #den", "NAMES #den"},
        {"/part +1 all", "PART #music :+1 all"},
    };
    for (const auto& [line, sent] : cases) {
        seenWithin(1min); // after which lines go at once
        EXPECT_EQ(sentBy(line), sent) << line;
    }
    connect();
    typed("/j #den");
    EXPECT_EQ(sentBy("/leave #den enough"), "PART #den enough");
    EXPECT_EQ(sentBy("/leave #den"), "");
    EXPECT_EQ(seen, "you are not in #den\n");
    typed("/j #attic");
    EXPECT_EQ(sentBy("/leave #attic"), "PART #attic :larkspin flies off");
    typed("/q ann");
    EXPECT_EQ(sentBy("/wii"), "WHOIS ann");
    for (const char* const line : {"/op ann", "/kick ann", "/ban ann", "/unban ann", "/mode +m",
                                   "/who", "/invite ann", "/topic"}) {
        EXPECT_EQ(sentBy(line), "") << line;
        EXPECT_EQ(seen, "this is a private talk with ann\n") << line;
    }
    EXPECT_EQ(typed("/names"), "ann, 2 people\n  jo\n  ann\n");
    typed("/disconnect");
    for (const char* const line :
         {"/whois ann", "/list", "/mode", "/kick ann", "/away", "/quote x"})
        EXPECT_EQ(typed(line), "you are not connected\n") << line;
    EXPECT_EQ(typed("/reconnect"), "connecting to irc.test\nyou are jo on irc.test\n"
                                   "you are in #music\n");
}

TEST_F(IrcOrderWordsTest, AnswersAreToldInWordsAndOnlyToWhoHasAsked) {
    connect();
    told(":irc 005 jo CHANMODES=beIq,k,l,imnpst :are supported");
    const struct {
        const char *line, *sent, *answers, *shown;
    } cases[] = {
        {"/whois ann", "WHOIS ann",
         "311 jo ann a host.example * :Ann \x03"
         "4Lark\n312 jo ann irc.test :a server\n"
         "313 jo ann :is an IRC operator\n317 jo ann 130 86400 :seconds idle, signon time\n"
         "319 jo ann :@#music +#den\n330 jo ann anna :is logged in as\n301 jo ann :gone\n"
         "338 jo ann 192.0.2.1 :actually using host\n671 jo ann :is using a secure connection\n"
         "318 jo ann :End",
         "ann is a@host.example: Ann Lark\nann is on irc.test (a server)\n"
         "ann is an IRC operator\n"
         "ann has said nothing for 2 minutes, and is here since 1970-01-02 00:00\n"
         "ann is in @#music +#den\nann is logged in as anna\nann is away: gone\n"
         "ann actually using host 192.0.2.1\nann is using a secure connection\n"},
        {"/whois ann", "WHOIS ann",
         "317 jo ann 59 0 :x\n317 jo ann 3599 x :x\n317 jo ann 3600 9x :x\n"
         "317 jo ann 172799 253402300800 :x\n317 jo ann 172800 86400 :x\n311 jo zoe z h * :Zoe\n"
         "318 jo ann :End",
         "ann has said nothing for 59 seconds\nann has said nothing for 59 minutes\n"
         "ann has said nothing for 1 hour\nann has said nothing for 47 hours\n"
         "ann has said nothing for 2 days, and is here since 1970-01-02 00:00\n"},
        {"/whois zoe", "WHOIS zoe", "401 jo zoe :No such nick\n318 jo zoe :End",
         "zoe: No such nick\n"},
        {"/whowas zoe", "WHOWAS zoe", "314 jo zoe z h * :Zoe\n369 jo zoe :End",
         "zoe was z@h: Zoe\n"},
        {"/away", "AWAY away", "221 jo +i\n306 jo :You are marked", "you are away\n"},
        {"/back", "AWAY", "305 jo :You are not", "you are no longer away\n"},
        {"/mode", "MODE #music", "324 jo #music +knt hush\n329 jo #music 86400",
         "the modes of #music are +knt ****\n#music was made 1970-01-02 00:00\n"},
        {"/mode #den", "MODE #den", "324 jo #den +", "#den has no modes\n"},
        {"/mode #hall", "MODE #hall", "324 jo #hall", "#hall has no modes\n"},
        {"/mode jo", "MODE jo", "221 jo +i", "your modes are +i\n"},
        {"/ban", "MODE #music b", "367 jo #music *!*@h ann!a@h 86400\n368 jo #music :End",
         "*!*@h is kept out, set by ann, 1970-01-02 00:00\n"},
        {"/mode +e", "MODE #music +e", "349 jo #music :End", "there is nobody there\n"},
        {"/mode e", "MODE #music e", "348 jo #music *!*@h bob\n349 jo #music :End",
         "*!*@h is never kept out, set by bob\n"},
        {"/mode q", "MODE #music q", "728 jo #music q *!*@h bob\n729 jo #music q :End",
         "*!*@h can't speak, set by bob\n"},
        {"/mode I", "MODE #music I", "346 jo #music *!*@h\n347 jo #music :End",
         "*!*@h needs no invitation\n"},
        {"/who", "WHO #music", "352 jo #music a h irc.test ann H :0 Ann Lark\n315 jo #music :End",
         "ann (a@h) on irc.test: Ann Lark\n"},
        {"/invite zoe", "INVITE zoe #music", "341 jo zoe #music", "zoe is invited to #music\n"},
        {"/names #den", "NAMES #den", "353 jo = #den :@zoe bob\n366 jo #den :End",
         "#den: @zoe bob\n"},
        {"/mode +k a:b", "MODE #music +k a:b", "696 jo #music k a:b :Invalid key",
         "#music k ****: Invalid key\n"},
        {"/quote TOPIC #den", "TOPIC #den", "332 jo #den :lairs\n333 jo #den ann!a@h 86400",
         "#den lairs\nthe topic of #den was set by ann, 1970-01-02 00:00\n"},
        {"/quote LUSERS", "LUSERS",
         "251 jo :There are 3 people\n252 jo 1 :operators\n"
         "265 jo 3 5 7 :people",
         "There are 3 people\n1 operators\n3 people 5 7\n"},
    };
    for (const auto& c : cases) {
        std::string answers;
        for (const char* at = c.answers; *at; ++at)
            answers += *at == '\n' ? "\r\n:irc " : std::string(1, *at);
        answer(c.sent, ":irc " + answers);
        EXPECT_EQ(sentBy(c.line), c.sent);
        EXPECT_EQ(seen, c.shown) << c.line;
        seenWithin(1min);
        const std::string unasked = told(":irc " + answers);
        const bool isRefusal =
            std::string(c.answers).starts_with("401") || std::string(c.answers).starts_with("696");
        if (!isRefusal && !unasked.starts_with("#den: lairs") &&
            !std::string(c.line).starts_with("/invite"))
            EXPECT_EQ(unasked, unasked.starts_with("ann: gone") ? "ann: gone\n" : "") << c.line;
    }
}

// However slowly the questions go out.
TEST_F(IrcOrderWordsTest, EachOfSeveralQuestionsIsAnswered) {
    connect();
    server.takes = [this](const std::string& sent) {
        if (sent.starts_with("AWAY"))
            server.say(sent == "AWAY" ? ":irc 305 jo :x" : ":irc 306 jo :x");
        if (sent.starts_with("OPER"))
            server.say(":irc 381 jo :You are now an operator");
        return sent.starts_with("AWAY") || sent.starts_with("OPER");
    };
    for (int each = 0; each < 10; ++each)
        for (const char* const line : {"/away for tea", "/back"})
            words.run(line);
    words.run("/oper jo hush");
    seenWithin(2min);
    EXPECT_EQ(std::ranges::count(seen, '\n'), 21);
    EXPECT_TRUE(seen.ends_with("you are away\nyou are no longer away\nYou are now an operator\n"))
        << seen;
}

TEST_F(IrcOrderWordsTest, TheTopicOfARoomIsToldThereAndNotOnceMore) {
    connect();
    const std::string topic = ":irc 332 jo #den :songs\r\n:irc 333 jo #den ann!a@h 86400",
                      toldOf = "the topic is: songs\n"
                               "the topic of #den was set by ann, 1970-01-02 00:00\n";
    typed("/join #den");
    EXPECT_EQ(told(topic), "");
    EXPECT_EQ(typed("/room #den"), "you are in #den\n" + toldOf);
    server.lose("x");
    seenWithin(1min);
    EXPECT_EQ(told(topic), "");
    EXPECT_EQ(told(":irc 332 jo #den :rock"), "the topic is: rock\n");
    EXPECT_EQ(told(":irc 333 jo #music ann 86400"), "");
    EXPECT_EQ(told(":irc 332 jo #den :jazz\r\n:irc 333 jo #music ann 86400"),
              "the topic is: jazz\n");
    EXPECT_EQ(typed("/room #music"), "you are in #music\nthe connection is lost\nyou are back\n");
}

TEST_F(IrcOrderWordsTest, OfAFloodOfAnswersABoundIsTold) {
    connect();
    std::string flood;
    for (int line = 0; line < 150; ++line)
        flood += ":irc 372 jo :line " + std::to_string(line) + "\r\n";
    answer("MOTD", flood + ":irc 376 jo :End");
    typed("/motd");
    EXPECT_EQ(std::ranges::count(seen, '\n'), 101);
    EXPECT_TRUE(seen.ends_with("line 99\nand more, which isn't shown\n")) << seen;
}

TEST_F(IrcOrderWordsTest, ASlowServersAnswerIsTold) {
    connect();
    seenWithin(1min);
    server.lag = 20s;
    server.takes = [this](const std::string& line) {
        loop.once(20s, [this] { server.say(":irc 251 jo :There are 3 people"); });
        return line == "LUSERS";
    };
    typed("/quote LUSERS");
    EXPECT_NE(seenWithin(1min).find("There are 3 people\n"), seen.npos) << seen;
}

TEST_F(IrcOrderWordsTest, OfTheListTheLargestRoomsAreToldAndTheRestIsCounted) {
    connect();
    std::string rooms = ":irc 321 jo Channel :Users\r\n";
    for (int room = 1; room <= 350; ++room)
        rooms +=
            ":irc 322 jo #" + std::to_string(room) + ' ' + std::to_string(room) + " :songs\r\n";
    answer("LIST", rooms + ":irc 322 jo #Hall 8\r\n:irc 322 jo #long 9 :" + std::string(151, 'x') +
                       "\r\n:irc 322 jo #Den 7 :[+kn hush] a \x02topic\r\n:irc 323 jo :End");
    typed("/list");
    EXPECT_TRUE(seen.starts_with("#350  350 people  songs\n#349  349 people")) << seen;
    EXPECT_TRUE(
        seen.ends_with("#251  251 people  songs\n"
                       "and 253 smaller rooms; /list PATTERN or /list LEAST asks for fewer\n"))
        << seen;
    EXPECT_EQ(typed("/list den"), "#Den  7 people  [+kn ****] a topic\n");
    EXPECT_EQ(typed("/list hall"), "#Hall  8 people\n");
    EXPECT_EQ(typed("/list long"), "#long  9 people  " + std::string(150, 'x') + "...\n");
    seenWithin(1min);
    EXPECT_EQ(typed("/list #3?9 340"), "#349  349 people  songs\n");
    EXPECT_EQ(typed("/list 350"), "#350  350 people  songs\n");
    EXPECT_EQ(typed("/list attic"), "there is no such room\n");
    EXPECT_EQ(typed("/list a b"), "! /list [PATTERN] [LEAST]\n");
    EXPECT_EQ(told(rooms), "");
    told(":irc 005 jo ELIST=M :are supported");
    EXPECT_EQ(sentBy("/list den,x"), "LIST");
    answer("LIST *den*", ":irc 323 jo :End");
    EXPECT_EQ(sentBy("/list den 5"), "LIST *den*");
    told(":irc 005 jo ELIST=MU :are supported");
    EXPECT_EQ(sentBy("/list den 5"), "LIST >4,*den*");
    EXPECT_EQ(typed("/list"), "the list of rooms is on its way\n");
    server.lose("x");
    seenWithin(10s);
    EXPECT_EQ(sentBy("/list"), "LIST");
    told(":irc 322 jo #denim 7"); // and no more comes
    seenWithin(1min);
    EXPECT_EQ(sentBy("/list"), "LIST");
    EXPECT_EQ(told(":irc 322 jo #new 1\r\n:irc 323 jo :End"), "#new  1 person\n");
}

TEST_F(IrcOrderWordsTest, BanAndUnbanPutOutAndLetBackIn) {
    connect();
    server.origins["bob"] = "b spam.example";
    EXPECT_EQ(sentBy("/ban bob"), "WHO bob\nMODE #music +b *!*@spam.example\nKICK #music bob");
    EXPECT_EQ(typed("/ban zoe"), "zoe isn't here\n");
    EXPECT_EQ(sentBy("/unban bob"), "MODE #music -b *!*@spam.example");
    EXPECT_EQ(typed("/unban bob"), "bob isn't kept out\n");
    told(":irc 367 jo #music eve!*@*\r\n:irc MODE #music -o jo");
    EXPECT_EQ(typed("/unban eve"), "you may not let anybody back into #music\n");
    EXPECT_EQ(typed("/ban ann"), "you may not put anybody out of #music\n");
}

TEST_F(IrcOrderWordsTest, WhoIsIgnoredIsKeptForTheNextRun) {
    connect();
    const std::pair<const char*, const char*> steps[] = {
        {"/ignore", "you ignore nobody\n"},
        {"/ignore ann", "ann!*@* is ignored\n"},
        {"/ignore ANN", "ANN!*@* is ignored\n"},
        {"/ignore *@SPAM.example", "*!*@SPAM.example is ignored\n"},
        {"/ignore z?e!x", "z?e!x@* is ignored\n"},
        {"/ignore", "1  ann!*@*\n2  *!*@SPAM.example\n3  z?e!x@*\n"},
        {"/ignore a b", "! /ignore [NAME|MASK]\n"},
        {"/ignore add bob", "bob!*@* is ignored\n"},
        {"/ignore del BOB", "BOB is heard again\n"},
        {"/ignore LIST", "1  ann!*@*\n2  *!*@SPAM.example\n3  z?e!x@*\n"},
        {"/unignore 3", "z?e!x@* is heard again\n"},
        {"/unignore zoe", "zoe isn't ignored\n"},
        {"/unignore", "! /unignore NAME|MASK|NUMBER\n"},
    };
    for (const auto& [line, shown] : steps)
        EXPECT_EQ(typed(line), shown) << line;
    EXPECT_EQ(disk.read("ignored.txt"), "ann!*@*\n*!*@SPAM.example\n");
    begin();
    EXPECT_EQ(told(":ann!a@h PRIVMSG #music hi\r\n:bob!b@spam.EXAMPLE PRIVMSG jo hi\r\n"
                   ":bob!b@spam.example INVITE jo #den\r\n:zoe!x@h PRIVMSG #music hi"),
              "zoe: hi\n");
    typed("/unignore ANN");
    EXPECT_EQ(told(":ann!a@h PRIVMSG #music hi"), "ann: hi\n");

    // The commands about it are of one mind with the words.
    told(":bob!b@spam.example JOIN #music");
    IrcModeration& moderation = rooms->networks.atHand().client.moderation();
    const auto toggled = [&](int row) {
        shown->take();
        moderation.toggleIgnored(moderation.listPeople().at(static_cast<std::size_t>(row)));
        return shown->take();
    };
    EXPECT_EQ(toggled(1), "ann is ignored\n");
    EXPECT_EQ(typed("/ignore"), "1  *!*@SPAM.example\nann, until larkspin ends\n");
    EXPECT_EQ(typed("/unignore ann"), "ann is heard again\n");
    typed("/ignore ann");
    EXPECT_EQ(toggled(1), "ann is heard again\n");
    EXPECT_EQ(toggled(2), "bob is ignored as *!*@SPAM.example: /unignore takes that back\n");
    EXPECT_EQ(disk.read("ignored.txt"), "*!*@SPAM.example\n");
    files.unreadable = true;
    begin();
    files.unreadable = false;
    typed("/ignore *@spam.example"); // and what stands there isn't lost
    EXPECT_EQ(disk.read("ignored.txt"), "*!*@spam.example\n*!*@SPAM.example\n");
    for (int number = 0; number < 298; ++number)
        typed("/ignore x" + std::to_string(number));
    EXPECT_EQ(typed("/ignore ann"), "you ignore too many\n");
}

} // namespace
} // namespace larkspin
