// Playlists and their files: by command, from the tray and by the media window's menu.
#include "app/program.h"
#include "library/playlists.h"

namespace larkspin {
namespace {

struct Playlists : testing::Test {
    // All regular files of the disk but the settings, which change for many reasons.
    std::map<std::string, std::string> filesOnDisk() {
        std::map<std::string, std::string> found;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(machine.disk.path())) {
            const auto below = std::filesystem::relative(entry.path(), machine.disk.path());
            if (entry.is_regular_file() && below != "data/larkspin.ini")
                found[below] = machine.disk.read(below);
        }
        return found;
    }
    void expectFiles(const std::string& count) {
        EXPECT_EQ(machine.shown("fileCountLabel"), count + " files");
        EXPECT_EQ(machine.trayEntry("mp3z"), "view " + count + " files");
    }
    PlaylistMachine machine;
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
    machine.writeList("data/one.lkl", {"z.mp3", "x.mp3", "y.mp3"});
    machine.restart();
    machine.owner("'num 2");
    machine.state().playedMemory.add("x.mp3");
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("p1"); }), "");
    expectFiles("3");
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
    const std::string trick("larkspin.ini\0", 13), longName(300, 'x');
    for (const std::string& name : Lines{"", ".", "..", "../x", "below/x", trick, longName})
        EXPECT_EQ(machine.answer("'save " + name),
                  "couldn't save playlist <b>" + name + ".lkl</b>:  " +
                      (name == longName ? "the name is too long" : "no file can have that name"));
    EXPECT_EQ(machine.answer("'pl"), "temporarly playlist in use");
    for (const std::string name :
         {"Larkspin.INI", "lark\uF000spin.ini", "played.ini", "temp.lst", "larkmain.lpb",
          "lksapp.lst", "lksappl.lst", "history.txt", "irc.txt", "room-window.txt", "larkspin.lock",
          "temp.lst.rescued", "lksapp.lst.ahead", ".larkspin-1-1.new"}) {
        EXPECT_TRUE(machine.chooseFromOps("savlis", machine.drive("data") + '\\' + name)
                        .ends_with("</b>:  the program keeps something else there"))
            << name;
    }
    EXPECT_EQ(filesOnDisk(), before);
    EXPECT_NE(machine.setting("load"), "");
    EXPECT_EQ(machine.trayEntry("numl"), "0 playlists");
}

TEST_F(Playlists, AreFoundAgainWhateverTheirName) {
    for (const std::string name : {"  two blanks", "what?", "50% \"off\"", "{a}", ".hidden", "a\\b",
                                   "c|d", "mix: party", "<a|b>*"}) {
        const std::string told = "playlist <b>" + name + ".lkl";
        EXPECT_EQ(machine.answer("'save " + name), "saved " + told + "</b>, <b>2</b> files");
        EXPECT_TRUE(machine.exists("data/" + name + ".lkl")) << name;
        EXPECT_EQ(machine.answer("'save " + name),
                  "saved over original " + told + "</b>, <b>2</b> files");
        machine.owner("'exit");
        machine.start();
        expectFiles("2");
        machine.owner("'clearpl");
        EXPECT_EQ(machine.answer("'list " + name), "loaded " + told + "</b>, <b>2</b> files");
        EXPECT_EQ(machine.answer("'xlist " + name), "deleted " + told);
    }
    machine.owner("'save a\tb");
    EXPECT_TRUE(machine.exists("data/a\tb.lkl"));
}

TEST_F(Playlists, ThatCantBeReadStayAsTheyAre) {
    machine.writeList("data/big.lkl", {"z.mp3"});
    const auto data = machine.disk.path() / "data";
    std::filesystem::resize_file(data / "big.lkl", 512u << 20);
    std::filesystem::create_directory(data / "place.lkl");
    converse(machine,
             {Turn("'list big", "couldn't load playlist <b>big.lkl</b>:  it is too large"),
              Turn("'list place", "<b>place</b> not found"),
              Turn("'xlist place", "<b>place</b> not found"),
              Turn("'pl", "temporarly playlist in use"),
              Turn("'save place", "couldn't save playlist <b>place.lkl</b>:  it is no file"),
              Turn("'save big", "couldn't save playlist <b>big.lkl</b>:  it is too large")});
    EXPECT_EQ(machine.trayEntry("numl"), "1 playlists");
    EXPECT_EQ(std::filesystem::file_size(data / "big.lkl"), 512u << 20);
    EXPECT_TRUE(std::filesystem::is_directory(data / "place.lkl"));
}

TEST_F(Playlists, OfAnotherDirectoryAreLeftAloneWithoutTheirOwn) {
    machine.song("rock", "mine.lkl");
    machine.owner("'scan " + machine.drive("music/rock"));
    std::filesystem::remove_all(machine.disk.path() / "data");
    converse(machine, {Turn({"'xlist mine", "'list mine"}, "<b>mine</b> not found"),
                       Turn("'scrpl", "there are no playlists to scroll")});
    EXPECT_TRUE(machine.exists("music/rock/mine.lkl"));
}

TEST_F(Playlists, ThatGoWhileTheyAreLoadedDontCount) {
    machine.says({"'save a", "'save b", "'save c"});
    machine.inMessage("loaded playlist <b>a.lkl", [&] { machine.owner("'xlist b"); });
    EXPECT_EQ(machine.answer("'list .lkl"), "loaded playlist <b>a.lkl</b>, <b>2</b> files\n"
                                            "deleted playlist <b>b.lkl\n"
                                            "loaded playlist <b>c.lkl</b>, <b>2</b> files");
}

TEST_F(Playlists, AreScrolledWithTimeToRead) {
    machine.says({"'save one", "'save Two"});
    machine.mp3s().visible = false; // or else a refresh takes its time to show itself
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
    expectFiles("0");
    converse(machine,
             {Turn("'pl", "temporarly playlist in use"), Turn("'newpl", "new playlist created"),
              Turn("'pl", "playlist in use:  <b>new playlist")});
}

TEST_F(Playlists, StartAnewFromTheMenuUnderANewTitleInAnyCase) {
    for (const auto& [answer, rows] : std::map<std::string, int>{{"no", 2}, {"yes", 0}}) {
        machine.state().playlistTitle = " playlist:  old.lkl";
        EXPECT_EQ(machine.chooseFromOps("nlis", answer), "[box] do you wanna clear the list?");
        EXPECT_EQ(machine.state().masterList.count(), rows);
        EXPECT_EQ(machine.state().playlistTitle, " playlist:  new playlist");
    }
    EXPECT_FALSE(machine.endProcess());
    EXPECT_EQ(machine.dataFile("temp.lst"), "");
    EXPECT_EQ(machine.setting("playlist"), "");
}

TEST_F(Playlists, GoFromAndIntoFilesByDialog) {
    machine.disk.write("else/Far.lkl", machine.song("rock", "z.mp3"));
    for (const char* dismissed : {"loadlis", "savlis"})
        EXPECT_EQ(machine.chooseFromOps(dismissed), "");
    EXPECT_EQ(machine.dialogs.titles, (Lines{"load a playlist", "save a playlist"}));
    EXPECT_EQ(machine.chooseFromOps("loadlis", machine.drive("else/Far.lkl")),
              "loaded playlist <b>Far.lkl</b>, <b>1</b> files");
    for (const auto& [name, said] : {std::pair("kept.txt", "playlist <b>kept.txt"),
                                     {"bare", "playlist <b>bare.lkl"},
                                     {".bare", "playlist <b>.bare.lkl"},
                                     {"dot.", "playlist <b>dot.lkl"},
                                     {"dot.lkl", "over original playlist <b>dot.lkl"}})
        EXPECT_EQ(machine.chooseFromOps("savlis", machine.drive("else") + '\\' + name),
                  "saved " + std::string(said) + "</b>, <b>1</b> files");
    EXPECT_EQ(machine.dataFile("kept.txt"), machine.song("rock", "z.mp3") + "\r\n");
    EXPECT_FALSE(machine.exists("else/kept.txt"));
    EXPECT_EQ(machine.trayEntry("p1"), "kept.txt");
    // In the menu once, though it has gone and come back.
    std::filesystem::remove(machine.disk.path() / "data/kept.txt");
    machine.chooseFromOps("savlis", machine.drive("else/kept.txt"));
    EXPECT_EQ(machine.trayEntry("numl"), "4 playlists");
}

TEST_F(Playlists, AreDeletedOnlyWhenTheyAreMeant) {
    machine.says({"'save one", "'save two", "'save three"});
    const std::string question = "\n[box] do you really wanna delete 3 playlists: one.lkl, "
                                 "three.lkl, two.lkl?";
    converse(machine, {Turn("'xlist ", "<b></b> not found"), Turn("'xlist  ", "<b> </b> not found"),
                       Turn("'xlist lkl", "playlists not deleted" + question)});
    EXPECT_EQ(machine.trayEntry("numl"), "3 playlists");
    EXPECT_EQ(machine.answer("'xlist ONE"), "deleted playlist <b>one.lkl");
    EXPECT_TRUE(machine.exists("share/Trash/files/one.lkl"));
    machine.files.refusesMoves = true;
    EXPECT_EQ(machine.answer("'xlist two"),
              "couldn't delete playlist <b>two.lkl</b>:  permission denied");
    machine.files.refusesMoves = false;
    machine.dialogs.answers = {"yes"};
    EXPECT_EQ(machine.answer("'xlist lkl"),
              "deleted playlist <b>three.lkl\ndeleted playlist <b>two.lkl\n"
              "[box] do you really wanna delete 2 playlists: three.lkl, two.lkl?");
    EXPECT_EQ(machine.trayEntry("numl"), "0 playlists");
    for (char name = 'a'; name <= 'k'; ++name)
        machine.owner(std::string("'save ") + name);
    EXPECT_EQ(machine.answer("'xlist lkl"),
              "playlists not deleted\n[box] do you really wanna delete 11 playlists: a.lkl, b.lkl, "
              "c.lkl, d.lkl, e.lkl, f.lkl, g.lkl, h.lkl, i.lkl, j.lkl, ...?");
}

TEST_F(Playlists, ThatDontFitAreNeverSavedShorter) {
    std::string many;
    for (int number = 10'000; number < 42'770; ++number)
        many += std::to_string(number) + "\r\n";
    const auto linesOfSaved = [&](const std::string& name) {
        machine.owner("'save " + name);
        const std::string text = machine.dataFile(name + ".lkl");
        return std::count(text.begin(), text.end(), '\n');
    };
    machine.writeDataFile("many.lkl", many);
    EXPECT_EQ(machine.answer("'list many"),
              "loaded playlist <b>many.lkl</b>, <b>32767</b> files, <b>3</b> more don't fit");
    EXPECT_EQ(linesOfSaved("many"), 32'770);
    EXPECT_EQ(machine.dataFile("many.lkl"), many);
    EXPECT_EQ(linesOfSaved("copy"), 32'770);
    machine.says({"'list many", "'listrmv 10000"});
    EXPECT_EQ(linesOfSaved("many"), 32'769);
    EXPECT_EQ(linesOfSaved("copy"), 32'766);
    machine.files.broken = "many.lkl";
    machine.owner("'list many");
    machine.files.broken.clear();
    EXPECT_EQ(linesOfSaved("many"), 32'769);
    machine.owner("'listrmv 10001");
    machine.restart();
    EXPECT_SAID(machine, "<b>1</b> files of the playlist don't fit into the list");
    EXPECT_EQ(linesOfSaved("many"), 32'768);
    machine.restart();
    machine.owner("'listrmv 10002");
    EXPECT_EQ(linesOfSaved("many"), 32'767);
}

TEST_F(Playlists, OfOtherPlayersAndHandsAreLoadedAsMeant) {
    const std::string row = machine.song("rock", "a.mp3"),
                      unix = (machine.disk.path() / "music/rock/a.mp3").native();
    const auto answerTo = [&](const std::string& text) {
        machine.disk.write("music/x.m3u", text);
        return machine.chooseFromOps("loadlis", machine.drive("music/x.m3u"));
    };
    for (const std::string& text : Lines{
             "\xEF\xBB\xBF" + row + "\n", row + "\r", "\r\n" + row + "\r\n  \r\n\r\n", unix + "\n",
             "  " + machine.drive("music/rock/a.mp3") + "\r\n", "#EXTM3U\n#EXTINF:3,A | B\n" + unix,
             "rock/a.mp3\n", "rock\\a.mp3\r\n", "../music/rock/a.mp3\n"}) {
        EXPECT_EQ(answerTo(text), "loaded playlist <b>x.m3u</b>, <b>1</b> files") << text;
        EXPECT_EQ(machine.state().masterList.row(0), row) << text;
    }
    const std::string utf16("\xFF\xFE"
                            "a\0b\0c\0d\0\n\0",
                            12);
    for (const std::size_t cut : {0u, 2u, 3u})
        EXPECT_EQ(answerTo(utf16.substr(cut)),
                  "couldn't load playlist <b>x.m3u</b>:  it is in UTF-16");
    EXPECT_EQ(machine.state().masterList.count(), 1);
}

} // namespace
} // namespace larkspin
