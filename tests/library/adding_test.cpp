// Adding media by dialog, with the media window's file menu.
#include "library/playlist_row.h"
#include "shell/window.h"
#include "support/media_machine.h"

namespace larkspin {

// On a list of a.mp3 in the directory rock, where b.wav and c.mp3 lie too.
struct AddingTest : testing::Test {
    AddingTest() {
        for (const char* name : {"b.wav", "c.mp3", "deep/d.mp3", "../z.mp3"})
            machine.song("rock", name);
        machine.state().playedMemory.add("a.mp3");
    }

    void choose(const std::string& entry, const std::deque<std::string>& answers) {
        machine.dialogs.answers = answers;
        machine.choose("Command1", entry);
    }
    // What the list holds, as paths below rock, with the backslashes that stand after it.
    Lines paths() {
        Lines found = rowsOf(machine.state().playlistView);
        for (std::string& row : found) {
            const std::string path = rowpath(row);
            row = path.starts_with(rock) ? path.substr(rock.size()) : path;
        }
        EXPECT_EQ(machine.shown("fileCountLabel"), std::to_string(found.size()) + " files");
        return found;
    }

    MediaMachine machine{Lines{"a.mp3"}};
    const std::string rock = machine.drive("music/rock"), other = machine.drive("music/z.mp3");
};

TEST_F(AddingTest, OneFileBringsItsBackslash) {
    for (const std::string& path :
         {std::string(), rock + "\\b.wav", rock + "\\b.wav", other, rock + "\\"})
        choose("adfil", {path});
    EXPECT_EQ(paths(), (Lines{"\\a.mp3", "\\\\b.wav", machine.drive("music") + "\\\\z.mp3"}));
    EXPECT_EQ(machine.state().playedMemory.count(), 1);
    EXPECT_EQ(machine.answer("'num 2"), "playing:  <b>2</b>.  b (<b>.wav</b>)");
}

TEST_F(AddingTest, SeveralFilesBringNone) {
    choose("adfil", {rock + "\\c.mp3", rock + "\\a.mp3", other, rock + "\\no", rock + "\\b.wav"});
    EXPECT_EQ(paths(), (Lines{"\\a.mp3", "\\b.wav", "\\c.mp3", other}));
    EXPECT_EQ(machine.lastBox(), "couldn't open " + rock + "\\no:  there is no such file");
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

// Where both are on the disk; else only one of them is a file.
TEST_F(AddingTest, FilesWhoseNamesDifferInTheCaseAlone) {
    for (const char* name : {"A.mp3", "gone.mp3", "pop/e\u0301.mp3", "pop/\u00E9.mp3"})
        machine.song("rock", name);
    choose("adfil", {rock + "\\A.mp3", rock + "\\gone.mp3"});
    std::filesystem::remove(machine.disk.path() / "music/rock/gone.mp3");
    machine.song("rock", "Gone.mp3");
    choose("adfil", {rock + "\\a.mp3", rock + "\\Gone.mp3"});
    EXPECT_EQ(paths(), (Lines{"\\a.mp3", "\\A.mp3", "\\gone.mp3"}));
    machine.owner("'listrmv gone");
    choose("adir", {rock + "\\pop"});
    machine.song("rock", "a.MP3");
    machine.owner("'scan " + rock);
    machine.owner("'listadd a  ");
    EXPECT_EQ(paths(), (Lines{"\\a.mp3", "\\A.mp3", "\\a.MP3", "\\pop\\\\e\u0301.mp3",
                              "\\pop\\\\\u00E9.mp3"}));
}

TEST_F(AddingTest, OffersWhatTheFilterLetsThrough) {
    const std::string filter = " - your current media filter is ";
    for (const auto& [word, entry, title, types] :
         {std::tuple("wma", "adfil", "add file(s)", "windows media audio files (*.wma)"),
          {"all", "adir", "add a directory", "media files (*.mid, *.mp3, *.wav, *.wma)"},
          {"m4a", "adfil", "add file(s)", "mpeg 4 audio files (*.m4a, *.m4b)"}}) {
        machine.owner(std::string("'filter ") + word);
        choose(entry, {});
        EXPECT_EQ(machine.dialogs.titles.back(), title + filter + machine.state().mediaFilter);
        EXPECT_EQ(machine.dialogs.fileQuestion.types.at(0).description, types);
    }
}

TEST_F(AddingTest, ADirectoryByItsNameOrThatOfAFileInIt) {
    const auto begin = machine.loop.now();
    for (const std::string& named : {std::string(), rock + "\\gone\\x.mp3", std::string("gone")})
        choose("adir", {named});
    EXPECT_EQ(machine.loop.now(), begin) << "nothing is there, and no splash";
    machine.slowDisk.spans[rock] = 1min;
    choose("adir", {rock});
    EXPECT_EQ(machine.lastBox(), "couldn't look into " + rock + ":  the disk doesn't answer");
    machine.slowDisk.spans.clear();
    EXPECT_EQ(machine.state().playedMemory.count(), 1);
    for (const std::string& named : {rock, rock + "\\", rock + "\\b.wav", rock + "\\Path"}) {
        machine.loop.once(100ms, [&] {
            EXPECT_FALSE(machine.mp3s().visible);
            machine.owner("'filter wav"); // too late for this one
        });
        choose("adir", {named});
        EXPECT_EQ(paths(), (Lines{"\\a.mp3", "\\\\a.mp3", "\\\\c.mp3"})) << named;
        EXPECT_TRUE(machine.state().playedMemory.empty());
        EXPECT_TRUE(machine.mp3s().visible);
        for (const char* line : {"'listrmv rock\\\\", "'listrmv c.mp3", "'filter mp3"})
            machine.owner(line);
    }
}

TEST_F(AddingTest, AStringAlsoWhenTheWindowIsHiddenMeanwhile) {
    machine.owner("'scan " + rock);
    machine.dialogs.whileOpen = [&] { machine.press("closeButton"); };
    choose("adstr", {"DEEP"});
    EXPECT_EQ(paths(), (Lines{"\\a.mp3", "\\deep\\d.mp3"}));
    EXPECT_TRUE(machine.state().playedMemory.empty());
    EXPECT_TRUE(machine.mp3s().visible) << "it is shown behind the splash";
}

} // namespace larkspin
