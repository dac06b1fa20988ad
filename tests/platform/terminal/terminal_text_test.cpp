// What a terminal is given to show.
#include "platform/terminal/terminal_text.h"

#include <gtest/gtest.h>

namespace larkspin {

TEST(TerminalText, StylesMarkupAndLetsNothingSteerTheTerminal) {
    const std::pair<std::string_view, std::string> cases[] = {
        {"plain <3 a<b and >", "plain <3 a<b and >"},
        {"<b>a</b> <U>b</U> <i>c</i>", "\x1b[1ma\x1b[22m \x1b[4mb\x1b[24m \x1b[3mc"},
        {"<b><u>a</html>b", "\x1b[1m\x1b[4ma\x1b[22m\x1b[24mb"},
        {"<font face=\"a > b\" color=#5083a9>x", "\x1b[38;2;80;131;169mx"},
        {"<font color=#000001>x<font face=\" \" color=#>y", "\x1b[38;2;0;0;1mx\x1b[39my"},
        {"<font color=#00000g>a<font color=#0000011>b<font face=\"#000001\">", "ab"},
        {"a<br><b ><font face=\"open>x<<b>y</b", "a<br><b ><font face=\"open>x<\x1b[1my</b"},
        {"<body link=#0066BB><a href=\"http://x.y/\"></u>get <> it</a>!", "get <> it http://x.y/!"},
        {"<A HREF=x>a<a href=\"y\">b</a></a> <a>c</a>", "ab y</a> <a>c</a>"},
        {"one\ntwo", "one\n  two"},
        {"\x1b]0;title\x07 \x7f \u009b31m \xff\r",
         "\uFFFD]0;title\uFFFD \uFFFD \uFFFD31m \uFFFD\uFFFD"},
        {"what\uF03F \uF03Cb> \uF00A", "what? <b> \u240A"},
        {"a\u202Eb\u2066c\u200Fd\u061Ce", "a\uFFFDb\uFFFDc\uFFFDd\uFFFDe"},
        {"a\u2028b\u2029c\u200Bd\uFEFFe", "a\uFFFDb\uFFFDc\uFFFDd\uFFFDe"},
        {"a\U000E0041\U000E007F\u00ADb", "a\uFFFD\uFFFD\uFFFDb"},
        {"\u0905\u200D\u2764\uFE0F\u200C", "\u0905\u2764"}, // they join, and hide nothing
        {"\u00E4 \u05D0 \u0627 \U0001F600 \u200A", "\u00E4 \u05D0 \u0627 \U0001F600 \u200A"},
    };
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(shownMarkup(text), shown + "\x1b[0m") << text;
}

TEST(TerminalText, NamesAndTextsAreNoMarkup) {
    EXPECT_EQ(shownText("<b>a\nb\x1b"), "<b>a\n  b\uFFFD");
    EXPECT_EQ(shownName("<b>a\nb\u200D\u202E"), "<b>a\uFFFDb\uFFFD\uFFFD");
}

} // namespace larkspin
