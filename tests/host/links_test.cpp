// Addresses in what is said, and how they are opened.
#include "host/conversations.h"
#include "host/link_opening.h"
#include "host/links.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(Links, AreWhatIsSeen) {
    const struct {
        const char *text, *shown, *address;
    } cases[] = {
        {"see http://a.b/c, please", "http://a.b/c", "http://a.b/c"},
        {"(https://a.b/x_(y)).", "https://a.b/x_(y)", "https://a.b/x_(y)"},
        {"<HTTP://a.b?c=d&e#f>", "HTTP://a.b?c=d&e#f", "http://a.b?c=d&e#f"},
        {"www.lark.example!", "www.lark.example", "http://www.lark.example"},
        {"\"mailto:jo@a.b\"", "mailto:jo@a.b", "mailto:jo@a.b"},
        {"x\u2028    ftp://a.b/\u3000y", "ftp://a.b/", "ftp://a.b/"},
        {"http://b\u00FCcher.de", "http://b\u00FCcher.de", "http://b\u00FCcher.de"},
    };
    for (const auto& [text, shown, address] : cases) {
        const std::vector<Link> links = linksIn(text);
        ASSERT_EQ(links.size(), 1U) << text;
        EXPECT_EQ(std::string(text).substr(links[0].begin, links[0].length), shown);
        EXPECT_EQ(links[0].address, address);
    }
    EXPECT_EQ(linksIn("http://a.b http://c.d").size(), 2U);
    for (const char* none :
         {"", "lark.example ride.mp3 a.b/c", "xhttp://a.b", "file:///etc/passwd", "javascript:x",
          "http://", "http://a.b/long\u2026", "http://a.b/\u05D0\u05D1", "http://a\u202Eb.c",
          "http://a.b\\c", "mailto:jo@a.b?attach=/x", "www."})
        EXPECT_EQ(linksIn(none).size(), 0U) << none;
}

TEST(Links, AreKnownOfTheLinesSaidLast) {
    VirtualLoop loop;
    ChatLines lines(loop);
    Conversations all(loop, lines, "lobby");
    for (const char* text : {"http://old.b", "http://a.b <b>http://c</b>.d", "http://a.b"})
        all.keep(all.home(), {.kind = KeptLine::Kind::said, .speaker = "ann", .text = text});
    EXPECT_EQ(latestLinks(all.home(), 2), (std::vector<std::string>{"http://a.b", "http://c.d"}));
}

TEST(Links, AreAskedAboutOnceEach) {
    VirtualMachine machine;
    Lines opened;
    LinkOpening links(machine.dialogs,
                      [&](const std::string& address) { opened.push_back(address); });
    const std::pair<const char*, bool> cases[] = {{"http://a.b@c.d/e", false},
                                                  {"http://a.b@c.d/e", true},
                                                  {"http://a.b@c.d/e", true},
                                                  {"file:///etc/passwd", true},
                                                  {"mailto:jo@m\u00FCx.de?subject=x", true}};
    for (const auto& [address, says] : cases) {
        machine.dialogs.answers = {says ? "yes" : "no"};
        links.open(address);
    }
    EXPECT_EQ(opened,
              (Lines{"http://a.b@c.d/e", "http://a.b@c.d/e", "mailto:jo@m\u00FCx.de?subject=x"}));
    EXPECT_EQ(machine.dialogs.boxes,
              (Lines{"open http://a.b@c.d/e ?\n\nit leads to c.d",
                     "open http://a.b@c.d/e ?\n\nit leads to c.d",
                     "open mailto:jo@m\u00FCx.de?subject=x ?\n\nit leads to m\u00FCx.de, which has "
                     "letters beyond a to z: they may look like others"}));
}

} // namespace
} // namespace larkspin
