// Connections to a real server, as a client makes them by hand.
#include "platform/irc/irc_link.h"
#include "support/both_loops.h"
#include "support/irc_server.h"
#include "support/own_network.h"

namespace larkspin {
namespace {

using namespace std::chrono_literals;

class IrcServerTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        if (!isAlone())
            GTEST_SKIP() << "needs a network of its own, which the system doesn't allow";
    }
    bool logs(const std::string& text) {
        loop.waitFor([&] { return log.find(text) != std::string::npos; }, loop.now() + 5s);
        return log.find(text) != std::string::npos;
    }

    const std::unique_ptr<WatchingLoop> made = makeLoop(GetParam());
    WatchingLoop& loop = *made;
    IrcLink link{loop};
    std::string log;
};

INSTANTIATE_TEST_SUITE_P(OnPollAndOnQt, IrcServerTest, testing::Bool());

TEST_P(IrcServerTest, RegistersPlainAndEncryptedAndTalksUntilTheServerIsGone) {
    LocalIrcServer server("[Options]\nMorePrivacy = no\n");
    for (const bool encrypted : {false, true}) {
        SCOPED_TRACE(encrypted);
        log.clear();
        const auto port = encrypted ? LocalIrcServer::encryptedPort : LocalIrcServer::plainPort;
        link.open({LocalIrcServer::name, port, encrypted},
                  {[this] { link.send("NICK ann\r\nUSER ann 0 * :ann\r\nJOIN #den\r\n"); },
                   [this](std::string_view bytes) { log += bytes; },
                   [this](const std::string& why) { log += '|' + why; }});
        EXPECT_TRUE(logs(" 366 ann #den "));
        link.send("PING :a\r\n");
        EXPECT_TRUE(logs("PONG irc.test :a\r\n"));
        IrcPerson bob("bob");
        bob.send("JOIN #den");
        EXPECT_TRUE(logs(":bob!~bob@127.0.0.1 JOIN :#den\r\n"));
        link.send("PRIVMSG #den :\002hi\r\n");
        EXPECT_EQ(bob.hears("PRIVMSG"), ":ann!~ann@127.0.0.1 PRIVMSG #den :\002hi");
        EXPECT_LE(wakeUps(loop, 100ms), 2);
        server.kill();
        EXPECT_TRUE(logs("|the server has closed the connection"));
        EXPECT_TRUE(server.start());
    }
    link.open({LocalIrcServer::name, LocalIrcServer::encryptedPort, true},
              {[this] { link.send("NICK ann\r\nUSER ann 0 * :ann\r\nJOIN #den\r\n"); },
               [this](std::string_view) { log += "again"; },
               {}});
    EXPECT_TRUE(logs("again"));
    IrcPerson bob("bob");
    bob.send("JOIN #den");
    EXPECT_NE(bob.hears("JOIN"), "");
    link.send("QUIT :that is all\r\n");
    link.finish(2s);
    EXPECT_NE(bob.hears("that is all"), "");
}

} // namespace
} // namespace larkspin
