#include "app/program.h"
#include "support/media_machine.h"

#include <algorithm>

namespace larkspin {

// On a list of ra.mp3 and rb.mp3, of which the second can't be played.
struct SongFailuresTest : testing::Test {
    SongFailuresTest() {
        machine.player.lengths.erase(machine.drive("music/rock/rb.mp3"));
        machine.player.whyUnplayable = "it is damaged";
    }
    RemoteControl& remote() { return machine.program->playback.remote; }

    MediaMachine machine{Lines{"ra.mp3", "rb.mp3"}};
};

TEST_F(SongFailuresTest, AreToldOnceHoweverTheSongWasStarted) {
    const auto press = [this](const char* name) { machine.press(name); };
    const std::tuple<const char*, Lines, Task> ways[] = {
        {"'num", {"'num 2"}, {}},
        {"'play with a text", {"'play rb"}, {}},
        {"'play", {"'num 2", "'stop", "'play"}, {}},
        {"'next", {"'next"}, {}},
        {"'pre", {"'pre"}, {}},
        {"a double click", {}, [this] { machine.pressTwice("playlistView", 1); }},
        {"a button", {}, [&] { press("nextButton"); }},
        {"the play button", {"'num 2", "'stop"}, [&] { press("playButton"); }},
        {"the open box", {}, [&] { press("openButton"); }},
        {"a remote's next", {}, [this] { remote().next(); }},
        {"a remote's play", {"'num 2", "'stop"}, [this] { remote().play(); }},
        {"continuous play", {"'cont", "'pos 1:39"}, {}},
        {"a choice that holds shuffle", {"'shuffle", "'num 2", "'play r", "'view"}, {}},
        {"a pause", {"'num 2", "'pause"}, {}}};
    for (const auto& [what, lines, hand] : ways) {
        SCOPED_TRACE(what);
        machine.says({"'contoff", "'soff", "'num 1"});
        machine.dialogs.answers = {machine.drive("music/rock/rb.mp3")};
        machine.says(lines);
        machine.forget();
        if (hand)
            machine.run(hand);
        machine.advance(5s);
        EXPECT_EQ(std::exchange(machine.room.told, {}),
                  Lines{"rb can't be played:  it is damaged"});
        const RemoteView seen = remote().view();
        const bool isHeard = seen.name == "ra";
        EXPECT_EQ(seen.status == RemoteView::Status::playing, isHeard);
        EXPECT_EQ(machine.shown("playButton") == playingMark, isHeard);
        EXPECT_EQ(machine.state().pauseMark, unpausedMark);
        EXPECT_EQ(machine.saidWithin(10s), Lines{});
    }
}

// The owner may be away while a mode goes through a list.
TEST_F(SongFailuresTest, ComeInABoxInSilenceAndDontPileUp) {
    machine.player.lengths.clear();
    machine.says({"'cont", "'silent"});
    machine.dialogs.whileOpen = [this] {
        machine.dialogs.whileOpen = [] {};
        machine.loop.waitUntil(machine.loop.now() + 31s);
        machine.hear("'stop");
    };
    machine.forget();
    machine.owner("'num 2", 60s);
    const std::string a = "ra can't be played:  it is damaged",
                      b = "rb can't be played:  it is damaged";
    std::string others;
    for (int round = 0; round < 5; ++round)
        others += a + '\n' + b + '\n';
    EXPECT_EQ(machine.dialogs.boxes, (Lines{b, others + "and 5 more"}));
}

} // namespace larkspin
