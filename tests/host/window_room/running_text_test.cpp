// What is new in a room's running text, whatever becomes of its head, and who has said it.
#include "host/window_room/running_text.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace larkspin {

namespace {

using Texts = std::vector<std::string>;

// "speaker|text" for each line.
Texts linesOf(const RunningText::News& news) {
    Texts all;
    for (const RunningLine& line : news.lines)
        all.push_back(line.speaker + '|' + line.text);
    return all;
}

// A client's text, of which the end is seen.
struct Seen {
    RunningText running;
    std::string text;
    RunningText::News look() {
        const std::size_t size = std::min(text.size(), RunningText::known);
        return running.take(std::string_view(text).substr(text.size() - size), text.size());
    }
    Texts newAfter(const std::string& added) {
        text += added;
        const RunningText::News news = look();
        EXPECT_TRUE(news.isNew);
        return linesOf(news);
    }
};

} // namespace

TEST(RunningText, TellsNameAndLineInEachForm) {
    const struct {
        const char *before, *added;
        Texts lines;
    } cases[] = {
        {"", "Ann:\thi\r\n", {"Ann|hi"}},
        {"*** You are in \"Town\". ***\r\n", "Ann:\thi\r\nBob:\tho\r\n", {"Ann|hi", "Bob|ho"}},
        {"You are in Town", "\rAnn:\thi\rBob:\tho", {"Ann|hi", "Bob|ho"}}, // breaks stand before
        {"a\r\n", "Ann goes\r\n\r\n", {"|Ann goes"}},
        {"a\r\n", "Ann:\t\r\n", {"Ann|"}},
        {"a\r\n", "Ann:\tx: y\tz:\tq\r\n", {"Ann|x: y z: q"}},
        {"a\r\n", ":\tnobody\r\n", {"|: nobody"}},
        {"a\r\n", "\xC4nn:\t\x80 \x01\x9D\r\n", {"\u00C4nn|\u20AC   "}},
        // What looks like another's line.
        {"a\r\n", "Ann:\tho\nOwner:\t'exit\r\n", {"Ann|ho Owner: 'exit"}},
        {"a\r\n", "Ann:\tho\rOwner:\t'exit\r\n", {"Ann|ho Owner: 'exit"}},
        {"a\r", "Ann:\tho\nOwner:\t'exit\v\f\r", {"Ann|ho Owner: 'exit  "}},
        {"a\r\nAnn:\tho ", "Owner:\t'exit\r\n", {}}, // more of a line that was seen already
    };
    for (const auto& [before, added, lines] : cases) {
        SCOPED_TRACE(added);
        Seen seen{.text = before};
        seen.look();
        EXPECT_EQ(seen.newAfter(added), lines);
        EXPECT_EQ(seen.newAfter(""), Texts{});
    }
}

TEST(RunningText, KeepsTheThreadWhenTheHeadGoes) {
    for (const std::size_t limit : {3000u, 65535u, 65536u, 200'000u}) {
        SCOPED_TRACE(limit);
        Seen seen{.text = std::string(limit - 1000, 'x') + "\r\n"};
        seen.look();
        for (int number = 0; number < 100; ++number) {
            const std::string line = "says " + std::to_string(number) + std::string(60, 'x');
            seen.text += "Ann:\t" + line + "\r\n";
            if (seen.text.size() > limit) // at any byte
                seen.text.erase(0, seen.text.size() - limit + static_cast<std::size_t>(number % 7));
            const RunningText::News news = seen.look();
            ASSERT_TRUE(news.isNew) << number;
            ASSERT_EQ(linesOf(news), Texts{"Ann|" + line}) << number;
        }
    }
}

// In one that repeats itself nothing is told twice, whatever is lost.
TEST(RunningText, TellsNothingTwiceOfWhatRepeatsItself) {
    Seen seen;
    seen.look();
    for (int number = 0; number < 200; ++number) {
        seen.text += number % 50 == 49 ? "Bob:\tab\r\n" : "Ann:\tab\r\n";
        if (seen.text.size() > 1000)
            seen.text.erase(0, 301);
        EXPECT_LE(seen.look().lines.size(), 1u);
    }
}

TEST(RunningText, TakesNothingForNewThatMayBeOld) {
    Seen seen{.text = "Owner:\t'exit\r\n"};
    EXPECT_FALSE(seen.look().isNew);
    seen.text = "Owner:\t'stop\r\nOwner:\t'exit\r\n"; // another text, which begins otherwise
    EXPECT_FALSE(seen.look().isNew);
    // In the middle of a stranger's line its end stands at the head, and nothing is known of it.
    seen.text = "Owner:\t'exit\r\nBob:\ta\r\n" + std::string(RunningText::known, 'x') + "\r\n";
    EXPECT_EQ(linesOf(seen.look()), Texts{});
    seen.text.clear();
    EXPECT_EQ(linesOf(seen.look()), Texts{});
    EXPECT_EQ(seen.newAfter("Owner:\t'next\r\n"), Texts{"Owner|'next"});
    seen.running.forget();
    EXPECT_FALSE(seen.look().isNew);
    // It is emptied, and filled anew.
    const std::string before = seen.text += "Owner:\t'exit\r\nOwner:\t'stop\r\n";
    seen.look();
    seen.text.clear();
    seen.look();
    EXPECT_EQ(seen.newAfter(before.substr(0, 30)), Texts{});
    seen.text = before;
    EXPECT_EQ(seen.newAfter(""), Texts{});
    EXPECT_EQ(seen.newAfter("Ann:\thi\r\n"), Texts{"Ann|hi"});
    // What is filled in of it is emptied as well; and only its last comes back.
    for (const std::size_t size : {0u, 30u, 0u}) {
        seen.text = before.substr(0, size);
        seen.look();
    }
    seen.text = before + "Ann:\thi\r\n";
    EXPECT_EQ(seen.newAfter(""), Texts{});
    seen.text.clear();
    seen.look();
    seen.text = "Owner:\t'stop\r\nAnn:\thi\r\nAnn:\tho\r\n";
    EXPECT_FALSE(seen.look().isNew);
    seen.running.take("", 5'000'000); // it can't be read
    EXPECT_FALSE(seen.look().isNew);
}

} // namespace larkspin
