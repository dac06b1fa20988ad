// What waits when the program restarts ends with its run.
#include "app/program.h"
#include "support/media_machine.h"

#include <algorithm>
#include <filesystem>

namespace larkspin {

namespace {

// On two songs, two playlists, two notes and a launcher item.
struct Restarting : MediaMachine {
    Restarting() : MediaMachine({"a.mp3", "b.mp3"}) {
        for (const char* line : {"'save one", "'save two", "'sn mum", "'sn dad"})
            owner(line);
        owner("'ap " + drive("music/rock/a.mp3") + ", an item");
        owner("'num 1", 101s);
        owner("'num 2", 101s);
        state().rol = true; // so that the next run has directories to recite, too
        restart();
        mp3s().visible = true;
    }

    // All that could be lost, or come, after the restart.
    Lines kept() {
        Lines all{state().playlistTitle,
                  state().mp3z,
                  state().noted,
                  state().appsz,
                  state().numl,
                  state().trigger,
                  std::to_string(state().masterList.count())};
        for (int row = 0; row < state().masterList.count(); ++row)
            all.emplace_back(state().masterList.row(row));
        for (int row = 0; row < state().notes.count(); ++row)
            all.emplace_back(state().notes.row(row));
        for (const auto& file : std::filesystem::recursive_directory_iterator(disk.path()))
            if (!file.path().native().ends_with("larkspin.ini"))
                all.push_back(file.path());
        std::sort(all.begin(), all.end());
        return all;
    }
};

} // namespace

TEST(Restart, EndsWhatIsBeingRecited) {
    for (const char* line : {"'tops", "'top 2", "'stats", "'pstat", "'scrpl", "'scrd", "'adv"}) {
        SCOPED_TRACE(line);
        Restarting machine;
        machine.loop.once(100ms, [&] { machine.program->restart(); });
        machine.owner(line, 20s);
        EXPECT_TRUE(machine.said().starts_with("load:  ")) << machine.said();
    }
}

TEST(Restart, EndsTheLoadingFromASlowDisk) {
    Restarting machine;
    machine.disk.write("stick/far.lkl", "");
    machine.slowDisk.spans[machine.drive("stick")] = 3s;
    machine.loop.once(1s, [&] { machine.program->restart(); });
    machine.dialogs.answers = {machine.drive("stick/far.lkl")};
    machine.press("Command3");
    machine.chooseFromPopup("loadlis");
    machine.advance(5s);
    EXPECT_EQ(machine.state().masterList.count(), 2);
    EXPECT_TRUE(machine.said().starts_with("load:  ")) << machine.said();
}

TEST(Restart, DismissesWhatIsOpenWhateverIsAnsweredThen) {
    struct Case {
        std::string window, list, button, entry, answer; // no button: the delete key
    };
    const Case cases[] = {{"mp3s", "playlistView", "", "", "yes"},
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
    for (const auto& [window, list, button, entry, answer] : cases) {
        SCOPED_TRACE(window + ' ' + list + ' ' + button + ' ' + entry + ' ' + answer);
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
            machine.run([&, &of = window, &rows = list, &pressed = button] {
                pressed.empty() ? pressKey(machine.window(of), rows, Key::del)
                                : larkspin::press(machine.window(of), pressed);
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
