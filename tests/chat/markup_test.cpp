#include "chat/markup.h"

#include <gtest/gtest.h>
#include <sstream>

namespace larkspin {

namespace {

// Each piece with its style after it: bold, underlined, italic, #colour, face.
std::string pieces(std::string_view line) {
    std::ostringstream all;
    for (const auto& [text, style] : readMarkup(line)) {
        all << text << '[' << (style.bold ? "b" : "") << (style.underlined ? "u" : "")
            << (style.italic ? "i" : "");
        if (style.color)
            all << '#' << std::hex << *style.color;
        all << style.face << ']';
    }
    return all.str();
}

} // namespace

TEST(Markup, IsReadIntoPiecesWithAStyleEach) {
    const std::pair<const char*, const char*> lines[] = {
        {"plain <3 a<b and >", "plain <3 a<b and >[]"},
        {"<b>a</b> <U>b</U> <i>c</i>d", "a[b] []b[u] []c[i]d[]"},
        {"<b><u>a</html>b<html>c", "a[bu]b[]c[]"},
        {"<font face=\"a > b\" color=#5083a9>x", "x[#5083a9a > b]"},
        {"<font color=#000001>x<font face=\" \" color=#>y</font>z<font>", "x[#1]y[ ]z<font>[]"},
        {"<font color=#00000g>a<font color=#0000011>b<font face=\"c\"color=#000001>d",
         "a[]b[]d[#1c]"},
        {"a<br><b ><font face=\"open>x<<b>y</b", "a<br><b ><font face=\"open>x<[]y</b[b]"},
        {"<body link=#0066BB><a href=\"x.y/\"></u>get <> it</a>!", "get <> it[] []x.y/[]![]"},
        {"<A HREF=x>a<a href=\"y\">b</a></a> <a>c</a>", "a[]b[] []y[]</a> <a>c</a>[]"},
        {"<a href=>a</a>b</b>", "a[]b[]"},
    };
    for (const auto& [line, read] : lines)
        EXPECT_EQ(pieces(line), read) << line;
}

// Each of these once took time with the square of its length, which would be minutes.
TEST(Markup, IsReadInOnePass) {
    for (const std::string& part : {"<", "<\"", "<b", "<font ", "<font a=\"", "<b></b>", "<x>"}) {
        std::string line;
        while (line.size() < 1'000'000)
            line += part;
        SCOPED_TRACE(part);
        EXPECT_EQ(readMarkup(line).empty(), part == "<b></b>");
        EXPECT_FALSE(readMarkup(line + "<b>x").back().text.empty());
    }
}

// The attributes of a tag come in any order, with any blanks between them.
TEST(Markup, ReadsAttributesHoweverTheyAreSetApart) {
    for (const std::string blank : {" ", "\t", "\r", "\n", "  \t "})
        for (const std::string& attributes :
             {"color=#0066BB" + blank + "face=x", "face=x" + blank + "COLOR=\"#0066bb\"",
              blank + "size" + blank + "face=\"x\"" + blank + "color=#0066bB" + blank}) {
            SCOPED_TRACE(testing::PrintToString(attributes));
            EXPECT_EQ(pieces("<font " + attributes + ">text"), "text[#66bbx]");
        }
}

TEST(Markup, TakesTextsOutOfTheWayOfTags) {
    const std::pair<const char*, const char*> texts[] = {
        {"<b>a</B> <u <i", "<\u200Cb>a<\u200C/B> <u <i"},
        {"<<font x<a href=y<a <3", "<<\u200Cfont x<\u200Ca href=y<a <3"}};
    for (const auto& [text, plain] : texts) {
        EXPECT_EQ(withoutTags(text), plain);
        EXPECT_EQ(withoutTagBreaks(plain), text);
        EXPECT_EQ(readMarkup(plain).size(), 1u);
    }
    EXPECT_EQ(asSeenInMarkup("<b>\uF03Cb>\uF03F\uF03C3 \uF03C\uF03C/FONT> \uF03Ca hre"),
              "<b><\u200Cb>?<3 <<\u200C/FONT> <a hre");
}

} // namespace larkspin
