#include "platform/terminal/screen/columns.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(Columns, CountWhatATerminalTakes) {
    const struct {
        std::string_view text;
        int columns;
    } cases[] = {
        {"", 0},
        {"word", 4},
        {"日本", 4},
        {"e\u0301", 1},
        {"שלום", 4},
        {"한국", 4},
        {"\u0301", 0},
        {"🎵", 2},
        {"a\xFF"
         "b",
         3}, // a byte that is no text is shown as one

        {"\uE000", 1}, // of nobody's
    };
    for (const auto& [text, columns] : cases)
        EXPECT_EQ(columnsOf(text), columns) << text;
}

TEST(Columns, CutWhatHasNoRoom) {
    const struct {
        std::string_view text;
        int columns;
        std::string_view cut;
    } cases[] = {
        {"word", 4, "word"},  {"words", 4, "wor…"},
        {"words", 1, "…"},    {"words", 0, ""},
        {"words", -3, ""},    {"日本語", 5, "日本…"},
        {"日本語", 4, "日…"}, {"e\u0301e\u0301e", 2, "e\u0301…"},
    };
    for (const auto& [text, columns, cut] : cases)
        EXPECT_EQ(cutTo(text, columns), cut) << text << " in " << columns;
}

TEST(Columns, BreakLinesAtBlanksAndBesideWideCharacters) {
    const struct {
        std::string_view text;
        int first, columns;
        std::vector<std::string_view> lines;
    } cases[] = {
        {"", 5, 5, {""}},
        {"one two three", 7, 7, {"one two", "three"}},
        {"one   two", 5, 5, {"one", "two"}},
        {"  one two", 5, 5, {"  one", "two"}},
        {"one ", 3, 3, {"one"}},
        {"incomprehensible", 6, 6, {"incomp", "rehens", "ible"}},
        {"a incomprehensible", 6, 6, {"a", "incomp", "rehens", "ible"}},
        {"word more", 2, 5, {"", "word", "more"}}, // it has room in the next line
        {"wordmore", 2, 5, {"wo", "rdmor", "e"}},
        {"word", -1, 4, {"", "word"}},
        {"日本語です", 5, 5, {"日本", "語で", "す"}},
        {"ab日本", 3, 3, {"ab", "日", "本"}},
        {"日本", 1, 1, {"日", "本"}}, // never nothing
        {"e\u0301e\u0301e\u0301", 2, 2, {"e\u0301e\u0301", "e\u0301"}},
    };
    for (const auto& [text, first, columns, lines] : cases) {
        std::vector<std::string_view> broken;
        for (const Span& span : wrapped(text, first, columns))
            broken.push_back(text.substr(span.begin, span.end - span.begin));
        EXPECT_EQ(broken, lines) << text;
    }
}

} // namespace
} // namespace larkspin
