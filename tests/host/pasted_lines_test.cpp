#include "host/pasted_lines.h"

#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {

TEST(PastedLines, AreThoseThatWouldBeSaid) {
    const std::pair<const char*, Lines> cases[] = {
        {"", {}},
        {"\n \r\n\t", {}},
        {"one", {"one"}},
        {"one\n", {"one"}},
        {"  one\r\n\r\ntwo\rthree\n", {"  one", "two", "three"}},
        {"a\u2028b\u2029\xE2\x80 c", {"a", "b", "\xE2\x80 c"}},
        {"\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC", {"\u00E4\u00F6\u00FC\u00E4\u00F6"}},
    };
    for (const auto& [text, lines] : cases)
        EXPECT_EQ(pastedLines(text, 5).lines, lines) << text;
}

TEST(PastedLines, AreAskedAboutByNumberAndBounded) {
    const std::pair<int, const char*> cases[] = {
        {2, "say 2 lines?"}, {100, "say 100 lines?"}, {1234, "say the first 100 of 1234 lines?"}};
    for (const auto& [count, question] : cases) {
        std::string text;
        for (int line = 0; line < count; ++line)
            text += "line\n";
        EXPECT_EQ(questionOf(pastedLines(text, 10)), question);
    }
}

} // namespace larkspin
