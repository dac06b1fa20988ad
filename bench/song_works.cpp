// How soon a song sounds: the first one, for which the player has to be started, and the next.
#include "owners_road.h"
#include "platform/player/player_control.h"
#include "platform/posix/drive_paths.h"
#include "support/made_songs.h"
#include "support/temp_directory.h"
#include "works.h"

#include <cstdlib>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds patience = 20s;

// A sink without a device takes the sound as a device would.
constexpr const char* sink = "fakesink sync=true";

bool sounds(OwnersRoad& road, PlayerControl& player, const std::string& path) {
    player.Open(path);
    const auto isHeard = [&] {
        return player.PlayState() == PlayState::playing && player.CurrentPosition() > 0;
    };
    const Nanoseconds latest = road.loop.now() + patience;
    while (!isHeard() && road.loop.now() < latest)
        road.loop.waitUntil(road.loop.now() + 1ms);
    return isHeard();
}

void firstSound(benchmark::State& state, const std::string& type, bool isFirst) {
    const TempDirectory disk;
    OwnersRoad road;
    const auto song = disk.path() / ("tone" + type);
    const std::string path = drivePath(song.native());
    if (!makeSong(song, 10))
        state.SkipWithError("no song made");
    const auto newPlayer = [&] {
        return std::make_unique<PlayerControl>(
            road.loop,
            PlayerControl::Player{LARKSPIN_PLAYER, {sink, disk.path().native()}, road.disk},
            [](const std::string&) {});
    };
    auto player = newPlayer();
    bool isHeard = sounds(road, *player, path); // fills what the player keeps for all its users
    for (auto _ : state) {
        if (isFirst)
            player = newPlayer();
        timed(state, [&] { isHeard = isHeard && sounds(road, *player, path); });
    }
    if (!isHeard)
        state.SkipWithError("doesn't sound");
}

} // namespace

void addSongWorks() {
    static const TempDirectory cache;
    ::setenv("XDG_CACHE_HOME", cache.path().c_str(), 1);
    for (const std::string type :
         {".mp3", ".wav", ".wma", ".mid", ".flac", ".ogg", ".opus", ".m4a"})
        for (const bool isFirst : {true, false})
            addWork((isFirst ? "first sound, " : "next sound, ") + type, 0.150,
                    [=](benchmark::State& state) { firstSound(state, type, isFirst); })
                ->UseManualTime()
                ->Iterations(3);
}

} // namespace larkspin
