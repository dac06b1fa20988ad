// The client's tags, read into pieces.
#include "chat/markup.h"

#include <gtest/gtest.h>
#include <string>

namespace larkspin {

// A piece as "text" with what is on in front of it.
static std::string pieces(std::string_view line) {
    std::string all;
    for (const MarkupPiece& piece : readMarkup(line)) {
        const MarkupStyle& style = piece.style;
        all += style.bold ? "b" : "";
        all += style.underlined ? "u" : "";
        all += style.italic ? "i" : "";
        if (style.color)
            all += "#" + std::to_string(*style.color);
        if (!style.face.empty())
            all.append("(").append(style.face).append(")");
        all.append("[").append(piece.text).append("]");
    }
    return all;
}

TEST(Markup, IsReadIntoPiecesWithAStyle) {
    const struct {
        std::string_view line, pieces;
    } cases[] = {
        {"", ""},
        {"<b></b>", ""},
        {"plain", "[plain]"},
        {"a<b>b<U>c</b>d</u><i>e", "[a]b[b]bu[c]u[d]i[e]"},
        {"<b>a<html>b</HTML>c", "b[a]b[b][c]"},
        {"<font color=#0000ff>a</font>b", "#255[a][b]"},
        {"<FONT face=\"a > b\" color=#000010>a", "#16(a > b)[a]"},
        {"<font face=plain>a<font color=#1>b", "(plain)[a](plain)[b]"},
        {"<font color=#000001>a<font color=#>b", "#1[a][b]"},
        {"<font color=\"#00000A\" size=3>a", "#10[a]"},
        {"<font color=#00000g>a<font color=#0000011>b", "[a][b]"},
        {"<font face=\"#000001\">a", "(#000001)[a]"},
        {"<font = color>a", "[a]"},
        {"<3 a<b and >", "[<3 a<b and >]"},
        {"<br><p><b >x", "[<br><p><b >x]"},
        {"<font face=\"open>x<b>y", "[<font face=\"open>x]b[y]"},
        {"<<b>a</b", "[<]b[a</b]"},
        {"\"<b>a\"</b>b", "[\"]b[a\"][b]"},
    };
    for (const auto& [line, expected] : cases) {
        SCOPED_TRACE(line);
        EXPECT_EQ(pieces(line), expected);
    }
}

// Each of these once took time with the square of its length; so would take minutes.
TEST(Markup, IsReadInOnePass) {
    for (const std::string& part : {"<", "<\"", "<b", "<font ", "<font a=\"", "<b></b>", "<x>"}) {
        std::string line;
        while (line.size() < 1'000'000)
            line += part;
        SCOPED_TRACE(part);
        EXPECT_EQ(readMarkup(line).empty(), part == "<b></b>");
        EXPECT_EQ(readMarkup(line + "<b>x").back().text.empty(), false);
    }
}

} // namespace larkspin
