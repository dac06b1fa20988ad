// Connections of both loops to servers on this machine: good ones, silent ones, and impostors.
#include "platform/irc/irc_link.h"

#include "support/both_loops.h"
#include "support/certificate.h"
#include "support/listener.h"
#include "support/own_network.h"
#include "support/patience.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <thread>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

class IrcLinkTest : public testing::TestWithParam<bool> {
protected:
    // Opens "host", port; `log` tells all that comes.
    void open(const std::string& host, std::uint16_t port, bool encrypted = false) {
        link->open({host, port, encrypted},
                   {[this] { log += "opened "; }, [this](std::string_view bytes) { log += bytes; },
                    [this](const std::string& why) { log += "|" + why; }});
    }
    bool logs(std::string_view text) {
        loop.waitFor([&] { return log.find(text) != std::string::npos; }, loop.now() + patience);
        return log.find(text) != std::string::npos;
    }
    Descriptor openPlain() {
        open("127.0.0.1", listener.port());
        EXPECT_TRUE(logs("opened "));
        return listener.take();
    }
    std::string endOf(const std::string& host, std::uint16_t port, bool encrypted = false) {
        log.clear();
        open(host, port, encrypted);
        EXPECT_TRUE(logs("|"));
        return log;
    }
    // As a child process, whose input goes to the client and whose output comes from it.
    std::unique_ptr<Child> encryptedServer(const Certificate& certificate, std::uint16_t& port) {
        auto server = Child::start("openssl", {},
                                   {"s_server", "-accept", "127.0.0.1:0", "-naccept", "1", "-cert",
                                    certificate.file(), "-key", certificate.key()});
        EXPECT_TRUE(server->shows("ACCEPT 127.0.0.1:", patience));
        port = static_cast<std::uint16_t>(std::stoi(server->line(patience)));
        return server;
    }
    template <typename Does> Nanoseconds spanOf(const Does& does) {
        const auto begin = loop.now();
        does();
        return loop.now() - begin;
    }
    // Sends more than a server takes that doesn't read, and expects that the end isn't put off.
    void jamAndFinish() {
        link->send(std::string(16 << 20, 'x'));
        loop.waitUntil(loop.now() + 20ms);
        EXPECT_GT(link->unsent(), 1u << 20);
        EXPECT_LT(spanOf([this] { link->finish(50ms); }), patience);
        EXPECT_EQ(link->unsent(), 0u);
    }

    const std::unique_ptr<WatchingLoop> made = makeLoop(GetParam());
    WatchingLoop& loop = *made;
    std::unique_ptr<IrcLink> link = std::make_unique<IrcLink>(loop);
    const Listener listener;
    std::string log;
};

INSTANTIATE_TEST_SUITE_P(OnPollAndOnQt, IrcLinkTest, testing::Bool());

std::string readFrom(const Descriptor& socket, std::size_t count) {
    std::string text(count, 0);
    const ssize_t size = ::recv(socket.number(), text.data(), count, MSG_WAITALL);
    return text.substr(0, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
}

TEST_P(IrcLinkTest, BytesGoBothWaysUntilTheServerCloses) {
    link->send("too early");
    Descriptor server = openPlain();
    link->send("NICK ann\r\n");
    link->send("USER ann\r\n");
    loop.waitFor([this] { return link->unsent() == 0; }, loop.now() + patience);
    EXPECT_EQ(readFrom(server, 20), "NICK ann\r\nUSER ann\r\n");
    EXPECT_LE(wakeUps(loop, 100ms), 2);
    ::send(server.number(), "ERROR :bye\r\n", 12, 0);
    server = {};
    EXPECT_TRUE(logs("|"));
    EXPECT_EQ(log, "opened ERROR :bye\r\n|the server has closed the connection");
    link->send("too late");
    EXPECT_EQ(link->unsent(), 0u);
}

TEST_P(IrcLinkTest, WhatCannotBeReachedIsToldInPlainWords) {
    const std::uint16_t closed = Listener().port();
    EXPECT_EQ(endOf("127.0.0.1", closed), "|the server takes no connections at that port");
    EXPECT_EQ(endOf("127.0.0.1", closed, true), "|the server takes no connections at that port");
    link = std::make_unique<IrcLink>(loop, IrcLinkTerms{"", 30ms});
    EXPECT_EQ(endOf("127.0.0.1", listener.port(), true), "|the server doesn't answer");
    link = std::make_unique<IrcLink>(loop, IrcLinkTerms{"/nowhere"});
    EXPECT_TRUE(endOf("127.0.0.1", listener.port(), true).starts_with("|the trusted cert"));
}

TEST_P(IrcLinkTest, TheTimeToOpenEndsNoConnectionThatStands) {
    Nanoseconds within = 10ms;
    do { // a busy machine needs longer
        log.clear();
        within *= 2;
        link = std::make_unique<IrcLink>(loop, IrcLinkTerms{"", within});
        open("127.0.0.1", listener.port());
        loop.waitFor([this] { return !log.empty(); }, loop.now() + patience);
    } while (log != "opened ");
    loop.waitUntil(loop.now() + 2 * within);
    EXPECT_EQ(log, "opened ");
}

TEST_P(IrcLinkTest, AServerThatClosesAtOnceIsToldAsThat) {
    for (const bool encrypted : {false, true}) {
        for (const bool reads : {false, true}) { // what it leaves unread resets the connection
            SCOPED_TRACE(std::to_string(encrypted) + std::to_string(reads));
            std::thread closing([&] {
                const Descriptor server = listener.take();
                if (reads && encrypted)
                    readFrom(server, 100);
            });
            const std::string end = endOf("127.0.0.1", listener.port(), encrypted);
            EXPECT_TRUE(end.ends_with("|the server has closed the connection")) << end;
            closing.join();
        }
    }
}

TEST_P(IrcLinkTest, NamesAreLookedUpAndUnknownOnesTold) {
    if (!isAlone())
        GTEST_SKIP() << "needs a network of its own";
    EXPECT_TRUE(endOf("elsewhere.test", 6667).starts_with("|the server's name"));
    const Descriptor names = nameServer();
    loop.watch(names.number(), [&names] { answerNobody(names); });
    EXPECT_EQ(endOf("nobody.test", 6667), "|the server's name isn't known, or there is no network");
    for (const char* const bad : {"", "\xff\xfe", "two words", "x.", "127.0.0.1:80"})
        EXPECT_EQ(endOf(bad, 6667, true).front(), '|') << bad;
    loop.unwatch(names.number());
    open("irc.test", listener.port());
    EXPECT_TRUE(logs("opened "));
}

TEST_P(IrcLinkTest, CertificatesAreChecked) {
    const Certificate good("IP:127.0.0.1"), others("DNS:irc.test"), old("IP:127.0.0.1", true);
    const std::string refusal = "|the server's certificate isn't valid: ";
    const struct {
        const Certificate& certificate;
        std::string trusted, end;
    } rows[] = {{good, "", "nobody who is trusted vouches for it"},
                {others, others.file(), "it is that of another server"},
                {old, old.file(), "it has expired"}};
    for (const auto& row : rows) {
        std::uint16_t port = 0;
        const auto server = encryptedServer(row.certificate, port);
        link = std::make_unique<IrcLink>(loop, IrcLinkTerms{row.trusted});
        EXPECT_EQ(endOf("127.0.0.1", port, true), refusal + row.end);
    }
    std::thread plain([this] {
        const Descriptor server = listener.take();
        ::send(server.number(), "NOTICE AUTH :hello\r\n", 20, 0);
        readFrom(server, 100000);
    });
    const std::string end = endOf("127.0.0.1", listener.port(), true);
    EXPECT_TRUE(end.starts_with("|no encryption can be agreed on with the server: ")) << end;
    plain.join();
}

TEST_P(IrcLinkTest, EncryptedBytesGoBothWaysAndAllArrivesBeforeTheEnd) {
    const Certificate certificate("IP:127.0.0.1");
    std::uint16_t port = 0;
    const auto server = encryptedServer(certificate, port);
    link = std::make_unique<IrcLink>(loop, IrcLinkTerms{certificate.file()});
    open("127.0.0.1", port, true);
    EXPECT_TRUE(logs("opened "));
    server->tell(":irc PING :a"); // some first letters are orders to it
    EXPECT_TRUE(logs(":irc PING :a\n"));
    link->send("PONG :a\r\n" + std::string(40000, 'x') + "\r\nQUIT\r\n");
    link->finish(patience);
    EXPECT_TRUE(server->says("PONG :a\r", patience));
    EXPECT_TRUE(server->says("QUIT\r", patience));
}

TEST_P(IrcLinkTest, AServerThatHasMuchMoreToSayGetsAllBeforeTheEnd) {
    const auto finish = [this](std::string_view) {
        link->send("QUIT\r\n");
        log += spanOf([&] { link->finish(patience); }) < patience ? "|" : "given up";
    };
    link->open({"127.0.0.1", listener.port(), false}, {[] {}, finish, {}});
    std::string arrived;
    std::thread talking([&] {
        const Descriptor server = listener.take();
        const std::string much(8 << 20, 'x');
        ::send(server.number(), much.data(), much.size(), MSG_NOSIGNAL);
        arrived = readFrom(server, 100);
    });
    EXPECT_TRUE(logs("|"));
    talking.join();
    EXPECT_EQ(arrived, "QUIT\r\n");
}

TEST_P(IrcLinkTest, AServerThatTakesNothingPutsOffNoEnd) {
    const Descriptor plain = openPlain();
    jamAndFinish();
    const Certificate certificate("IP:127.0.0.1");
    std::uint16_t port = 0;
    const auto server = encryptedServer(certificate, port);
    link = std::make_unique<IrcLink>(loop, IrcLinkTerms{certificate.file()});
    log.clear();
    open("127.0.0.1", port, true);
    EXPECT_TRUE(logs("opened "));
    ::kill(server->id(), SIGSTOP);
    jamAndFinish();
    open("127.0.0.1", listener.port()); // and afresh
    EXPECT_TRUE(logs("opened opened"));
    ::kill(server->id(), SIGKILL);
}

TEST_P(IrcLinkTest, ClosedAtAnyMomentNothingComesAnyMore) {
    if (!isAlone())
        GTEST_SKIP() << "needs a network of its own";
    const Descriptor names = nameServer(); // silent
    for (const std::string stage : {"names", "socket", "TLS", "opened", "read", "gone"}) {
        SCOPED_TRACE(stage);
        log.clear();
        Descriptor server;
        if (stage == "names")
            open("silent.test", listener.port());
        else if (stage == "socket" || stage == "TLS")
            open("127.0.0.1", listener.port(), stage == "TLS");
        else
            server = openPlain();
        if (stage == "names" || stage == "TLS")
            loop.waitUntil(loop.now() + 20ms);
        if (stage == "read")
            ::send(server.number(), "x", 1, 0);
        const auto span = spanOf([&] { stage == "gone" ? link.reset() : link->close(); });
        EXPECT_LT(span, 4s) << "a name server is given five";
        loop.waitUntil(loop.now() + 10ms);
        EXPECT_EQ(log, server.isOpen() ? "opened " : "");
    }
}

TEST_P(IrcLinkTest, AHandlerMayDoAwayWithIt) {
    link->open({"127.0.0.1", listener.port(), false},
               {[this] { log += "opened"; }, [this](std::string_view) { link.reset(); }, {}});
    EXPECT_TRUE(logs("opened"));
    const Descriptor server = listener.take();
    ::send(server.number(), "x", 1, 0);
    loop.waitFor([this] { return !link; }, loop.now() + patience);
    EXPECT_EQ(link, nullptr);
    loop.waitUntil(loop.now() + 5ms);
}

TEST_P(IrcLinkTest, AFloodComesInPiecesBetweenOtherEvents) {
    constexpr std::size_t all = 16 << 20;
    std::size_t count = 0, largest = 0, others = 0, pieces = 0;
    link->open({"127.0.0.1", listener.port(), false}, {[] {},
                                                       [&](std::string_view bytes) {
                                                           count += bytes.size();
                                                           largest =
                                                               std::max(largest, bytes.size());
                                                           ++pieces;
                                                           loop.post([&] { ++others; });
                                                           EXPECT_LE(pieces - others, 2u);
                                                       },
                                                       {}});
    std::thread flood([&] {
        const std::string text(all, 'x');
        ::send(listener.take().number(), text.data(), text.size(), 0);
    });
    loop.waitFor([&] { return count == all; }, loop.now() + 30s);
    flood.join();
    EXPECT_EQ(count, all);
    EXPECT_LE(largest, 65536u);
}

} // namespace
} // namespace larkspin
