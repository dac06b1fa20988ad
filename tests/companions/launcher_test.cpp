// The launcher by its commands, and what is left of its list.
#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {
namespace {

struct Launcher : VirtualMachine {
    Launcher() : VirtualMachine(Lines{}) {
        says({"'ap c:\\a.jpg, Red Rose", "'ap c:\\rose.exe, Blue", "'ap c:\\c.JPG, rose bush",
              "'ap c:\\d.EXE, bush rose"});
    }
    Lines saidTo(const std::string& line) { // and how long all of it took
        forget();
        const Nanoseconds start = loop.now();
        owner(line);
        took = loop.now() - start;
        return allSaid();
    }
    Nanoseconds took{};
};

const std::string red = "loading... <b>Red Rose", bush = "loading... <b>rose bush",
                  rose = "loading... <b>bush rose";
const std::string removed = "</b> removed from applications n shit list";
const std::string scrolling = "scrolling <b>4</b> app n shit items",
                  first = "<b>1</b>.  <b>Red Rose</b> ~> c:\\a.jpg";

TEST(Launcher, AddsAPathAndATitleAsTyped) {
    VirtualMachine machine(Lines{});
    const std::string native = (machine.disk.path() / "home").native(),
                      home = machine.drive("home");
    converse(machine, {{"'AP C:\\My Pics\\a.JPG, My Pic", "added:  <b>My Pic"},
                       {"'ap   d:\\x ,y  two, three ", "added:  <b>two, three"},
                       {"'ap ~/song, mine", "added:  <b>mine"},
                       {Lines{"'ap " + native + "/a:b.mp3, line\nbreak"}, "added:  <b>line\nbreak"},
                       {{"'ap , title", "'ap c:\\x,  "}, "the fuck are you tryin to do?"},
                       {{"'ap http://x.y/z, site", "'ap c:/x, slash", "'ap word, x"},
                        "the hell are you doing, stupid?"},
                       {Lines{"'ap c:\\x", "'ap c:\\x,title"}, ""},
                       {"'ap?", "total apps n shit items:  <b>4"},
                       {"'trig ,", "new trigger:  ,"},
                       {",ap c:\\x, title", ""}}); // the line's first comma is the trigger
    machine.restart();
    EXPECT_EQ(rowsOf(machine.state().appPaths),
              (Lines{"C:\\My Pics\\a.JPG", "d:\\x", home + "\\song", home + "\\a\uF03Ab.mp3"}));
    EXPECT_EQ(rowsOf(machine.state().appTitles),
              (Lines{"My Pic", "two, three", "mine", "line break"}));
    EXPECT_EQ(machine.trayEntry("appsz"), "view 4 app items");
}

TEST(Launcher, TakesWhatHasTheWordInItsTitle) {
    Launcher machine;
    EXPECT_EQ(machine.saidTo("'load ROSE"), (Lines{red, bush, rose}));
    EXPECT_EQ(machine.took, 1800ms);
    EXPECT_EQ(machine.state().appPaths.currentIndex(), 3);
    EXPECT_EQ(machine.state().appTitles.selectedCount(), 1);
    EXPECT_EQ(machine.answer("'load JPG"), "<b>jpg</b> not found");
    machine.launching.works = false;
    EXPECT_EQ(machine.saidTo("'load blue").back(), "unable to open... <b>c:\\rose.exe");
    EXPECT_EQ(machine.saidTo("'load bush r").back(), "unable to open... <b>c:\\d.EXE");
    EXPECT_EQ(machine.launching.started,
              (Lines{"open c:\\a.jpg", "open c:\\c.JPG", "open c:\\d.EXE", "run c:\\rose.exe",
                     "open c:\\d.EXE"}));
    EXPECT_EQ(machine.saidTo("'scra")[1], first);
    EXPECT_EQ(machine.took, 700ms + 4 * 600ms);
    EXPECT_EQ(machine.state().appPathText, "c:\\d.EXE");
    EXPECT_EQ(machine.answer("'rmva JPG"), "<b>jpg</b> not found");
    EXPECT_EQ(machine.saidTo("'rmva BUSH"),
              (Lines{"<b>rose bush" + removed, "<b>bush rose" + removed}));
    EXPECT_EQ(machine.took, 1200ms);
    EXPECT_EQ(rowsOf(machine.state().appPaths), (Lines{"c:\\a.jpg", "c:\\rose.exe"}));
    EXPECT_EQ(machine.trayEntry("appsz"), "view 2 app items");
    EXPECT_EQ(machine.answer("'clra"), "cleared <b>2</b> apps n shit");
    EXPECT_EQ(machine.state().appPathText, "");
    EXPECT_EQ(machine.answer("'scra"), "scrolling <b>0</b> app n shit items");
}

TEST(Launcher, IsLeftAloneInSilence) {
    Launcher machine;
    machine.owner("'silent");
    for (const char* line : {"'apps", "'load rose", "'rmva rose", "'ap c:\\x, y", "'scra"})
        EXPECT_TRUE(machine.answer(line).starts_with("[box] ")) << line;
    EXPECT_EQ(machine.launching.started, Lines{});
    EXPECT_FALSE(machine.window("appz").visible);
    EXPECT_EQ(machine.answer("'ap?"), "[box] you have 4 app items");
    EXPECT_EQ(machine.answer("'clra"), "[box] all apps and pics have been cleared");
    EXPECT_EQ(machine.trayEntry("appsz"), "view 0 app items");
}

// What the owner says in the middle of a message, all that is said, and how many items are left.
TEST(Launcher, WalksOnThroughChangesOfItsList) {
    const std::string redGone = "<b>Red Rose" + removed, bushGone = "<b>rose bush" + removed,
                      roseGone = "<b>bush rose" + removed;
    const struct {
        std::string walk, message, line;
        Lines said;
        int left;
    } cases[] = {{"'load rose", red, "'clra", {red, "cleared <b>4</b> apps n shit"}, 0},
                 {"'load rose", red, "'ap c:\\n, rose", {red, "added:  <b>rose", bush, rose}, 5},
                 {"'load rose", red, "'rmva bush r", {red, roseGone, bush}, 3},
                 {"'rmva rose",
                  bushGone,
                  "'rmva blue",
                  {redGone, bushGone, "<b>Blue" + removed, roseGone},
                  0},
                 {"'scra", first, "'clra", {scrolling, first, "cleared <b>4</b> apps n shit"}, 0},
                 {"'scra", scrolling, "'clra", {scrolling, "cleared <b>4</b> apps n shit"}, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.walk + " and " + c.line);
        Launcher machine;
        machine.inMessage(c.message, [&] { machine.owner(c.line); });
        EXPECT_EQ(machine.saidTo(c.walk), c.said);
        EXPECT_EQ(machine.state().appTitles.count(), c.left);
        EXPECT_EQ(machine.state().appPaths.count(), c.left);
    }
}

TEST(Launcher, KeepsTheLinesOfItsFilesTogether) {
    const struct {
        std::string paths, titles;
        bool canBeRead;
        std::string pathsKept, titlesKept;
    } cases[] = {
        {"c:\\a\r\nc:\\b\r\n", "a\r\n", true, "c:\\a\r\nc:\\b\r\nc:\\n\r\n", "a\r\n\r\nnew\r\n"},
        {"c:\\a\r\n", "a\r\nb\r\n", true, "c:\\a\r\n\r\nc:\\n\r\n", "a\r\nb\r\nnew\r\n"},
        {"c:\\a\r\n", "a\r\n", false, "c:\\a\r\nc:\\n\r\n", "a\r\nnew\r\n"}};
    for (const auto& c : cases) {
        VirtualMachine machine;
        machine.writeDataFile("lksapp.lst", c.paths);
        machine.writeDataFile("lksappl.lst", c.titles);
        const auto titles = machine.disk.path() / "data/lksappl.lst";
        std::filesystem::resize_file(titles,
                                     c.canBeRead ? c.titles.size() : Files::largestFile + 1);
        machine.start();
        EXPECT_EQ(machine.answer("'ap c:\\n, new"), "added:  <b>new");
        EXPECT_EQ(machine.answer("'load a"),
                  c.canBeRead ? "loading... <b>a" : "<b>a</b> not found");
        std::filesystem::resize_file(titles, c.titles.size());
        machine.endProcess();
        EXPECT_EQ(machine.dataFile("lksapp.lst"), c.pathsKept);
        EXPECT_EQ(machine.dataFile("lksappl.lst"), c.titlesKept);
    }
}

TEST(Launcher, NeverShiftsPathsAgainstTitles) {
    int writes = 1;
    for (int allowed = 0; allowed < writes; ++allowed) {
        SCOPED_TRACE(allowed);
        Launcher machine;
        machine.endProcess();
        machine.start();
        machine.says({"'rmva blue", "'ap c:\\new, new"});
        machine.files.fullAfter = machine.files.writes + allowed;
        const int before = machine.files.writes;
        machine.endProcess();
        writes = machine.files.writes - before + 1;
        machine.files.full = false;
        machine.files.fullAfter = std::numeric_limits<int>::max();
        for (int start = 0; start < 2; ++start) {
            machine.start();
            const Lines titles = rowsOf(machine.state().appTitles);
            const bool isOld = titles == Lines{"Red Rose", "Blue", "rose bush", "bush rose"};
            if (!isOld)
                EXPECT_EQ(titles, (Lines{"Red Rose", "rose bush", "bush rose", "new"}));
            EXPECT_EQ(rowsOf(machine.state().appPaths),
                      isOld ? (Lines{"c:\\a.jpg", "c:\\rose.exe", "c:\\c.JPG", "c:\\d.EXE"})
                            : (Lines{"c:\\a.jpg", "c:\\c.JPG", "c:\\d.EXE", "c:\\new"}));
            machine.endProcess();
        }
    }
    EXPECT_GT(writes, 3);
}

TEST(Launcher, RefusesMoreThanAListHolds) {
    Launcher machine;
    for (RowList* list : {&machine.state().appPaths, &machine.state().appTitles})
        while (list->add("c:\\x"))
            continue;
    EXPECT_EQ(machine.answer("'ap c:\\n, new"), "the applications n shit list is full");
    EXPECT_EQ(machine.answer("'load new"), "<b>new</b> not found");
}

} // namespace
} // namespace larkspin
