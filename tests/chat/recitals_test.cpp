#include "chat/recitals.h"

#include "app/program.h"
#include "support/talk.h"

#include <algorithm>

namespace larkspin {

TEST(Recitals, SixtyAmidEachOtherTakeNoPlaceOnTheStack) {
    VirtualMachine machine({"a.mp3", "b.mp3"});
    for (const char* line : {"'save one", "'sn mum", "'ap c:\\a.jpg, one", "'ap c:\\b.jpg, one"})
        machine.owner(line);
    machine.facts.drives["c:\\"] = {40, 20};
    const Recitals& recitals = machine.program->chat.recitals;
    for (const char* line : {"'scrn", "'rn mum", "'scra", "'load one", "'stats", "'pstat", "'adv",
                             "'top 2", "'scrd", "'scrpl", "'cinfo", "'free c"}) {
        SCOPED_TRACE(line);
        const auto lines = std::ranges::count(machine.answer(line), '\n') + 1;
        for (int number = 0; number < 60; ++number)
            machine.loop.once(number * 1ms, [&] { machine.hear(line); });
        machine.loop.once(100ms, [&] {
            EXPECT_EQ(recitals.count(), 60u);
            EXPECT_EQ(machine.loop.atWork().depth, 1);
            machine.hear("'date");
            EXPECT_EQ(machine.said(), "Friday, December 19, 2003");
        });
        machine.forget();
        machine.advance(200ms);
        EXPECT_EQ(machine.allSaid().size(), static_cast<std::size_t>(60 * lines + 1));
        EXPECT_EQ(recitals.count(), 0u);
    }
}

// A box that a command opens in the middle of a recital holds it up, as one that has begun before
// it doesn't.
TEST(Recitals, GoOnOnceWhatHasBegunAfterThemIsOver) {
    VirtualMachine machine(Lines{"a.mp3"});
    machine.loop.once(100ms, [&] { machine.hear("'newpl"); });
    machine.dialogs.whileOpen = [&] {
        machine.dialogs.whileOpen = [] {};
        machine.loop.once(1s, [&] { machine.hear("'adv"); });
        machine.loop.waitUntil(machine.loop.now() + 3s);
    };
    const std::string answer = machine.answer("'stats");
    const Lines said = machine.allSaid();
    ASSERT_EQ(said.size(), 6u) << answer;
    EXPECT_EQ(said[1], "larkspin player - by moraine");
    EXPECT_EQ(said[3], "new playlist created: files not deleted");
    EXPECT_TRUE(said[4].starts_with("tempo"));
}

// The room takes its line between two moments.
TEST(Recitals, DoNothingMoreOnceTheyAreOver) {
    VirtualMachine machine(Lines{});
    Recitals& recitals = machine.program->chat.recitals;
    int steps = 0, looks = 0;
    machine.run([&] {
        recitals.begin([&] {
            ++steps;
            machine.lines.talk().isAhead = [&] { return ++looks == 1; };
            return std::optional<double>();
        });
    });
    machine.advance(1s);
    EXPECT_EQ(steps, 1);
    EXPECT_EQ(recitals.count(), 0u);
}

} // namespace larkspin
