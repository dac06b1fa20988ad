// Long lines in pieces.
#include "irc/protocol/irc_pieces.h"

#include "irc/protocol/carets.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(IrcPieces, EndWhereWordsDoAndLookTheSame) {
    const struct {
        const char* codes;
        std::size_t longest;
        const char* pieces; // with bars in between
    } cases[] = {
        {"fits", 4, "fits"},
        {"one two three", 7, "one two|three"},
        {"one two  three", 8, "one two |three"},
        {"endless words", 4, "endl|ess|word|s"},
        {"a \u20AC\u20AC\u20AC", 5, "a|\u20AC|\u20AC|\u20AC"},
        {"ab ^Bcd ef^B gh", 6, "ab ^Bcd|^Bef^B|gh"},
        {"abc^B de", 3, "abc|^Bde"},
        {"^C04^Bred 55 ,5", 8, "^C04^Bred|^C04^B55|^C04^B,5"},
        {"^C04red ,5", 7, "^C04red|^C04^B^B,5"},
        {"^C04word^O^B bold", 7, "^C04word|^Bbold"},
        {"^C04\u20AC", 4, "\u20AC"},
        {"a\u20AC"
         "b",
         2, "a|b"},
        {"^B^C04", 9, ""},
        {"any", 0, ""},
    };
    for (const auto& each : cases) {
        std::string pieces;
        for (const std::string& piece : ircPieces(carets(each.codes), each.longest))
            pieces += (pieces.empty() ? "" : "|") + piece;
        EXPECT_EQ(pieces, carets(each.pieces));
    }
}

TEST(IrcPieces, AreBounded) {
    EXPECT_EQ(ircPieces(std::string(1'000'000, 'x'), 400).size(), mostPieces);
}

} // namespace
} // namespace larkspin
