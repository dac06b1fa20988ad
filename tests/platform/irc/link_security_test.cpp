// Certificates that nobody vouches for, and the owner's own.
#include "platform/irc/irc_link.h"

#include "support/both_loops.h"
#include "support/certificate.h"
#include "support/patience.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace larkspin {
namespace {

class LinkSecurityTest : public testing::Test {
protected:
    // What comes of a connection to a server with that certificate, its fingerprint after "?".
    std::string outcome(const Certificate& certificate, const std::string& pinned,
                        const IrcLinkTerms& terms = {}, const std::string& own = {}) {
        auto server = Child::start("openssl", {},
                                   {"s_server", "-accept", "127.0.0.1:0", "-naccept", "1", "-cert",
                                    certificate.file(), "-key", certificate.key(), "-Verify", "1"});
        EXPECT_TRUE(server->shows("ACCEPT 127.0.0.1:", patience));
        const int port = std::stoi(server->line(patience));
        std::string log;
        IrcLink link(*loop, terms);
        link.open({.host = "127.0.0.1",
                   .port = static_cast<std::uint16_t>(port),
                   .pinned = pinned,
                   .ownCertificate = own},
                  {.opened = [&] { log += "opened"; },
                   .received = [](std::string_view) {},
                   .ended = [&](const std::string& why) { log += '|' + why; },
                   .distrusted =
                       [&](const IrcCertificate& shown) {
                           fingerprint = shown.fingerprint;
                           log += shown.isVouchedFor ? "?vouched for" : "?";
                       }});
        loop->waitFor([&] { return !log.empty(); }, loop->now() + patience);
        if (log == "opened" && own.empty())
            loop->waitFor([&] { return log != "opened"; }, loop->now() + patience);
        return log;
    }
    static std::string pemOf(const Certificate& certificate) {
        std::string pem;
        for (const std::string& file : {certificate.file(), certificate.key()}) {
            std::ifstream in(file);
            pem.append(std::istreambuf_iterator<char>(in), {});
        }
        return pem;
    }

    const std::unique_ptr<WatchingLoop> loop = makeLoop(false);
    std::string fingerprint;
};

TEST_F(LinkSecurityTest, OneThatIsPinnedIsTakenAndNoOtherWhoeverVouchesForIt) {
    const Certificate mine("DNS:irc.test"), another("IP:127.0.0.1"), owners("DNS:jo");
    const std::string own = pemOf(owners),
                      changed =
                          "|the server's certificate is another one than the one that you trust";
    EXPECT_TRUE(outcome(mine, "").starts_with("?|the server's certificate isn't valid: "));
    const std::string pinned = fingerprint;
    EXPECT_EQ(pinned.size(), 64u);
    EXPECT_EQ(outcome(mine, pinned, {}, own), "opened");
    EXPECT_EQ(outcome(another, pinned, {}, own), "?" + changed);
    EXPECT_NE(fingerprint, pinned);
    EXPECT_EQ(outcome(another, pinned, {another.file()}, own), "?vouched for" + changed);
    EXPECT_EQ(outcome(another, "", {another.file()}, own), "opened");
}

TEST_F(LinkSecurityTest, TheOwnersCertificateIsShownToAServerThatWantsOne) {
    const Certificate certificate("IP:127.0.0.1");
    const IrcLinkTerms terms{certificate.file()};
    const std::string without = outcome(certificate, "", terms);
    EXPECT_TRUE(without.starts_with("opened|")) << without; // it tells only after the handshake
    EXPECT_EQ(outcome(certificate, "", terms, pemOf(Certificate("DNS:jo"))), "opened");
    EXPECT_TRUE(outcome(certificate, "", terms, "nonsense")
                    .starts_with("|your certificate can't be read: "));
}

} // namespace
} // namespace larkspin
