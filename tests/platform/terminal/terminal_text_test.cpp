// What a terminal is given to show, and what it sends back for keys.
#include "platform/terminal/terminal_text.h"
#include "platform/terminal/typed_keys.h"

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

TEST(TypedKeys, AreTakenApart) {
    const std::pair<std::string_view, std::size_t> cases[] = {
        {"ab", 1},      {"\x01z", 1},      {"\u00E4b", 2},      {"\xC3", 0},       {"\xE2\x82", 0},
        {"\xE2z", 1},   {"\xFF\xFF", 1},   {"\x1b", 0},         {"\x1bx\x1b", 2},  {"\x1b\xC3", 0},
        {"\x1b[", 0},   {"\x1b[A\x1b", 3}, {"\x1b[1;5", 0},     {"\x1b[1;5Cx", 6}, {"\x1bO", 0},
        {"\x1bOAx", 3}, {"\x1b\x1b[A", 1}, {"\x1b[1\n", 3},     {"\x1b[\xFF", 2},  {"\x1bO\r", 2},
        {"\x1b\n", 1},  {"\x1b\x7F", 2},   {"\xF0\x9F\x98", 0},
    };
    for (const auto& [bytes, length] : cases)
        EXPECT_EQ(keyLength(bytes), length) << testing::PrintToString(bytes);
    EXPECT_EQ(keyLength("\x1b[" + std::string(100, '1')), 32u);
    EXPECT_EQ(plainLength("ab\u00E4\x1b[A"), 4u);
    EXPECT_EQ(plainLength("\x7F"), 0u);
    EXPECT_EQ(plainLength("a\xE2\x82"), 1u);
    EXPECT_EQ(wideText("a\xFF\u20AC"), L"a\uFFFD\u20AC");
}

} // namespace larkspin
