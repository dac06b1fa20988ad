// Finding media: scans, the media filter, and what brings found rows into the playlist.
#include "app/program.h"
#include "library/playlist_row.h"
#include "support/talk.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <set>

namespace larkspin {
namespace {

using namespace std::string_literals;

// Directories by path, as a test puts them; one that isn't there can't be entered.
struct MadeDirectories : Directories {
    DirectoryRead list(const std::string& path) override {
        if (const auto fault = faults.find(path); fault != faults.end())
            return DirectoryRead(fault->second);
        return tree.contains(path) ? DirectoryRead(tree[path])
                                   : DirectoryRead(DirectoryRead::Outcome::missing);
    }
    std::vector<std::string> drives() override { return driveTexts; }
    std::string drivePath(std::string_view typed) override { return std::string(typed); }
    std::map<std::string, DirectoryListing> tree;
    std::map<std::string, DirectoryRead::Outcome> faults;
    Lines driveTexts = {"c: [system]", "C:", "d:", "e:"};
};

struct ScanTest : testing::Test {
    VirtualMachine machine;
    const std::string root = machine.drive("music");
};

TEST_F(ScanTest, WalksTheTreeDepthFirstAndListsByName) {
    for (const char* name : {"c/2.MP3", "c/10.mp3", "b/d/x.mp3", "b/d/.mp3", "b/D.mp3/z.mp3",
                             "a.mp3", "B.mp3", "b/no.wav", "b/no.mp3.txt", "é/x.Mp3"})
        machine.song("", name);
    const auto native = machine.disk.path() / "music";
    std::filesystem::create_directory_symlink(native, native / "c/circle");
    machine.start();
    for (const std::string& typed : {root + "\\", native.native() + "/c/..", root})
        EXPECT_TRUE(machine.answer("'scan " + typed)
                        .ends_with("\nfound <b>8</b> (<b>mp3</b>) in <b>5</b> directories"));
    Lines queue, rows;
    for (const char* below : {"", "\\b", "\\b\\d", "\\b\\D.mp3", "\\c", "\\é"})
        queue.push_back(root + below);
    for (const char* file :
         {"0a.mp3", "0B.mp3", "2.mp3", "2x.mp3", "3z.mp3", "410.mp3", "42.MP3", "5x.Mp3"})
        rows.push_back(rowOfFile(file + 1, queue[static_cast<std::size_t>(*file - '0')]));
    EXPECT_EQ(rowsOf(machine.state().dirQueue), queue);
    EXPECT_EQ(rowsOf(machine.state().scanRows), rows);
}

TEST_F(ScanTest, WalksEveryDriveAndEveryDirectoryHoweverMany) {
    MadeDirectories made;
    made.tree = {{"c:\\", {"c:\\", {"a.mp3"}, {"x", "locked"}}},
                 {"c:\\x", {"c:\\x", {"b.mp3"}, {}}},
                 {"e:\\", {"e:\\", {"e.mp3"}, {}}}};
    for (int number = 100'000; number < 133'000; ++number) { // more than a list holds
        made.tree["e:\\"].directories.push_back(std::to_string(number));
        const std::string path = "e:\\" + std::to_string(number);
        made.tree[path] = {path, {}, {}};
    }
    made.tree["e:\\101001"].files = made.tree["e:\\132999"].files = {"e.mp3"};
    made.tree["e:\\101001"].path = "E:\\"; // known but for the case
    machine.startOn(made);
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(machine.answer("'scanpc"), "scanning pc for <b>mp3</b>, please wait..\n"
                                             "found <b>5</b> (<b>mp3</b>) in <b>4</b> directories\n"
                                             "couldn't look into <b>d:\\</b>:  it isn't there");
    EXPECT_EQ(rowdir(machine.state().scanRows.row(4)), "e:\\132999");
}

TEST_F(ScanTest, TellsWhatCouldntBeReadAndKeepsNothingOfAnOlderScan) {
    using enum DirectoryRead::Outcome;
    MadeDirectories made;
    made.tree = {{"c:\\", {"c:\\", {"a.mp3"}, {"bad", "closed", "gone", "hangs"}}}};
    made.faults = {{"c:\\bad", failed},
                   {"c:\\closed", refused},
                   {"c:\\hangs", unanswered},
                   {"c:\\a.mp3", noDirectory}};
    machine.startOn(made);
    const std::string none = "found <b>0</b> (<b>mp3</b>) in <b>0</b> directories\n";
    for (const auto& [typed, answer] : std::map<std::string, std::string>{
             {"c:\\", "found <b>1</b> (<b>mp3</b>) in <b>1</b> directories\n"
                      "couldn't look into <b>c:\\bad</b> and <b>1</b> more directory:  "
                      "the disk can't be read"},
             {"c:\\a.mp3", none + "couldn't look into <b>c:\\a.mp3</b>:  it is no directory"},
             {"c:\\closed", none + "couldn't look into <b>c:\\closed</b>:  permission denied"},
             {"c:\\hangs", none + "couldn't look into <b>c:\\hangs</b>:  the disk doesn't answer"},
             {"z:\\x", none + "couldn't look into <b>z:\\x</b>:  it isn't there"}})
        EXPECT_EQ(machine.answer("'scan " + typed),
                  "scanning directory <b>" + typed + "</b> for <b>mp3\n" + answer);
    EXPECT_EQ(machine.answer("'transfer"), "there's nothing to transfer, you dumbass");
}

TEST_F(ScanTest, PassesOverWhatIsHiddenUnlessTheOwnerNamesIt) {
    for (const char* name :
         {"a/1.mp3", "a/._1.mp3", "a/.hidden.mp3", ".Trash-1000/files/2.mp3", "$RECYCLE.BIN/3.mp3",
          ".config/x/4.mp3", "System Volume Information/5.mp3"})
        machine.song("", name);
    machine.start();
    for (const auto& [below, found, directories] : {std::tuple("", 2, 1),
                                                    {"\\.Trash-1000", 1, 1},
                                                    {"\\.config", 1, 1},
                                                    {"\\$RECYCLE.BIN", 1, 1}})
        EXPECT_TRUE(machine.answer("'scan " + root + below)
                        .ends_with("\nfound <b>" + std::to_string(found) +
                                   "</b> (<b>mp3</b>) in <b>" + std::to_string(directories) +
                                   "</b> directories"))
            << machine.said();
}

TEST_F(ScanTest, SaysHowManyDontFit) {
    MadeDirectories made;
    made.tree = {{"c:\\", {"c:\\", {}, {"x", "y"}}}, {"c:\\y", {"c:\\y", {"z.mp3"}, {}}}};
    DirectoryListing& many = made.tree["c:\\x"];
    many.path = "c:\\x";
    for (int number = 10'000; number < 42'769; ++number)
        many.files.push_back(std::to_string(number) + ".mp3");
    made.driveTexts = {"c:"};
    const std::string row = rowOfFile("here.mp3", "c:\\a");
    machine.writeDataFile("temp.lst", row + "\n");
    machine.startOn(made);
    const std::string scanned = "found <b>32767</b> (<b>mp3</b>) in <b>1</b> directories\n"
                                "a list holds <b>32767</b> songs, left out <b>3</b>";
    EXPECT_TRUE(machine.answer("'scan c:\\").ends_with("\n" + scanned)) << machine.said();
    const std::string oneLeft = "\na list holds <b>32767</b> songs, left out <b>1</b>";
    EXPECT_EQ(machine.answer("'transfer"),
              "transferring <b>32767</b> files over to playlist" + oneLeft);
    EXPECT_EQ(machine.answer("'listadd 42766"),
              "added <b>0</b> items for <b>42766</b> (<b>32767</b>)" + oneLeft);
    EXPECT_EQ(machine.answer("'listadd here"),
              "added <b>0</b> items for <b>here</b> (<b>32767</b>)")
        << "which was in no scan";
    machine.dialogs.answers = {"yes"};
    EXPECT_EQ(
        machine.answerTo([&] {
            machine.chooseFromTray("scanpcf");
            machine.advance(1s);
        }),
        "[box] found 32767 mp3s in 1 directories, would you like to transfer them? or use add "
        "string on the mp3s window to add individual songs - a list holds 32767 songs, left "
        "out 3\n[box] a list holds 32767 songs, left out 1");
    machine.song("", "new.mp3");
    machine.dialogs.answers = {machine.drive("music/new.mp3"), ""};
    machine.click("mp3s", "Command1");
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromPopup("adfil"); }),
              "[box] a list holds 32767 songs, left out 1");
}

TEST_F(ScanTest, AnotherScanInsideItLeavesItsWalkAlone) {
    for (const char* name : {"a/1.mp3", "a/b/2.mp3", "a/b/3.mp3", "c/4.mp3", "5.mp3"})
        machine.song("", name);
    for (const char* name : {"x.mp3", "y/z.mp3"})
        machine.disk.write("other/"s + name, "");
    machine.start();
    machine.owner("'scan " + machine.drive("other"));
    const Lines others = rowsOf(machine.state().scanRows);
    machine.owner("'scan " + root);
    const Lines alone = rowsOf(machine.state().scanRows);
    std::set<std::size_t> left; // rows that are found after the other scan, by its moment
    // At the first moment the scan hasn't begun yet: it announces itself.
    for (int moment = 2; left.size() < alone.size(); ++moment) {
        SCOPED_TRACE(moment);
        ASSERT_LT(moment, 100);
        int turn = 0;
        const std::function<void()> eachTurn = [&] {
            if (++turn == moment)
                machine.hear("'scan " + machine.drive("other"));
            else if (turn < moment)
                machine.loop.post(eachTurn);
        };
        machine.loop.post(eachTurn);
        machine.hear("'scan " + root);
        const Lines found = rowsOf(machine.state().scanRows);
        const auto rest = found.size() - others.size();
        ASSERT_LE(rest, alone.size());
        Lines expected = others;
        expected.insert(expected.end(), alone.end() - std::ptrdiff_t(rest), alone.end());
        EXPECT_EQ(found, expected);
        if (rest > 0)
            left.insert(rest);
    }
}

TEST_F(ScanTest, EndsWithItsRun) {
    machine.song("a", "1.mp3");
    machine.start();
    machine.loop.post([&] { machine.loop.post([&] { machine.chooseFromTray("rstartp"); }); });
    machine.owner("'scan " + root);
    EXPECT_TRUE(machine.said().starts_with("load:  <b>2")) << "nothing is found after it";
    EXPECT_TRUE(machine.state().scanRows.empty());
}

TEST_F(ScanTest, NamesThatDifferInCaseAloneAllEnterInOneOrderWhateverTheDisks) {
    MadeDirectories made;
    for (const bool turned : {false, true}) {
        DirectoryListing top{"c:\\", {"b.mp3", "B.mp3", "É.mp3", "é.mp3"}, {"x", "X"}};
        if (turned) {
            std::ranges::reverse(top.files);
            std::ranges::reverse(top.directories);
        }
        made.tree = {{"c:\\", top},
                     {"c:\\x", {"c:\\x", {"1.mp3"}, {}}},
                     {"c:\\X", {"c:\\X", {"1.mp3"}, {}}}};
        machine.startOn(made);
        machine.owner("'scan c:\\");
        EXPECT_EQ(machine.state().scanRows.count(), 6);
        machine.owner("'transfer");
        EXPECT_EQ(rowsOf(machine.state().masterList),
                  (Lines{rowOfFile("1.mp3", "c:\\X"), rowOfFile("1.mp3", "c:\\x"),
                         rowOfFile("B.mp3", "c:\\"), rowOfFile("b.mp3", "c:\\"),
                         rowOfFile("É.mp3", "c:\\"), rowOfFile("é.mp3", "c:\\")}));
        machine.owner("'exit");
        machine.writeDataFile("temp.lst", "");
    }
}

TEST_F(ScanTest, TheFilterSaysWhichTypesAreSeen) {
    for (const char* name :
         {"1.mp3", "2.wav", "3.wma", "4.mid", "5.midi", "mp3", "6.flac", "7.OGA"})
        machine.song("a", name);
    machine.start();
    for (const auto& [word, name, types, found] :
         {std::tuple("mp3", "mp3", "*.mp3", 1),
          {"all", "all types", "*.mp3;*.wav;*.wma;*.mid", 4},
          {"midi", "midi", "*.mid", 1},
          {"ogg", "ogg", "*.ogg;*.oga", 1},
          {"any", "any",
           "*.mp3;*.wav;*.wma;*.mid;*.flac;*.ogg;*.oga;*.opus;*.m4a;*.m4b;*.aac;*.ape;*.wv;*.mpc;"
           "*.aiff;*.aif",
           6}}) {
        EXPECT_EQ(machine.answer("'filter "s + word), "new media filter:  <b>"s + name);
        EXPECT_EQ(machine.answer("'filter?"),
                  "current media filter:  <b>"s + name + "</b> (<b>" + types + "</b>)");
        machine.owner("'scan " + root);
        EXPECT_EQ(machine.state().scanRows.count(), found);
        EXPECT_EQ(machine.state().scanpcf, "scan pc for "s + name);
        EXPECT_EQ(machine.trayEntry("fmp3"), "*mp3") << "only the tray moves the check mark";
    }
    for (const char* word : {"MP3", "all types", "mid", "", " mp3"})
        EXPECT_EQ(machine.answer(std::string("'filter ") + word),
                  "invalid. choose mp3, wav, wma, midi, or all; or flac, ogg, opus, m4a, aac, ape, "
                  "wavpack, musepack, aiff, or any");
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'transfer"), "");
    EXPECT_EQ(machine.state().mp3z, "view 6 files");
}

TEST_F(ScanTest, FoundRowsAreAddedOnceByTextOrAllTogether) {
    for (const char* name : {"ride.mp3", "Rest.mp3", "ä/ride.mp3", "ä/x.mp3"})
        machine.song("rock", name);
    std::string lines;
    while (lines.size() < 2 * 32763)
        lines += "-\n";
    machine.writeDataFile("temp.lst", lines);
    machine.start();
    EXPECT_EQ(machine.answer("'transfer"), "there's nothing to transfer, you dumbass");
    EXPECT_EQ(machine.answer("'listadd x"), "added <b>0</b> items for <b>x</b> (<b>32763</b>)");
    EXPECT_EQ(machine.answer("'scan " + root),
              "scanning directory <b>" + root + "</b> for <b>mp3\n" +
                  "found <b>4</b> (<b>mp3</b>) in <b>2</b> directories");
    for (const char* added : {"2", "0"})
        EXPECT_EQ(machine.answer("'listadd RIDE"),
                  "added <b>" + std::string(added) + "</b> items for <b>RIDE</b> (<b>32765</b>)");
    EXPECT_EQ(machine.answer("'listadd Ä"), "added <b>1</b> items for <b>Ä</b> (<b>32766</b>)");
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(machine.answer("'transfer"), "transferring <b>4</b> files over to playlist");
    machine.song("rock", "new.mp3");
    machine.song("rock", "RIDE.mp3"); // another file
    machine.owner("'scan " + root);
    EXPECT_EQ(machine.answer("'listadd "), "added <b>0</b> items for <b></b> (<b>32767</b>)\n"
                                           "a list holds <b>32767</b> songs, left out <b>2</b>");
    EXPECT_EQ(machine.state().fileCountLabel, "32767 files");
    EXPECT_EQ(machine.state().mp3z, "view 32767 files");
    EXPECT_EQ(rowsOf(machine.state().playlistView), rowsOf(machine.state().masterList));
}

TEST_F(ScanTest, EveryNameOnTheDiskIsFoundKeptAndPlayed) {
    // clang-format off
    const std::string gap(78, ' ');
    const std::vector<Lines> songs = { // directory, file, and a part of its name as it is typed
        {"дом", "Песня Ё.mp3", "песня ё"}, {"日本", "歌.mp3", "歌"}, {"a b ", "What?.mp3", "what?"},
        {" x", " \"q\": <a*b>.mp3", " \"Q\": <A*B>"}, {"x|y\\z", "AC|DC.mp3", "ac|dc"},
        {"l\n", "line\nbreak\t.mp3", "break"}, {"\xFF", "\xC4rger.mp3", "\xC4RGER"},
        {"مرحبا", "שלום 🎵.mp3", "שלום 🎵"}, {"{d}", " .mp3", " "}, {"x..", ". .mp3", ". "},
        {"\uF03F", "\uF07C|.mp3", "\uF07C"}, {"tail", "blank .mp3", "blank "},
        {"{d}", "a{b.mp3", "a{"}, {"{d}", "{ .{.mp3", "{ .{"},
        {"e", "row" + gap + "{ .mp3 | c:\\no.mp3", "row" + gap + "{ .mp3 "}, {"e", gap + ".mp3", gap},
        {"twins", "Anna.mp3", "anna"}, {"twins", "anna.mp3", "anna"}, // a file each
        {"twins", "\u00E9.mp3", "\u00E9"}, {"twins", "e\u0301.mp3", "\u00E9"}};
    // clang-format on
    std::map<std::string, std::string> rows; // by what is typed
    for (const Lines& song : songs)
        rows[song[2]] = machine.song(song[0], song[1]);
    machine.start();
    machine.owner("'scan " + root);
    EXPECT_SAID(machine, "found <b>20</b> (<b>mp3</b>) in <b>14</b> directories");
    machine.owner("'transfer");
    for (int run = 0; run < 2; ++run) {
        for (int row = 1; row <= 20; ++row) {
            const std::string name = asSeen(rowname(machine.state().masterList.row(row - 1)));
            EXPECT_EQ(machine.answer("'num " + std::to_string(row)),
                      "playing:  <b>" + std::to_string(row) + "</b>.  " + name);
        }
        for (const auto& [typed, row] : rows) {
            machine.owner("'play " + typed);
            EXPECT_TRUE(machine.state().choiceList.contains(row)) << row;
            EXPECT_TRUE(machine.answer("'count " + typed).ends_with("of <b>20")) << row;
        }
        machine.owner("'exit");
        machine.start();
    }
    machine.owner("'scan " + root);
    converse(machine,
             {Turn("'listrmv AC|DC", "removed <b>1</b> items for <b>AC|DC</b> (<b>19</b>)"),
              Turn("'listadd AC|DC", "added <b>1</b> items for <b>AC|DC</b> (<b>20</b>)"),
              Turn("'ref X|Y\\Z", "found <b>1</b> (<b>mp3</b>) in <b>1</b> directories")});
}

// Other systems write a letter and its accent apart. Of two that are alike none is meant.
TEST_F(ScanTest, FindsADirectoryHoweverItIsSpelled) {
    for (const char* name : {"e\u0301/live/1.mp3", "twins/o\u0308/2.mp3", "twins/O\u0308/3.mp3"})
        machine.song("", name);
    machine.start();
    machine.owner("'scan " + root + "\\\u00E9\\live");
    EXPECT_SAID(machine, "found <b>1</b> (<b>mp3</b>) in <b>1</b> directories");
    EXPECT_EQ(rowdir(machine.state().scanRows.row(0)), root + "\\e\u0301\\live");
    for (const char* name : {"\\twins\\\u00F6", "\\\u00E9\\dead"}) {
        machine.owner("'scan " + root + name);
        EXPECT_SAID(machine, "couldn't look into <b>" + root + name + "</b>:  it isn't there");
    }
}

} // namespace
} // namespace larkspin
