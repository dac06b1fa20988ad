// A newcomer's way from nothing to his first song, by the mouse alone and by the three lines that
// he is shown; how it ends is asked at the bus, where other programs see what plays.
#include "support/desktop_aloud.h"
#include "support/made_songs.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {
namespace {

struct Newcomer : DesktopAloud {
    Newcomer() {
        std::filesystem::create_directories(disk.path() / "Music/rock");
        EXPECT_TRUE(makeSong(disk.path() / "Music/rock/Who Made Who?.mp3", 60));
        program = start(server->display());
        click("push button", "OK");
    }
    // "" where it isn't told.
    std::string onTheBus(const char* property) const {
        Bus desktop(bus);
        char* told = nullptr;
        sd_bus_get_property_string(desktop.raw(), "org.mpris.MediaPlayer2.larkspin",
                                   "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Player",
                                   property, nullptr, &told);
        const std::string value = told ? told : "";
        std::free(told);
        return value;
    }
    void expectFirstSong() const {
        EXPECT_TRUE(hears("label", "in play: Who Made Who?"));
        EXPECT_TRUE(comes([&] { return onTheBus("PlaybackStatus") == "Playing"; }));
        EXPECT_TRUE(hears("list item", "Who Made Who?, in play"));
        EXPECT_TRUE(comes([&] { return !find("filler", "first steps"); })) << "it has been done";
    }
};

TEST_F(Newcomer, IsLedToHisFirstSongByTheMouseAlone) {
    click("push button", "add my music folder");
    EXPECT_TRUE(hears("combo box", disk.path() / "Music")) << "the desktop's music folder";
    click("push button", "Choose");
    EXPECT_TRUE(hearsText("what is said", "added 1 song from ~/Music"));
    click("push button", "play");
    expectFirstSong();
}

TEST_F(Newcomer, IsLedThereByTheThreeLinesThatHeReads) {
    const std::pair<std::string, const char*> steps[] = {
        {"looks for songs there", "found 1"},
        {"takes what was found into the list", "transferring 1"},
        {"plays any of them", "Who Made Who?"}};
    std::vector<std::string> lines; // which go with the first song
    for (const auto& [does, answer] : steps) {
        EXPECT_TRUE(hears("label", does));
        for (const Heard& each : look())
            if (each.role == "push button" && each.name.ends_with(", " + does))
                lines.push_back(each.name.substr(0, each.name.size() - does.size() - 2));
    }
    ASSERT_EQ(lines.size(), 3U);
    click("text", "line to say");
    for (std::size_t step = 0; step < lines.size(); ++step) {
        type(lines[step]);
        EXPECT_TRUE(hearsText("what is said", steps[step].second)) << lines[step];
    }
    expectFirstSong();
}

} // namespace
} // namespace larkspin
