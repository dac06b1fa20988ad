// What of a name is seen, typed and edited.
#include "text/stand_ins.h"

#include "text/fold.h"
#include "text/visible.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(StandIns, LeaveAsWhatTheyStandForAndComeBackFromWhatIsTyped) {
    const struct {
        const char *stored, *seen, *storedAgain;
    } names[] = {
        {"plain \u00E9\xFF", "plain \u00E9\xFF", "plain \u00E9\xFF"},
        {"a\uF03Fb\uF022\uF02A\uF03A", "a?b\"*:", "a\uF03Fb\uF022\uF02A\uF03A"},
        {"\uF03C\uF03E\uF07C\uF05C", "<>|\\", "\uF03C\uF03E\uF07C\uF05C"},
        {"\uF020x\uF00A\uF07F", " x\u240A\u2421", " x\u240A\u2421"},
        {"\uF000\uF03F\uF000\uF000", "\uF03F\uF000", "\uF03F\uF000"}, // meant as such
        {"\uF041\uF02F\uF000", "\uF041\uF02F\uF000", "\uF041\uF02F\uF000"},
    };
    for (const auto& [stored, seen, storedAgain] : names) {
        EXPECT_EQ(asSeen(stored), seen);
        EXPECT_EQ(asStored(seen), storedAgain);
        EXPECT_EQ(asStored(stored), stored);
    }
    EXPECT_EQ(asSeen("c:\\a\uF03Fb\\c.mp3"), "c:\\a?b\\c.mp3");
    EXPECT_EQ(asStoredPath("c:\\a?b/c:.mp3"), "c:\\a\uF03Fb/c\uF03A.mp3");
    EXPECT_EQ(visibleText("a\uF03F\uF00A\uF041\nb", " / "), "a?\u240A\uF041 / b");
    EXPECT_EQ(visibleText("\u200A\u200B\u200F\u2010", ""), "\u200A\uFFFD\uFFFD\u2010");
}

TEST(StandIns, AreFoundByWhatIsSeen) {
    for (const char* name : {"Who\uF03F\uF022\uF02A\uF03A\uF03C\uF03E\uF020", "AC\uF07CDC",
                             "a\uF05Cb", "line\uF00Abreak\uF07F"})
        EXPECT_EQ(foldName(asSeen(name)), foldCase(name)) << asSeen(name);
}

// The answer as a front end gives it: what it can't show comes back as U+FFFD, or not at all.
TEST(StandIns, AndBytesOutliveAnEdit) {
    const struct {
        const char *stored, *edited, *becomes;
    } edits[] = {
        {"caf\xE9 \uF03F", "caf\xE9 ?", "caf\xE9 \uF03F"},
        {"caf\xE9 \uF03F", "caf\uFFFD ?", "caf\xE9 \uF03F"},
        {"caf\xE9 \uF03F", "my caf\uFFFD, who?", "my caf\xE9, who\uF03F"},
        {"\xE9x\xE8y\xE7", "\uFFFDxy\uFFFDz", "\xE9xy\xE7z"},
        {"\xE9x\xE8", "z\uFFFD", "z\xE8"},
        {"\uF000\uF03F.", "\uF03F!", "\uF000\uF03F!"},
        {"\uF000ab", "abc", "\uF000abc"},
        {"a\u202Eb", "a\uFFFDbc", "a\u202Ebc"},
        {"\u2764\uFE0F x", "\u2764 xy", "\u2764\uFE0F xy"},
        {"\u2764\uFE0F x", "x", "x"},
        {"old", "new", "new"},
        {"", "?", "?"},
        {"\uF03F", "", ""},
    };
    for (const auto& [stored, edited, becomes] : edits)
        EXPECT_EQ(afterEditing(stored, edited), becomes) << edited;
    const std::string huge(1 << 20, '\xE9');
    EXPECT_EQ(afterEditing(huge, huge), huge);
    EXPECT_EQ(afterEditing(huge, huge + 'x'), huge + 'x');
}

} // namespace
} // namespace larkspin
