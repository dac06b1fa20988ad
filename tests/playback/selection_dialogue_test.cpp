// The dialogue about several hits, held in the room and in the commands window.
#include "shell/control_events.h"
#include "support/talk.h"

#include <filesystem>

namespace larkspin {

// One song besides the three that a search finds.
struct Rides : VirtualMachine {
    Rides() : VirtualMachine(Lines{"other.mp3", "ride a.mp3", "ride b.wav", "Ride c.mp3"}) {}

    Window& larkmain() { return window("larkmain"); }
    Window& stops() { return window("stops"); }
    bool shows(const char* control) { return isShown(larkmain(), larkmain().control(control)); }
    std::string title() { return larkmain().control("commandsTitle").text(); }
    bool pickInWindow(int row) {
        return run([&] { EXPECT_TRUE(pressTwice(larkmain(), "choiceList", row)); });
    }
};

static const std::string question =
    "scroll <b>3</b> choices?  <b>'yes </b>, <b>'no</b>, or <b>'view";
static const std::string first = "<b>1</b>.  <b><u>ride</b></u> a";
static const std::string second = "<b>2</b>.  <b><u>ride</b></u> b";
static const std::string third = "<b>3</b>.  <b><u>ride</b></u> c";
static const std::string askNumber = "type <b>'m 1</b> - <b>'m 3</b> or <b>'cancel";
static const std::string recital = first + "\n" + second + "\n" + third + "\n" + askNumber;
static const std::string startOther = "playing:  <b>1</b>.  other";

TEST(SelectionDialogue, RecitesTheHitsAndTakesANumber) {
    Rides machine;
    const Nanoseconds before = machine.loop.now();
    converse(machine,
             {Turn({"'yes", "'no", "'view", "'cancel", "'m 1"}, ""), Turn("'num 1", startOther),
              Turn({"'yes", "'no", "'view", "'cancel", "'m 1"}, ""), Turn("'play ride", question),
              Turn({"'cancel", "'m 1"}, ""), Turn("'yes", recital), Turn({"'no", "'view"}, "")});
    EXPECT_EQ(machine.loop.now() - before, 1800ms);
    EXPECT_FALSE(machine.stops().visible);
    EXPECT_EQ(machine.state().choiceList.currentIndex(), 2);
    converse(machine, {Turn({"'m 4", "'m 0", "'m -1", "'m -0", "'m 0.5", "'m 3.5", "'m 99",
                             "'m 99999999999999999999"},
                            "invalid number stupid, choose again"),
                       Turn({"'m ride", "'m ", "'m 1e0", "'m 0x1", "'m \u0663"},
                            "finish choosing your selection, dumbass"),
                       Turn("'m  2 ", "playing choice:  " + second + " (<b>.wav</b>)")});
    EXPECT_EQ(machine.title(), commandsNormal);
    converse(machine,
             {Turn({"'yes", "'no", "'view", "'cancel", "'m 1"}, ""),
              Turn("'pause", "paused:  ride b"), Turn("'next", "next:  <b>2</b>.  ride a")});
}

TEST(SelectionDialogue, EndsWithoutASong) {
    Rides machine;
    converse(machine,
             {Turn("'num 1", startOther), Turn("'play ride", question),
              Turn("'no", "selection will not be scrolled"), Turn({"'no", "'yes", "'view"}, ""),
              Turn("'pre", "previous:  <b>4</b>.  Ride c"), Turn("'play ride", question),
              Turn("'yes", recital), Turn("'play ride", question),
              Turn("'no", "selection will not be scrolled"), Turn("'play ride", question),
              Turn("'yes", recital), Turn("'play ride", question),
              Turn("'view", "viewing multiple choices"), Turn({"'no", "'yes"}, ""),
              Turn("'cancel", "selection cancelled"), Turn({"'cancel", "'m 1"}, ""),
              Turn("'next", "next:  <b>1</b>.  other")});
    converse(machine,
             {Turn("'play ride", question), Turn("'yes", recital), Turn("'num 1", startOther),
              Turn("'m 1", ""), Turn("'play ride", question), Turn("'yes", recital),
              Turn("'play other", "playing:  <b>1</b>.  <b><u>other</b></u>"), Turn("'m 1", ""),
              Turn("'play ride", question), Turn("'yes", recital),
              Turn("'cancel", "selection cancelled")});
    EXPECT_EQ(machine.title(), commandsNormal);
}

TEST(SelectionDialogue, ShowsTheHitsForADoubleClick) {
    Rides machine;
    machine.says({"'num 1", "'play ride"});
    EXPECT_EQ(machine.answer("'view"), "viewing multiple choices");
    EXPECT_TRUE(machine.shows("choiceList"));
    EXPECT_FALSE(machine.shows("commandNames"));
    EXPECT_FALSE(machine.shows("commandText"));
    EXPECT_TRUE(machine.larkmain().onTop);
    EXPECT_TRUE(machine.stops().visible);
    EXPECT_TRUE(machine.stops().onTop);
    converse(machine, {Turn({"'yes", "'no"}, "")});
    EXPECT_EQ(machine.answerTo([&] { machine.pickInWindow(2); }), "playing choice:  " + third);
    EXPECT_FALSE(machine.larkmain().visible);
    EXPECT_FALSE(machine.stops().visible);
    machine.owner("'coms");
    EXPECT_TRUE(machine.shows("commandNames"));
    EXPECT_TRUE(machine.shows("commandText"));
    EXPECT_EQ(machine.answer("'next"), "next:  <b>2</b>.  ride a");
}

TEST(SelectionDialogue, OpensTheWindowInSilence) {
    Rides machine;
    machine.says({"'num 1", "'silent"});
    converse(machine, {Turn({"'play ride", "'yes", "'no", "'m 1"}, "")});
    EXPECT_TRUE(machine.shows("choiceList"));
    EXPECT_FALSE(machine.stops().visible);
    machine.pickInWindow(0);
    EXPECT_EQ(machine.setting("play"), "ride a.mp3");
    EXPECT_FALSE(machine.larkmain().visible);
    converse(machine, {Turn("'silentoff", "silent mode - <b>off"), Turn("'play ride", question),
                       Turn("'silent", "silent mode - <b>on"),
                       Turn("'yes", "[box] this is unavailable in silent mode"),
                       Turn({"'view", "'no"}, "")});
    EXPECT_FALSE(machine.larkmain().visible) << "the owner has said yes";
}

TEST(SelectionDialogue, LeadsFromTheCommandsBackToTheChoices) {
    Rides machine;
    machine.says({"'play ride", "'view", "'coms"});
    EXPECT_TRUE(machine.shows("commandNames"));
    EXPECT_FALSE(machine.shows("choiceList"));
    EXPECT_EQ(machine.stops().control("label").text(), " show list");
    EXPECT_TRUE(press(machine.stops(), "label"));
    EXPECT_TRUE(machine.shows("choiceList"));
    machine.owner("'coms");
    EXPECT_EQ(machine.answer("'no"), "selection will not be scrolled");
    EXPECT_FALSE(machine.stops().visible);
    machine.says({"'play ride", "'view", "'play other"});
    EXPECT_FALSE(machine.larkmain().visible);
    EXPECT_EQ(machine.title(), commandsNormal);
    machine.says({"'play ride", "'view"});
    press(machine.larkmain(), "closeLabel");
    converse(machine, {Turn({"'yes", "'no", "'view"}, "")});
    EXPECT_EQ(machine.state().playlistView.currentIndex(), 0) << "the song in play";
}

TEST(SelectionDialogue, KeepsTheChoicesWhenTheFileIsGone) {
    Rides machine;
    machine.says({"'shuffle", "'num 1", "'play ride", "'view"});
    std::filesystem::remove(machine.disk.path() / "music/rock/ride a.mp3");
    machine.pickInWindow(0);
    EXPECT_EQ(machine.said(),
              "not found, refresh the directory (" + machine.drive("music/rock") + "\\)");
    EXPECT_TRUE(machine.shows("choiceList"));
    machine.pickInWindow(1);
    EXPECT_EQ(machine.said(), "playing choice:  " + second + " (<b>.wav</b>)");
}

// Shuffle would take the choices' place. However they end, it goes on after them.
TEST(SelectionDialogue, HoldsTheShuffleMeanwhile) {
    const auto say = [](const char* line) { return [line](Rides& m) { m.owner(line); }; };
    const std::pair<const char*, std::function<void(Rides&)>> cases[] = {
        {"'yes", say("'cancel")},
        {"'yes", say("'m 1")},
        {"'yes", say("'play oth")},
        {"'yes", say("'rnd")},
        {"'view", say("'rnd")},
        {"'view", [](Rides& m) { press(m.larkmain(), "closeLabel"); }},
        {"'view", [](Rides& m) { m.pickInWindow(0); }},
        {"'view", say("'play x")},
        {"'view", say("'rnd x")}};
    for (const bool plays : {true, false}) {
        for (const auto& [opening, end] : cases) {
            SCOPED_TRACE(opening);
            Rides machine;
            machine.says({"'shuffle", "'num 1", "'play ride", opening, "'play ride"});
            EXPECT_FALSE(machine.state().Timer1.enabled());
            machine.owner(opening);
            if (!plays)
                machine.player.Stop();
            const std::size_t songs = machine.player.opened.size();
            end(machine);
            const bool started = machine.player.opened.size() > songs;
            EXPECT_EQ(machine.state().Timer1.enabled(), plays || started);
            EXPECT_FALSE(machine.stops().visible);
            EXPECT_FALSE(machine.larkmain().visible);
        }
    }
}

TEST(SelectionDialogue, LosesItsRecitalToWhatComesInBetween) {
    const std::string rest = third + "\n" + askNumber;
    const std::string commands = std::to_string(Rides().state().commandNames.count());
    const std::pair<const char*, std::string> cases[] = {
        // said in the second line; all after it
        {"'play other", "playing:  <b>1</b>.  <b><u>other</b></u>"},
        {"'play ride", question},
        {"'play x", "your gay song was not found"},
        {"'rnd other", "random:  <b>1/1</b>.  <b><u>other</b></u>"},
        {"'yes", recital},
        {"'next", "next:  <b>1</b>.  other\n" + rest},
        {"'coms", "viewing <b>" + commands + "</b> commands\n" + rest}};
    for (const auto& [line, answer] : cases) {
        SCOPED_TRACE(line);
        Rides machine;
        machine.owner("'play ride");
        machine.inMessage(second, [&, said = line] { machine.owner(said); });
        EXPECT_EQ(machine.answer("'yes"), first + "\n" + second + "\n" + answer);
        EXPECT_FALSE(machine.stops().visible);
    }
}

TEST(SelectionDialogue, EndsWithTheProgram) {
    Rides machine;
    machine.owner("'play ride");
    machine.inMessage(second, [&] { machine.hear("'exit"); });
    EXPECT_FALSE(machine.owner("'yes"));
    machine.start();
    machine.owner("'play ride");
    machine.inMessage(second, [&] { machine.chooseFromTray("rstartp"); });
    EXPECT_TRUE(machine.owner("'yes"));
    EXPECT_TRUE(machine.said().starts_with("load:  <b>3</b>"));
    machine.says({"'play ride", "'view"});
    machine.restart();
    EXPECT_FALSE(machine.larkmain().visible);
    EXPECT_FALSE(machine.stops().visible);
}

} // namespace larkspin
