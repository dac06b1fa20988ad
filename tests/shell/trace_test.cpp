#include "shell/trace.h"

#include "support/talk.h"

#include <algorithm>

namespace larkspin {

TEST(Trace, KeepsTheLastFactsWithoutWhatSteersADisplay) {
    VirtualMachine machine;
    const std::string kept(103, 'x');
    for (std::size_t number = 0; number < Trace::most; ++number)
        machine.trace.note("old");
    machine.trace.note("row", "next", "one");
    machine.trace.note("heard", "a\x1B[2J\n\u009B\u20AC");
    for (int number = 0; number < 3; ++number)
        machine.trace.count("line of others");
    machine.trace.note("file", "Who\uF03F\uF00A \uF0A0", "\xEF\x80");
    machine.trace.note("long", kept + "lost");
    const Lines facts = machine.traced();
    ASSERT_EQ(facts.size(), Trace::most);
    EXPECT_EQ(facts[494], "old");
    EXPECT_EQ(Lines(facts.end() - 5, facts.end()),
              (Lines{"row next one", "heard a?[2J?\xC2?\u20AC", "line of others, 3 times",
                     "file Who?? \uF0A0 \xEF\x80", "long " + kept}));
}

TEST(Trace, TellsWhatTheOwnerHasDoneAndThatOthersHaveSpoken) {
    VirtualMachine machine({"a.mp3"});
    const std::size_t before = machine.traced().size();
    machine.files.unwritable = "larkspin.ini";
    machine.owner("'Font arial");
    machine.files.unwritable.clear();
    machine.somebody("ann", "hidden");
    machine.somebody("bob", "hidden");
    machine.owner("hello");
    Lines facts = machine.traced();
    facts.erase(facts.begin(), facts.begin() + static_cast<std::ptrdiff_t>(before));
    const auto end = std::unique(facts.begin(), facts.end());
    EXPECT_EQ(Lines(facts.begin(), end),
              (Lines{"heard 'Font arial", "row font *",
                     "file: couldn't save " + machine.drive("data/larkspin.ini") +
                         " no space left on the device",
                     "line of others, 2 times", "heard hello"}));
}

} // namespace larkspin
