#include "irc/connection/traced_connection.h"

#include "support/irc_machine.h"

#include <gtest/gtest.h>

namespace larkspin {

TEST(TracedConnection, TellsOfLinesButNeitherSecretsNorTalk) {
    IrcMachine machine;
    TracedConnection connection(std::make_unique<LentConnection>(machine.server), machine.trace);
    machine.server.silent = true;
    connection.open({.host = "irc.test"},
                    {[] {}, [](std::string_view) {}, [](const std::string&) {}});
    machine.run([&] { machine.loop.serveTurn(); });
    struct {
        const char *line, *fact;
    } const cases[] = {{"PASS secret", "PASS"},
                       {"AUTHENTICATE c2VjcmV0", "AUTHENTICATE"},
                       {"NICKSERV identify secret", "NICKSERV"},
                       {"OPER jo secret", "OPER"},
                       {"JOIN #music,#b secret", "JOIN #music,#b"},
                       {"MODE #music +k secret", "MODE #music +k"},
                       {"PRIVMSG NickServ :identify secret", ""},
                       {"@time=1 :ann!a@host PRIVMSG Owner :secret", ""},
                       {":ann!a@host QUIT :secret", "QUIT"},
                       {":irc 324 Owner #music +k secret", "324 Owner #music"},
                       {":irc 696 Owner #music k secret :it is bad", "696 Owner #music k"},
                       {":irc 904 Owner :wrong", "904 Owner :wrong"},
                       {":irc 004 Owner irc secret", "004 Owner irc"},
                       {":irc 471 Owner #music :it is full", "471 Owner #music :it is full"},
                       {"@time=1  :irc  PING :1", "PING :1"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        const std::string line = std::string(c.line) + "\r\n";
        const std::size_t before = machine.traced().size();
        connection.send(line);
        machine.server.say(std::string(c.line));
        machine.run([&] { machine.loop.serveTurn(); });
        const Lines facts = machine.traced();
        const Lines told(facts.begin() + static_cast<std::ptrdiff_t>(before), facts.end());
        const std::string fact = c.fact;
        EXPECT_EQ(told, fact.empty() ? Lines{}
                                     : (Lines{"network: sent " + fact, "network: got " + fact}));
    }
    machine.server.say("PI", "");
    machine.server.say("NG :1\r\nPING :2");
    machine.run([&] { machine.loop.serveTurn(); });
    machine.server.distrust("ab");
    machine.run([&] { machine.loop.serveTurn(); });
    connection.close();
    Lines facts = machine.traced();
    facts.erase(facts.begin(), facts.end() - 5);
    EXPECT_EQ(facts,
              (Lines{"network: got PING :1", "network: got PING :2", "network: doesn't trust ab",
                     "network: has ended, its certificate isn't taken", "network: closes"}));
}

} // namespace larkspin
