// Playlists and their files: by command, from the tray and by the media window's menu.
#include "app/program.h"
#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {
namespace {

namespace fs = std::filesystem;

struct Playlists : testing::Test {
    void write(const std::string& name, const Lines& songs) {
        std::string rows;
        for (const std::string& song : songs)
            rows += machine.song("rock", song) + "\r\n";
        machine.writeDataFile(name, rows);
    }
    void chooseFromOps(const std::string& entry) {
        machine.click("mp3s", "Command3");
        machine.chooseFromPopup(entry);
    }
    // All regular files of the disk but the settings, which change for many reasons.
    std::map<std::string, std::string> filesOnDisk() {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(machine.disk.path())) {
            const std::string below = fs::relative(entry.path(), machine.disk.path());
            if (entry.is_regular_file() && below != "data/larkspin.ini")
                found[below] = machine.disk.read(below);
        }
        return found;
    }
    VirtualMachine machine{Lines{"a.mp3", "b.mp3"}};
};

TEST_F(Playlists, AreSavedLoadedAndDeletedByAPartOfTheirName) {
    converse(
        machine,
        {Turn("'pl?", "there are <b>0</b> playlists"),
         Turn("'save Mix", "saved playlist <b>Mix.lkl</b>, <b>2</b> files"),
         Turn("'save Mix", "saved over original playlist <b>Mix.lkl</b>, <b>2</b> files"),
         Turn("'pl", "playlist in use:  <b>Mix.lkl"), Turn("'pl?", "there are <b>1</b> playlists"),
         Turn("'clearpl", "media playlist cleared"),
         Turn("'save empty", "saved playlist <b>empty.lkl</b>, <b>0</b> files"),
         Turn("'list .LKL", "loaded playlist <b>empty.lkl</b>, <b>0</b> files\n"
                            "loaded playlist <b>Mix.lkl</b>, <b>2</b> files"),
         Turn("'next", "next:  <b>1</b>.  a"), Turn("'xlist Mixes", "<b>mixes</b> not found"),
         Turn("'xlist MI", "deleted playlist <b>Mix.lkl"),
         Turn("'pl", "playlist in use:  <b>Mix.lkl"), Turn("'list mix", "<b>mix</b> not found")});
    EXPECT_EQ(machine.state().masterList.count(), 2);
    EXPECT_EQ(machine.state().p, Lines{"empty.lkl"});
    EXPECT_EQ(machine.trayEntry("numl"), "1 playlists");
    EXPECT_EQ(machine.dataFile("empty.lkl"), "");
}

TEST_F(Playlists, AreRefusedInSilence) {
    machine.state().silnt = true;
    converse(machine, {Turn({"'list x", "'xlist x"}, "[box] load"), Turn("'save x", "[box] save"),
                       Turn({"'pl", "'pl?", "'scrpl"}, "[box] you are in silent mode"),
                       Turn({"'scrd", "'clearpl", "'newpl"}, "")});
    EXPECT_EQ(machine.state().masterList.count(), 0);
    EXPECT_EQ(machine.state().playlistTitle, " playlist:  new playlist");
}

TEST_F(Playlists, LoadIntoListsThatStartAgain) {
    write("one.lkl", {"z.mp3", "x.mp3", "y.mp3"});
    machine.restart();
    machine.owner("'num 2");
    machine.state().playedMemory.add("x.mp3");
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("p1"); }), "");
    EXPECT_EQ(machine.window("mp3s").control("fileCountLabel").text(), "3 files");
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 3 files");
    EXPECT_EQ(machine.state().playlistView.count(), 3);
    EXPECT_TRUE(machine.state().playedMemory.empty());
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing) << "the song goes on";
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  x");
    EXPECT_FALSE(machine.owner("'exit"));
    EXPECT_EQ(machine.setting("playlist"), "one.lkl");
}

TEST_F(Playlists, NothingIsTouchedByNamesThatAreNoFiles) {
    machine.disk.write("x.lkl", machine.song("rock", "a.mp3") + "\r\n");
    machine.disk.write("data/below/x.lkl", "");
    const auto before = filesOnDisk();
    const std::string trick("larkspin.ini\0", 13);
    for (const std::string& name : Lines{"", ".", "../x", "below/x", trick})
        EXPECT_EQ(machine.answer("'save " + name),
                  "couldn't save playlist <b>" + name + ".lkl</b>:  no file can have that name");
    for (const std::string name :
         {"Larkspin.INI", "lark\uF000spin.ini", "played.ini", "temp.lst", "larkmain.lpb",
          "lksapp.lst", "lksappl.lst", "history.txt", "irc.txt", "room-window.txt", "larkspin.lock",
          "temp.lst.rescued", "lksapp.lst.ahead", ".larkspin-1-1.new"}) {
        machine.dialogs.answers = {machine.drive("data") + '\\' + name};
        EXPECT_TRUE(machine.answerTo([&] { chooseFromOps("savlis"); })
                        .ends_with("</b>:  the program keeps something else there"))
            << name;
    }
    EXPECT_EQ(filesOnDisk(), before);
    EXPECT_NE(machine.setting("load"), "");
    EXPECT_EQ(machine.trayEntry("numl"), "0 playlists");
}

TEST_F(Playlists, AreFoundAgainWhateverTheirName) {
    for (const std::string name :
         {"  two blanks", "what?", "50% \"off\"", "{a}", ".hidden", "a\\b", "c|d"}) {
        SCOPED_TRACE(name);
        machine.owner("'save " + name);
        machine.owner("'exit");
        machine.start();
        EXPECT_EQ(machine.trayEntry("mp3z"), "view 2 files");
        EXPECT_EQ(machine.window("mp3s").control("fileCountLabel").text(), "2 files");
        machine.owner("'clearpl");
        EXPECT_TRUE(machine.answer("'list " + name).starts_with("loaded playlist <b>"));
        EXPECT_EQ(machine.answer("'xlist " + name), "deleted playlist <b>" + name + ".lkl");
    }
}

TEST_F(Playlists, ThatCantBeReadStayAsTheyAre) {
    write("big.lkl", {"z.mp3"});
    const fs::path big = machine.disk.path() / "data/big.lkl";
    fs::resize_file(big, 512u << 20);
    fs::create_directory(machine.disk.path() / "data/place.lkl");
    converse(machine,
             {Turn("'list big", "couldn't load playlist <b>big.lkl</b>:  it is too large"),
              Turn("'list place", "<b>place</b> not found"),
              Turn("'xlist place", "<b>place</b> not found"),
              Turn("'pl", "temporarly playlist in use"),
              Turn("'save place", "couldn't save playlist <b>place.lkl</b>:  it is no file"),
              Turn("'save big", "couldn't save playlist <b>big.lkl</b>:  it is too large")});
    EXPECT_EQ(machine.trayEntry("numl"), "1 playlists");
    EXPECT_EQ(fs::file_size(big), 512u << 20);
    EXPECT_TRUE(fs::is_directory(machine.disk.path() / "data/place.lkl"));
}

TEST_F(Playlists, OfAnotherDirectoryAreLeftAloneWithoutTheirOwn) {
    machine.song("rock", "mine.lkl");
    machine.owner("'scan " + machine.drive("music/rock"));
    fs::remove_all(machine.disk.path() / "data");
    converse(machine, {Turn({"'xlist mine", "'list mine"}, "<b>mine</b> not found"),
                       Turn("'scrpl", "there are no playlists to scroll")});
    EXPECT_TRUE(fs::exists(machine.disk.path() / "music/rock/mine.lkl"));
}

TEST_F(Playlists, ThatGoWhileTheyAreLoadedDontCount) {
    for (const char* name : {"a.lkl", "b.lkl", "c.lkl"})
        write(name, {"z.mp3"});
    machine.inMessage("loaded playlist <b>a.lkl", [&] { machine.owner("'xlist b"); });
    EXPECT_EQ(machine.answer("'list .lkl"), "loaded playlist <b>a.lkl</b>, <b>1</b> files\n"
                                            "deleted playlist <b>b.lkl\n"
                                            "loaded playlist <b>c.lkl</b>, <b>1</b> files");
}

TEST_F(Playlists, AreNoneOfTheNextRunsBusinessAfterARestart) {
    for (const char* name : {"one.lkl", "two.lkl"})
        write(name, {"z.mp3"});
    for (const char* line : {"'list lkl", "'xlist lkl"}) {
        machine.dialogs.answers = {"yes"};
        machine.inMessage("", [&] { machine.restart(); });
        machine.owner(line);
        EXPECT_EQ(machine.answer("'pl"), "playlist in use:  <b>one.lkl") << line;
    }
    EXPECT_TRUE(fs::exists(machine.disk.path() / "data/two.lkl"));
}

TEST_F(Playlists, AreScrolledWithTimeToRead) {
    write("one.lkl", {});
    write("Two.lkl", {});
    machine.loop.once(800ms, [&] { machine.owner("'filter?"); });
    machine.loop.once(900ms, [&] { machine.owner("'ref"); });
    machine.loop.once(1s, [&] { machine.owner("'scrpl"); });
    const auto begin = machine.loop.now();
    EXPECT_EQ(machine.answer("'scrpl"),
              "scrolling <b>2</b> playlists\n<b>1</b>.  one.lkl\n"
              "current media filter:  <b>mp3</b> (<b>*.mp3</b>)\nlist refreshed - no change\n"
              "scrolling <b>2</b> playlists\n<b>1</b>.  one.lkl\n<b>2</b>.  Two.lkl\n"
              "<b>2</b>.  Two.lkl");
    EXPECT_EQ(machine.loop.now() - begin, 3800ms) << "the inner recital overtakes the outer one";
    machine.loop.once(800ms, [&] { machine.program->exit(); });
    EXPECT_FALSE(machine.owner("'scrpl"));
}

TEST_F(Playlists, StartAnewWithAQuestionWhenThereAreRows) {
    const std::string question = "\n[box] do you wanna clear the list?";
    for (const auto& [answer, files] : {std::pair("no", "not deleted"), {"yes", "deleted"}}) {
        machine.dialogs.answers = {answer};
        EXPECT_EQ(machine.answer("'newpl"),
                  std::string("new playlist created: files ") + files + question);
    }
    EXPECT_EQ(machine.window("mp3s").control("fileCountLabel").text(), "0 files");
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 0 files");
    converse(machine,
             {Turn("'pl", "temporarly playlist in use"), Turn("'newpl", "new playlist created"),
              Turn("'pl", "playlist in use:  <b>new playlist")});
}

TEST_F(Playlists, StartAnewFromTheMenuUnderANewTitleInAnyCase) {
    for (const auto& [answer, rows] : std::map<std::string, int>{{"no", 2}, {"yes", 0}}) {
        machine.state().playlistTitle = " playlist:  old.lkl";
        machine.dialogs.answers = {answer};
        EXPECT_EQ(machine.answerTo([&] { chooseFromOps("nlis"); }),
                  "[box] do you wanna clear the list?");
        EXPECT_EQ(machine.state().masterList.count(), rows);
        EXPECT_EQ(machine.state().playlistTitle, " playlist:  new playlist");
    }
    EXPECT_FALSE(machine.endProcess());
    EXPECT_EQ(machine.dataFile("temp.lst"), "");
    EXPECT_EQ(machine.setting("playlist"), "");
}

TEST_F(Playlists, GoFromAndIntoFilesByDialog) {
    machine.disk.write("else/Far.lkl", machine.song("rock", "z.mp3"));
    machine.forget();
    chooseFromOps("loadlis"); // dismissed
    chooseFromOps("savlis");
    EXPECT_EQ(machine.dialogs.titles, (Lines{"load a playlist", "save a playlist"}));
    machine.dialogs.answers = {machine.drive("else/Far.lkl"), machine.drive("else/kept.txt"),
                               machine.drive("else/kept.txt")};
    for (const char* entry : {"loadlis", "savlis", "savlis"})
        chooseFromOps(entry);
    EXPECT_EQ(machine.allSaid(),
              (Lines{"loaded playlist <b>Far.lkl</b>, <b>1</b> files",
                     "saved playlist <b>kept.txt</b>, <b>1</b> files",
                     "saved over original playlist <b>kept.txt</b>, <b>1</b> files"}));
    EXPECT_EQ(machine.dataFile("kept.txt"), machine.song("rock", "z.mp3") + "\r\n");
    EXPECT_FALSE(fs::exists(machine.disk.path() / "else/kept.txt"));
    EXPECT_EQ(machine.trayEntry("p1"), "kept.txt");
    for (const auto& [name, file] : std::map<std::string, std::string>{
             {"bare", "bare.lkl"}, {".bare", ".bare.lkl"}, {"dot.", "dot.lkl"}}) {
        machine.dialogs.answers = {machine.drive("else") + '\\' + name};
        EXPECT_EQ(machine.answerTo([&] { chooseFromOps("savlis"); }),
                  "saved playlist <b>" + file + "</b>, <b>1</b> files");
    }
}

TEST_F(Playlists, AreDeletedOnlyWhenTheyAreMeant) {
    for (const char* name : {"one.lkl", "two.lkl", "three.lkl"})
        write(name, {"z.mp3"});
    machine.restart();
    const std::string question = "\n[box] do you really wanna delete 3 playlists: one.lkl, "
                                 "three.lkl, two.lkl?";
    converse(machine, {Turn("'xlist ", "<b></b> not found"), Turn("'xlist  ", "<b> </b> not found"),
                       Turn("'xlist lkl", "playlists not deleted" + question)});
    EXPECT_EQ(machine.trayEntry("numl"), "3 playlists");
    EXPECT_EQ(machine.answer("'xlist ONE"), "deleted playlist <b>one.lkl");
    EXPECT_TRUE(fs::exists(machine.disk.path() / "share/Trash/files/one.lkl"));
    machine.files.refusesMoves = true;
    EXPECT_EQ(machine.answer("'xlist two"),
              "couldn't delete playlist <b>two.lkl</b>:  permission denied");
    machine.files.refusesMoves = false;
    machine.dialogs.answers = {"yes"};
    EXPECT_EQ(machine.answer("'xlist lkl"),
              "deleted playlist <b>three.lkl\ndeleted playlist <b>two.lkl\n"
              "[box] do you really wanna delete 2 playlists: three.lkl, two.lkl?");
    EXPECT_EQ(machine.trayEntry("numl"), "0 playlists");
}

TEST_F(Playlists, ThatDontFitAreNeverSavedShorter) {
    std::string many;
    for (int number = 10'000; number < 42'770; ++number)
        many += std::to_string(number) + "\r\n";
    const auto lines = [&](const std::string& name) {
        const std::string text = machine.dataFile(name);
        return std::count(text.begin(), text.end(), '\n');
    };
    machine.writeDataFile("many.lkl", many);
    EXPECT_EQ(machine.answer("'list many"),
              "loaded playlist <b>many.lkl</b>, <b>32767</b> files, <b>3</b> more don't fit");
    machine.owner("'save many");
    EXPECT_EQ(machine.dataFile("many.lkl"), many);
    machine.owner("'save copy");
    EXPECT_EQ(lines("copy.lkl"), 32'770);
    machine.owner("'list many");
    machine.owner("'listrmv 10000");
    machine.owner("'save many");
    EXPECT_EQ(lines("many.lkl"), 32'769);
    machine.owner("'save copy");
    EXPECT_EQ(lines("copy.lkl"), 32'766);
    machine.files.broken = "many.lkl";
    machine.owner("'list many");
    machine.files.broken.clear();
    machine.owner("'save many");
    EXPECT_EQ(lines("many.lkl"), 32'769);
    machine.owner("'listrmv 10001");
    machine.restart();
    EXPECT_SAID(machine, "<b>1</b> files of the playlist don't fit into the list");
    machine.owner("'save many");
    EXPECT_EQ(lines("many.lkl"), 32'768);
}

TEST_F(Playlists, OfOtherPlayersAndHandsAreLoadedAsMeant) {
    const std::string row = machine.song("rock", "a.mp3"),
                      unix = (machine.disk.path() / "music/rock/a.mp3").native();
    const Lines texts = {"\xEF\xBB\xBF" + row + "\n",
                         row + "\r",
                         "\r\n" + row + "\r\n  \r\n\r\n",
                         unix + "\n",
                         "  " + machine.drive("music/rock/a.mp3") + "\r\n",
                         "#EXTM3U\n#EXTINF:3,A | B\n" + unix,
                         "rock/a.mp3\n",
                         "rock\\a.mp3\r\n",
                         "../music/rock/a.mp3\n"};
    for (const std::string& text : texts) {
        machine.disk.write("music/x.m3u", text);
        machine.dialogs.answers = {machine.drive("music/x.m3u")};
        EXPECT_EQ(machine.answerTo([&] { chooseFromOps("loadlis"); }),
                  "loaded playlist <b>x.m3u</b>, <b>1</b> files")
            << text;
        EXPECT_EQ(machine.state().masterList.row(0), row) << text;
    }
    const std::string utf16("\xFF\xFE"
                            "a\0b\0c\0d\0\n\0",
                            12);
    for (const std::string& text : {utf16, utf16.substr(2), utf16.substr(3)}) {
        machine.disk.write("music/x.m3u", text);
        machine.dialogs.answers = {machine.drive("music/x.m3u")};
        EXPECT_EQ(machine.answerTo([&] { chooseFromOps("loadlis"); }),
                  "couldn't load playlist <b>x.m3u</b>:  it is in UTF-16");
    }
    EXPECT_EQ(machine.state().masterList.count(), 1);
}

} // namespace
} // namespace larkspin
