// Numbers, characters, folding, marking and patterns; also in bytes that are no text.
#include "text/fold.h"
#include "text/highlight.h"
#include "text/number.h"
#include "text/utf8.h"
#include "text/wildcard.h"

#include <gtest/gtest.h>
#include <random>

namespace larkspin {
namespace {

using Names = std::vector<std::string>;
using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(Text, HoldsNumbersThatRoundAHalfToTheEvenOne) {
    for (const char* text : {"", "  ", ".", "-", "1e5", "0x10", "1 2", "1.2.3", "--1", "1,5", "\t1",
                             "inf", "nan", "٣", "- 1", "1-", "yes"})
        EXPECT_EQ(number(text), std::nullopt) << text;
    for (const char* text : {"0", "0.1", "-2.5", "0.0000001", "1000000000000000", "-123456.75"})
        EXPECT_EQ(numberText(numberOrZero(" " + std::string(text) + " ")), text);
    EXPECT_EQ(number("+.50"), 0.5);
    EXPECT_EQ(number("07."), 7);
    EXPECT_EQ(numberText(*number("-0")), "0");
    for (const double half : {-2.5, -1.5, -0.5, 0.5, 1.5, 2.5})
        EXPECT_EQ(rounded(half) % 2, 0) << half;
    EXPECT_EQ(rounded(-0.51), -1);
    EXPECT_EQ(rounded(1e30), INT64_MAX);
    EXPECT_EQ(rounded(-1e30), INT64_MIN);
    EXPECT_EQ(wholeNumber16("32767.4"), 32767);
    EXPECT_EQ(wholeNumber16("-32768.5"), -32768);
    EXPECT_FALSE(wholeNumber16("32767.5"));
    EXPECT_FALSE(wholeNumber16("-32769"));
    EXPECT_FALSE(wholeNumber16("one"));
    for (const int inside : {1, 10, 65535})
        EXPECT_EQ(plainNumber(std::to_string(inside), 1, 65535), inside);
    for (const char* other : {"", "0", "65536", "99999999999", "-1", "+1", " 1", "1 ", "1x", "1.5"})
        EXPECT_EQ(plainNumber(other, 1, 65535), std::nullopt) << other;
}

Names charactersOf(std::string_view text) {
    Names characters;
    for (; !text.empty(); text.remove_prefix(characters.back().size()))
        characters.emplace_back(text.substr(0, firstCharacter(text).length));
    return characters;
}

TEST(Text, OfAnyBytesKeepsItsCharacters) {
    for (const std::string& text : Names{"a\x80", "\xE3\x81", "\xC0\xAF", "\xED\xA0\x80",
                                         "\xF4\x90\x80\x80", "\xF0\x80\x80\xAF"})
        EXPECT_EQ(charactersOf(text).size(), text.size()) << testing::PrintToString(text);
    for (const char32_t code : {U'\x7F', U'\x80', U'\u07FF', U'\u0800', U'\uFFFF', U'\U0010FFFF'}) {
        std::string text;
        appendCharacter(text, code);
        EXPECT_EQ(firstCharacter(text).code, code);
        EXPECT_EQ(firstCharacter(text).length, text.size());
    }
    const std::size_t fitting[] = {0, 1, 1, 1, 4, 5, 5};
    for (std::size_t most = 0; most < std::size(fitting); ++most)
        EXPECT_EQ(fittingLength("a\u20ACb", most), fitting[most]) << most;
    EXPECT_EQ(fittingLength("\x80\x80\x80", 1), 0u);
    EXPECT_EQ(fittingLength("\x80\x80\x80\x80\x80\x80", 5), 2u);
    // Broken ones among them, and such as change their length when folded.
    const Names pieces = {"a",    "A",    "ä", "Ä", "\xC3",   "\x84", "\xE4",  "你",
                          "\xF0", "\x9D", "𝄞", "ẞ", "\u212A", "?",    "\uF03F"};
    std::mt19937 random(3);
    for (unsigned round = 0; round < 20000; ++round) {
        std::string text, find, before, marked;
        for (auto count = random() % 9; count > 0; --count)
            (count == 1 || count == round % 4 ? find : text) += pieces[random() % pieces.size()];
        SCOPED_TRACE(testing::PrintToString(text) + testing::PrintToString(find));
        const Names characters = charactersOf(text);
        const std::size_t all = characters.size(), wanted = charactersOf(find).size();
        for (std::size_t at = 0, markedTo = 0; at < all; ++at) {
            ASSERT_EQ(withoutLast(text, all - at), before);
            const std::size_t length = prefixLength(text, at + wanted) - before.size();
            const bool hit = wanted > 0 && equalFolded(text.substr(before.size(), length), find);
            before += characters[at];
            if (at >= markedTo) {
                marked += hit ? "[]" : characters[at];
                markedTo = at + (hit ? wanted : 1);
            }
        }
        ASSERT_EQ(highlight(text, find, "[]"), marked);
        ASSERT_EQ(charactersOf(foldCase(text)).size(), all);
        ASSERT_EQ(equalFolded(text, find), foldCase(text) == foldCase(find));
        ASSERT_EQ(lessFolded(text, find), foldCase(text) < foldCase(find));
    }
}

// clang-format off
TEST(Text, FoldsCapitalsAndStandIns) {
    for (const auto& [text, folded] : Pairs{
             {"RIDE {|}", "ride {|}"}, {"ÄÖ ÉŁ ΣΑΣς ЖЁ", "äö éł σασσ жё"}, {"ẞ ſ \u212A", "ß s k"},
             {"Ä\xC4\xE4Z", "ä\xC4\xE4z"}, {"\uF07C\uF05C\uF00A\uF000", "\uF07C\uF05C\u240A\uF000"},
             {"A\uF022\uF02A\uF03A\uF03C\uF03E\uF03F\uF020", "a\"*:<>? "}})
        EXPECT_EQ(foldCase(text), folded);
}
// clang-format on

// One meaning, spelled in several ways.
TEST(Text, FoldsTheSameLettersAlikeHoweverTheyAreSpelled) {
    const std::vector<Names> alike = {
        {"beyonc\u00E9", "beyonce\u0301", "BEYONCE\u0301", "Beyonc\u00C9"},
        {"\u212B", "\u00C5", "A\u030A", "a\u030A"},                   // angstrom
        {"\u1EA5", "\u00E2\u0301", "a\u0302\u0301", "A\u0302\u0301"}, // two marks
        {"\u1E69", "s\u0323\u0307", "s\u0307\u0323", "\u1E61\u0323"}, // in either order
        {"\uD55C\uAE00", "\u1112\u1161\u11AB\u1100\u1173\u11AF", "\uD558\u11AB\uAE00"}, // hangul
        {"\u01F0", "j\u030C", "J\u030C"}, // with no capital of its own
        {"\u0929", "\u0928\u093C"},
        {"\u0958", "\u0915\u093C"}, // composed, and never composed
        {"\u09CB", "\u09C7\u09BE"},
        {"x\u0302", "X\u0302"},
        {"\uFA0A", "\u898B"},
        {"\u2260", "=\u0338"}};
    for (const Names& spellings : alike)
        for (const std::string& other : spellings) {
            SCOPED_TRACE(other);
            EXPECT_EQ(foldCase(other), foldCase(spellings[0]));
            EXPECT_TRUE(equalFolded("a" + other, "A" + spellings[0]));
            EXPECT_EQ(highlight("<" + other + ">", spellings[0], "*"), "<*>");
        }
    for (const auto& [a, b] : Pairs{{"e", "e\u0301"},
                                    {"e\u0301", "e\u0300"},
                                    {"a\u0301\u0302", "a\u0302\u0301"},
                                    {"a\u0305\u0301", "a\u0301\u0305"},
                                    {"\u1112\u1161", "\uD55C"},
                                    {"e\u0301", "\xE9"}})
        EXPECT_FALSE(equalFolded(a, b)) << a;
    EXPECT_TRUE(lessFolded("f", "e\u0301")) << "as its letter, not as the first part of it";
    EXPECT_EQ(foldCase("\xE9\u0301e"), "\xE9\u0301e");
    EXPECT_EQ(highlight("Beyonce\u0301 beyonce", "e", "*"), "B*yonce\u0301 b*yonc*");
}

TEST(Text, FitsAPatternAsAWhole) {
    const Pairs fitting = {{"aXbXc", "a*b*c"}, {"aabab", "*ab"}, {"", "*"},
                           {"", ""},           {"a?", "a?"},     {".mp3", "*.mp3"}};
    for (const auto& [text, pattern] : fitting)
        EXPECT_TRUE(fits(text, pattern)) << text;
    for (const auto& [text, pattern] :
         Pairs{{"ab", "a?"}, {"ab", "a*b*b"}, {"x.mp3x", "*.mp3"}, {"X", "x"}, {"abab", "ab"}})
        EXPECT_FALSE(fits(text, pattern)) << text;
    for (const char* text : {"X.MP3", "x.\u212Aar", "\u00C4.mp3", "xAyBz"})
        EXPECT_TRUE(fitsAnyFolded(text, "*.mp3;*.kar;*a*b*")) << text;
    for (const char* text : {"mp3", "\u00C4mp3", "x.mp3x", "xAy", "x.wav"})
        EXPECT_FALSE(fitsAnyFolded(text, "*.mp3;*.kar;*a*b*;")) << text;
}

} // namespace
} // namespace larkspin
