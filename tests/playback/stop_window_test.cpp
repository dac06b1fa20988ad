// The stop window's label: what a click does goes by its caption.
#include "shell/control_events.h"
#include "support/talk.h"

namespace larkspin {

struct Stops : VirtualMachine {
    Stops() : VirtualMachine(Lines{"a1.mp3", "a2.mp3", "b.mp3"}) { owner("'play a"); }

    Window& stops() { return window("stops"); }
    std::string caption() { return stops().control("label").text(); }
    void click() { EXPECT_TRUE(press(stops(), "label")); }
    Lines saidByClick() {
        forget();
        run([this] { click(); });
        return allSaid();
    }
    // The owner clicks so often in the wait after the first choice.
    void clickAfterFirst(int times) {
        inMessage("<b>1", [this, times] {
            for (int i = 0; i < times; ++i)
                loop.once(Nanoseconds(100ms) * (i + 1), [this] { click(); });
        });
    }
};

static const std::string firstLine = "<b>1</b>.  <b><u>a</b></u>1";
static const std::string secondLine = "<b>2</b>.  <b><u>a</b></u>2";
static const std::string askOneOrTwo = "type <b>'m 1</b> - <b>'m 2</b> or <b>'cancel";
static const std::string aborted = "selection scroll aborted";
static const std::string opening = "scrolling <b>2</b> matches";

TEST(StopWindow, BreaksTheRecitalOfYes) {
    for (const int clicks : {1, 2}) {
        Stops machine;
        machine.clickAfterFirst(clicks);
        EXPECT_EQ(machine.answer("'yes"), firstLine + "\n" + aborted);
        EXPECT_TRUE(machine.stops().visible);
        EXPECT_EQ(machine.caption(), " show list");
        EXPECT_EQ(machine.answer("'m 1"), "");
        EXPECT_EQ(machine.answer("'yes"), firstLine + "\n" + secondLine + "\n" + askOneOrTwo);
        EXPECT_FALSE(machine.stops().visible);
        machine.owner("'play a");
        machine.clickAfterFirst(clicks);
        machine.owner("'yes");
        machine.click();
        EXPECT_EQ(machine.caption(), "    scroll");
        Window& larkmain = machine.window("larkmain");
        EXPECT_TRUE(isShown(larkmain, larkmain.control("choiceList")));
        EXPECT_EQ(machine.stops().place.top, larkmain.place.top - 300);
    }
}

TEST(StopWindow, RecitesTheChoicesOnShowUntilItIsClickedAgain) {
    Stops machine;
    machine.owner("'view");
    machine.clickAfterFirst(1);
    EXPECT_EQ(machine.saidByClick(), (Lines{opening, firstLine, aborted}));
    EXPECT_EQ(machine.caption(), "    scroll");
    EXPECT_EQ(machine.answer("'m 1"), "");
    machine.loop.once(300ms, [&] { machine.click(); }); // while it is announced
    EXPECT_EQ(machine.saidByClick(), (Lines{opening, aborted})) << "and starts no second one";
    machine.clickAfterFirst(2);
    EXPECT_EQ(machine.saidByClick(), (Lines{opening, firstLine, secondLine, askOneOrTwo}))
        << "the second click comes before the first one is seen";
    EXPECT_FALSE(machine.stops().visible);
    EXPECT_EQ(machine.answer("'m 2"), "playing choice:  " + secondLine);
    EXPECT_FALSE(machine.window("larkmain").visible);
}

TEST(StopWindow, LosesItsRecitalToAStart) {
    const std::string playing = "playing:  <b>3</b>.  <b><u>b</b></u>";
    for (const auto& [wait, said] : {std::pair(300ms, Lines{opening, playing, aborted}),
                                     {900ms, {opening, firstLine, playing, aborted}}}) {
        Stops machine;
        machine.owner("'view");
        machine.loop.once(wait, [&] { machine.owner("'play b"); });
        EXPECT_EQ(machine.saidByClick(), said);
        EXPECT_FALSE(machine.stops().visible);
        EXPECT_EQ(machine.caption(), "     stop");
    }
}

TEST(StopWindow, LosesItsRecitalToTheEndOfTheChoices) {
    Stops machine;
    machine.owner("'view");
    machine.loop.once(900ms, [&] { press(machine.window("larkmain"), "closeLabel"); });
    EXPECT_EQ(machine.saidByClick(), (Lines{opening, firstLine, aborted}));
    machine.owner("'coms");
    EXPECT_TRUE(machine.window("larkmain").control("commandNames").visible);
}

TEST(StopWindow, SaysNothingOfARecitalThatAnotherOneHasReplaced) {
    Stops machine;
    machine.owner("'view");
    machine.loop.once(300ms, [&] { machine.says({"'play a", "'yes"}); });
    EXPECT_EQ(machine.saidByClick().back(), askOneOrTwo);
    EXPECT_EQ(machine.saidWithin(5s), Lines{});
}

} // namespace larkspin
