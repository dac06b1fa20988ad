// How long it is silent from the last sample of a song to the first of the next, on a sound server
// whose device is recorded. The mode's tick comes on top of that: here the next song is started as
// soon as the last one reads stopped.
#include "owners_road.h"
#include "platform/player/player_control.h"
#include "platform/posix/drive_paths.h"
#include "support/child.h"
#include "support/made_songs.h"
#include "support/temp_directory.h"
#include "works.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds patience = 20s, pauseAfter = 200ms;
constexpr double budget = 0.050;
constexpr double recordedRate = 44100;
constexpr int songs = 3;

// With one device, which nobody hears but the recorder.
class SoundServer {
public:
    SoundServer(const TempDirectory& disk, EventLoop& loop) : disk_(disk) {
        const std::vector<std::string> variables{"HOME=" + disk.path().native(),
                                                 "XDG_RUNTIME_DIR=" + disk.path().native()};
        ::setenv("XDG_RUNTIME_DIR", disk.path().c_str(), 1);
        server_ = Child::start("pulseaudio", variables,
                               {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                                "--log-level=error", "-L", "module-null-sink sink_name=device",
                                "-L", "module-native-protocol-unix"});
        const Nanoseconds latest = loop.now() + patience;
        while (!std::filesystem::exists(disk.path() / "pulse/native") && loop.now() < latest)
            loop.waitUntil(loop.now() + 10ms);
        recorder_ =
            Child::start("parec", variables,
                         {"--device=device.monitor", "--raw", "--format=s16le", "--rate=44100",
                          "--channels=1", "--latency-msec=30", (disk.path() / "sound").native()});
    }
    ~SoundServer() {
        for (const auto* child : {&recorder_, &server_})
            if (*child)
                ::kill((*child)->id(), SIGKILL);
        ::unsetenv("XDG_RUNTIME_DIR");
    }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    // From the first sample that is loud to the last one, in seconds, since it was asked last.
    double soundedFor() {
        const std::string bytes = disk_.read("sound");
        std::vector<std::int16_t> samples((bytes.size() - heard_) / 2);
        std::memcpy(samples.data(), bytes.data() + heard_, samples.size() * 2);
        heard_ += samples.size() * 2;
        int peak = 0;
        for (const std::int16_t sample : samples)
            peak = std::max(peak, std::abs(int{sample}));
        const auto isLoud = [peak](int sample) { return std::abs(sample) > peak / 4; };
        const auto first = std::ranges::find_if(samples, isLoud);
        const auto last = std::find_if(samples.rbegin(), samples.rend(), isLoud).base();
        return static_cast<double>(std::max<std::ptrdiff_t>(last - first, 0)) / recordedRate;
    }

private:
    const TempDirectory& disk_;
    std::unique_ptr<Child> server_, recorder_;
    std::size_t heard_ = 0;
};

// Plays the song so many times, one after the other, and waits until all of it is recorded.
void play(OwnersRoad& road, PlayerControl& player, const std::filesystem::path& song, int times) {
    const Nanoseconds latest = road.loop.now() + patience;
    for (int time = 0; time < times; ++time) {
        player.Open(drivePath(song.native()));
        while (player.PlayState() != PlayState::stopped && road.loop.now() < latest)
            road.loop.waitUntil(road.loop.now() + 1ms);
    }
    road.loop.waitUntil(road.loop.now() + pauseAfter);
}

// Of all its samples, in seconds: some files don't tell it right.
double lengthOf(OwnersRoad& road, const TempDirectory& disk, const std::filesystem::path& song) {
    const std::string sink = "audioconvert ! audioresample ! "
                             "audio/x-raw,format=S16LE,rate=44100,channels=1 ! filesink location=" +
                             (disk.path() / "samples").native();
    PlayerControl player(
        road.loop,
        {.program = LARKSPIN_PLAYER, .arguments = {sink, disk.path().native()}, .disk = road.disk},
        [](const std::string&) {});
    play(road, player, song, 1);
    return static_cast<double>(disk.read("samples").size()) / 2 / recordedRate;
}

void gap(benchmark::State& state, const std::string& type) {
    const TempDirectory disk;
    OwnersRoad road;
    SoundServer server(disk, road.loop);
    const auto song = disk.path() / ("tone" + type);
    if (!makeSong(song, 1))
        state.SkipWithError("no song made");
    const double length = lengthOf(road, disk, song);
    PlayerControl player(road.loop, {.program = LARKSPIN_PLAYER, .disk = road.disk},
                         [](const std::string&) {});
    const auto soundedFor = [&](int times) {
        play(road, player, song, times);
        return server.soundedFor();
    };
    soundedFor(1); // player and recorder are still starting
    for (auto _ : state) {
        const double one = soundedFor(1), all = soundedFor(songs);
        state.SetIterationTime(std::max((all - one) / (songs - 1) - length, 0.0));
        if (one == 0 || all == 0)
            state.SkipWithError("isn't heard");
    }
}

} // namespace

void addGapWorks() {
    for (const std::string type : {".mp3", ".wma", ".mid", ".flac", ".opus", ".m4a"})
        addWork("silence between two songs, " + type, budget,
                [=](benchmark::State& state) { gap(state, type); })
            ->UseManualTime()
            ->Iterations(1)
            ->Repetitions(3);
}

} // namespace larkspin
