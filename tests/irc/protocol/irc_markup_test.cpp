// Markup and the codes of IRC, there and back.
#include "irc/protocol/irc_markup.h"

#include "chat/markup.h"
#include "irc/protocol/carets.h"
#include "text/visible.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(IrcMarkup, IsWrittenInCodes) {
    const struct {
        const char *markup, *codes;
    } cases[] = {
        {"a <b>bold <u>both</b> under</u>, <i>slanted</i>", "a ^Bbold ^_both^B under^_, ^]slanted"},
        {"<font face=\"Arial\" color=#FE0102>red</font> mine", "^C04red^O mine"},
        {"<font color=#0066BB>it is</font>", "^C10it is"},
        {"<font color=#ff0000>2 pm</font>3 pm", "^C042 pm^O3 pm"},
        {"<font color=#FF0000>,5", "^C04^B^B,5"},
        {"<b><font color=#FF0000>,5</font>1", "^C04^B,5^O^B1"},
        {"<font color=#000000>black <font color=#FFFFFE>white", "black white"},
        {"two\nlines\x03\x01\xC2\x85.\xFF", "two lines   .\xFF"},
        {"no <3 tag <nick></html><b></b>", "no <3 tag <nick>"},
        {"<a href=\"http://x.y/\"></u>get it</a>.", "get it http://x.y/."},
        {"<b>a <\u200Cb>name<\u200C/b></b>.", "^Ba <b>name</b>^B."},
    };
    for (const auto& each : cases)
        EXPECT_EQ(ircCodes(each.markup), carets(each.codes));
}

TEST(IrcMarkup, IsReadFromCodes) {
    const struct {
        const char *codes, *markup;
    } cases[] = {
        {"^Bb^_bu^Bu^O.", "<b>b<u>bu</b>u</u>."},
        {"^]i^].", "<i>i</i>."},
        {"^C4,12red^C13pink^C,5", "<font color=#FF0000>red<font color=#FF00FF>pink</font>,5"},
        {"^C044^C4,x", "<font color=#FF0000>4,x"},
        {"^D00ff7f,000000x^D00ff7y", "<font color=#00FF7F>x</font>00ff7y"},
        {"^C00,01white^C99own^D101010dark", "whiteowndark"},
        {"^Vturned^^struck^Qtyped^]", "turnedstrucktyped"},
        {"<^V/FONT> <3 <nick>", "<\u200C/FONT> <3 <nick>"},
        {"<a href=x>y</a>", "<\u200C"
                            "a href=x>y<\u200C/a>"},
        {"^B<font ^Bx", "<b><\u200C"
                        "font </b>x"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(markupOfIrc(carets(each.codes)), each.markup);
}

TEST(IrcMarkup, ShowsTagsOfOthersAsTheyWroteThem) {
    const std::string line = markupOfIrc("see <b> and <font color=#ff0000>");
    ASSERT_EQ(readMarkup(line).size(), 1u);
    EXPECT_EQ(visibleText(readMarkup(line)[0].text, " "), "see <b> and <font color=#ff0000>");
}

TEST(IrcMarkup, IsLeftOut) {
    EXPECT_EQ(withoutIrcCodes(carets("^C04,01a ^Bb^O <b>")), "a b <b>");
}

} // namespace
} // namespace larkspin
