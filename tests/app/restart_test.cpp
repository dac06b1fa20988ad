// What waits when the program restarts ends with its run.
#include "app/program.h"
#include "support/media_machine.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace larkspin {

namespace {

// On two songs, two playlists, two notes and a launcher item.
struct Restarting : MediaMachine {
    Restarting() : MediaMachine({"a.mp3", "b.mp3"}) {
        says({"'save one", "'save two", "'sn mum", "'sn dad"});
        for (const char* name : {"an item", "item 2"})
            owner("'ap " + drive("music/rock/a.mp3") + ", " + name);
        owner("'num 1", 101s);
        owner("'num 2", 101s);
        state().rol = true; // so that the next run has directories to recite, too
        restart();
        mp3s().visible = true;
    }

    // All that could be lost, or come, after the restart.
    Lines kept() {
        const AppState& s = state();
        Lines all{s.playlistTitle, s.mp3z, s.noted, s.appsz, s.numl, s.trigger};
        for (const RowList* list : {&s.masterList, &s.notes})
            std::ranges::copy(rowsOf(*list), std::back_inserter(all));
        for (const auto& file : std::filesystem::recursive_directory_iterator(disk.path()))
            if (!file.path().native().ends_with("larkspin.ini"))
                all.push_back(file.path());
        std::sort(all.begin(), all.end());
        return all;
    }
};

} // namespace

TEST(Restart, HappensOnceThoughItIsAskedForAgainMeanwhile) {
    VirtualMachine machine(Lines{});
    machine.inMessage("restarting", [&] { machine.restart(); });
    machine.restart();
    EXPECT_SAID(machine, "load:  <b>2</b> - mp3s played:  <b>0</b>");
}

TEST(Restart, EndsWhatIsBeingToldOrDone) {
    for (const char* line : {"'tops", "'top 2", "'stats", "'pstat", "'scrpl", "'scrd", "'adv",
                             "'scrn", "'rn m", "'scra", "'load item", "'rmva item", "'list lkl",
                             "'xlist lkl", "'cinfo", "'free c", "'rstart"}) {
        SCOPED_TRACE(line);
        Restarting machine;
        machine.facts.drives["c:\\"] = {40, 20};
        machine.dialogs.answers = {"yes"};
        machine.forget();
        machine.inMessage("", [&] { machine.restart(); });
        machine.owner(line, 20s);
        EXPECT_EQ(machine.allSaid().size(), 4u) << "a line, and three of the restart";
        EXPECT_TRUE(machine.said().starts_with("load:  ")) << machine.said();
        EXPECT_LT(machine.power.asked.size(), 2u);
    }
}

TEST(Restart, EndsTheLoadingFromASlowDisk) {
    Restarting machine;
    machine.disk.write("stick/far.lkl", "");
    machine.slowDisk.spans[machine.drive("stick")] = 3s;
    machine.loop.once(1s, [&] { machine.program->restart(); });
    machine.dialogs.answers = {machine.drive("stick/far.lkl")};
    machine.choose("Command3", "loadlis");
    machine.advance(5s);
    EXPECT_EQ(machine.state().masterList.count(), 2);
    EXPECT_TRUE(machine.said().starts_with("load:  ")) << machine.said();
}

TEST(Restart, DismissesWhatIsOpenWhateverIsAnsweredThen) {
    const Lines cases[] = {// window, list, button or else the delete key, entry, answer
                           {"mp3s", "playlistView", "", "", "yes"},
                           {"mp3s", "playlistView", "renameLabel", "", "new"},
                           {"mp3s", "", "openButton", "", "music/pop/other.mp3"},
                           {"mp3s", "", "Command1", "adfil", "music/pop/other.mp3"},
                           {"mp3s", "", "Command1", "adir", "music/pop"},
                           {"mp3s", "", "Command2", "remstr", "a"},
                           {"mp3s", "", "Command3", "nlis", "yes"},
                           {"mp3s", "", "Command3", "nlis", "no"},
                           {"mp3s", "", "Command3", "loadlis", "data/one.lkl"},
                           {"mp3s", "", "Command3", "savlis", "data/three.lkl"},
                           {"notez", "List2", "", "", "yes"},
                           {"notez", "", "Label2", "", "more"},
                           {"notez", "List2", "Label6", "", "other"},
                           {"appz", "List1", "", "", "yes"},
                           {"appz", "", "Label3", "", "music/pop/other.mp3"},
                           {"'newpl", "", "", "", "yes"},
                           {"'newpl", "", "", "", "no"},
                           {"'xlist lkl", "", "", "", "yes"}};
    for (const Lines& c : cases) {
        const std::string &window = c[0], &list = c[1], &button = c[2], &entry = c[3],
                          &answer = c[4];
        SCOPED_TRACE(testing::PrintToString(c));
        Restarting machine;
        machine.song("pop", "other.mp3");
        const bool isPath = answer.find('/') != answer.npos;
        machine.dialogs.answers = {isPath ? machine.drive(answer) : answer, "more"};
        machine.dialogs.whileOpen = [&] {
            machine.dialogs.whileOpen = [] {};
            machine.program->restart();
        };
        const Lines before = machine.kept();
        if (window[0] == '\'') {
            machine.owner(window);
        } else {
            machine.window(window).visible = true;
            larkspin::press(machine.window(window), list, 0);
            machine.run([&] {
                button.empty() ? pressKey(machine.window(window), list, Key::del)
                               : larkspin::press(machine.window(window), button);
            });
        }
        if (!entry.empty())
            machine.chooseFromPopup(entry);
        machine.advance(5s);
        EXPECT_EQ(machine.kept(), before);
        EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
        EXPECT_TRUE(machine.said().starts_with("load:  ")) << machine.said();
    }
}

} // namespace larkspin
