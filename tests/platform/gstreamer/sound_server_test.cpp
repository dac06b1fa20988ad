// Songs on a real sound server, one of the test's own with two devices that nobody hears: what they
// sound there is recorded and measured.
#include "platform/gstreamer/recording.h"
#include "support/child.h"

#include <csignal>
#include <filesystem>
#include <fstream>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr const char* silently = "larkspin: no sound device, songs play silently\n";

struct SoundServerTest : RecordingTest {
    SoundServerTest() {
        for (const char* directory : {"XDG_RUNTIME_DIR", "HOME"})
            ::setenv(directory, disk.path().c_str(), 1);
        ::unsetenv("PULSE_SERVER");
        fs::create_directories(disk.path() / ".config/pulse");
        disk.write(".config/pulse/client.conf", "autospawn = no\n");
    }
    ~SoundServerTest() override {
        end(recorder);
        end(server);
        ::unsetenv("XDG_RUNTIME_DIR");
        SetUpTestSuite();
    }

    static std::string asks(const std::vector<std::string>& question) {
        return Child::start("pactl", {}, question)->rest(longest);
    }
    static void end(std::unique_ptr<Child>& child) {
        if (child)
            ::kill(child->id(), SIGKILL);
        child.reset();
    }
    void startServer() {
        server =
            Child::start("pulseaudio", {},
                         {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                          "module-native-protocol-unix", "-L", "module-null-sink sink_name=first",
                          "-L", "module-null-sink sink_name=second"});
        ASSERT_TRUE(comesTrue([&] { return asks({"info"}).find("Default Sink") != npos; }));
        listensTo("first");
    }
    // What that device sounds is recorded from now on, until another one's is.
    void listensTo(const std::string& sink) {
        asks({"set-default-sink", sink});
        end(recorder);
        disk.write("sound", "");
        recorder = Child::start("parec", {},
                                {"--device=" + sink + ".monitor", "--raw", "--format=s16le",
                                 "--rate=44100", "--channels=1", "--latency-msec=30",
                                 (disk.path() / "sound").native()});
    }
    PlayerControl::Player onDevice() {
        auto player = playing();
        player.arguments.clear();
        return player;
    }

    // Within the last quarter of a second.
    Sound heard() const {
        constexpr std::size_t most = recordedRate / 4;
        const std::size_t all = fs::file_size(disk.path() / "sound") / 2,
                          count = std::min(all, most);
        std::vector<std::int16_t> samples(count);
        std::ifstream(disk.path() / "sound")
            .seekg(static_cast<std::streamoff>((all - count) * 2))
            .read(reinterpret_cast<char*>(samples.data()), static_cast<std::streamsize>(count * 2));
        return measured(samples);
    }
    bool isHeard(double frequency) const { return std::abs(heard().frequency - frequency) < 3; }
    bool hears(double frequency) {
        return comesInTime([&] { return isHeard(frequency); }, 2ms);
    }
    // The tone from that place on, which lasts for two seconds: it sounds again when a busy machine
    // has missed it.
    bool hearsFrom(double place, double frequency, PlayerControl& player, const std::string& path) {
        double position = 10;
        return comesInTime(
            [&] {
                if (position > place + 1.4) {
                    player.Open(path);
                    player.setCurrentPosition(place);
                }
                position = player.CurrentPosition();
                return isHeard(frequency);
            },
            2ms);
    }
    bool leavesNoOtherPlayer() { // beside the server, the recorder and the one at work
        return comesInTime([&] { return childProcesses().size() == before.size() + 3; }, 100ms);
    }
    bool hearsNothing() {
        return comesInTime([&] { return heard().amplitude < 0.01; }, 2ms);
    }

    static constexpr auto npos = std::string::npos;
    static constexpr std::chrono::milliseconds longest{10'000};
    std::unique_ptr<Child> server, recorder;
};

TEST_F(SoundServerTest, EachKindOfSongIsHeardAsItWasMade) {
    startServer();
    PlayerControl player(loop, onDevice(), tell);
    player.Open(song("a.mid", 4));
    EXPECT_TRUE(hears(440));
    player.Stop();
    EXPECT_TRUE(hearsNothing());
    for (const auto& [name, encoder] :
         {std::pair("a.wav", "wavenc"),
          {"a.mp3", "lamemp3enc"},
          {"a.wma", "avenc_wmav2 ! avmux_asf"},
          {"a.flac", "flacenc"},
          {"a.ogg", "vorbisenc ! oggmux"},
          {"a.opus", "opusenc ! oggmux"},
          {"a.m4a", "avenc_aac ! aacparse ! mp4mux"},
          {"lossless.m4a", "avenc_alac ! mp4mux"},
          {"a.aac", "avenc_aac ! aacparse ! audio/mpeg,stream-format=adts"},
          {"a.wv", "wavpackenc"},
          {"a.mpc", "mpcenc --silent $in $out 2>&1"},
          {"a.aiff", "avmux_aiff"}}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(makeTones(disk.path() / name, encoder));
        EXPECT_TRUE(hearsFrom(0, 441, player, drive(name)));
        EXPECT_NEAR(heard().amplitude, 0.75, 0.04);
        EXPECT_TRUE(hearsFrom(2.2, 882, player, drive(name)));
        player.Stop();
        EXPECT_TRUE(hearsNothing());
    }
    EXPECT_EQ(told, "");
}

TEST_F(SoundServerTest, ASongGoesOnWhenTheServerIsBack) {
    PlayerControl player(loop, onDevice(), tell);
    player.Open(song("a.wav", 60));
    EXPECT_TRUE(comesInTime([&] { return told == silently; }, 2ms));
    for (const char* all : {"", silently}) {
        const double earlier = player.CurrentPosition();
        startServer();
        EXPECT_TRUE(hears(441));
        EXPECT_EQ(told, std::string(silently) + all);
        const double place = player.CurrentPosition();
        EXPECT_GT(place, earlier + 0.1);
        end(recorder);
        end(server);
        EXPECT_TRUE(comesInTime([&] { return player.CurrentPosition() > place + 1; }, 2ms));
        EXPECT_EQ(player.PlayState(), PlayState::playing);
    }
    EXPECT_EQ(told, std::string(silently) + silently + silently) << "once for each loss";
    player.Pause();
    const double place = player.CurrentPosition();
    startServer();
    EXPECT_TRUE(comesInTime(
        [&] {
            EXPECT_EQ(player.PlayState(), PlayState::paused);
            return asks({"list", "short", "sink-inputs"}) != "";
        },
        50ms));
    EXPECT_NEAR(player.CurrentPosition(), place, 0.3) << "it was paused a little later";
    player.Play();
    EXPECT_TRUE(hears(441));
    EXPECT_NEAR(player.CurrentPosition(), place, 2);
    EXPECT_TRUE(leavesNoOtherPlayer());
    EXPECT_EQ(lost, "");
}

TEST_F(SoundServerTest, ASongThatEndsWhileADeviceIsLookedForIsOver) {
    PlayerControl player(loop, onDevice(), tell);
    player.Open(song("a.wav", 4));
    EXPECT_TRUE(comesInTime([&] { return told == silently; }, 2ms));
    startServer();
    pass(250ms); // the next look begins
    EXPECT_TRUE(reaches(player, PlayState::stopped));
    pass(250ms); // and has found it by now
    EXPECT_EQ(player.PlayState(), PlayState::stopped);
}

TEST_F(SoundServerTest, AServerThatHangsHoldsNothingUp) {
    startServer();
    PlayerControl player(loop, onDevice(), tell);
    ::kill(server->id(), SIGSTOP); // before the device can be opened
    player.Open(song("a.wav", 60));
    EXPECT_TRUE(comesInTime([&] { return player.CurrentPosition() > 0.5; }, 2ms));
    EXPECT_TRUE(comesInTime([&] { return told == silently; }, 2ms)) << told;
    ::kill(server->id(), SIGCONT);
    EXPECT_TRUE(hears(441));
    player.Pause();
    pass(10s); // one that breaks sooner isn't looked for at once
    EXPECT_TRUE(hearsNothing());
    player.Play();
    const double place = player.CurrentPosition();
    EXPECT_TRUE(hears(441));
    const std::string before = told; // a busy server may have lost it once more
    end(recorder);
    ::kill(server->id(), SIGSTOP); // while it sounds
    EXPECT_TRUE(comesInTime([&] { return !lost.empty(); }, 2ms));
    EXPECT_GT(player.CurrentPosition(), place) << "though nobody has asked for it meanwhile";
    EXPECT_TRUE(comesInTime([&] { return player.CurrentPosition() > place + 2; }, 2ms));
    player.Open(song("b.wav", 60));
    EXPECT_TRUE(comesInTime([&] { return player.CurrentPosition() > 0.5; }, 2ms));
    EXPECT_TRUE(comesInTime([&] { return told == before + silently; }, 2ms)) << told;
    ::kill(server->id(), SIGCONT);
    listensTo("first");
    EXPECT_TRUE(hears(441));
    EXPECT_EQ(player.PlayState(), PlayState::playing);
    EXPECT_TRUE(leavesNoOtherPlayer());
}

TEST_F(SoundServerTest, EachSongIsAsLoudAsTheLastWhateverTheMixerShows) {
    startServer();
    PlayerControl player(loop, onDevice(), tell);
    player.setVolume(-602);                       // half the amplitude
    for (const char* name : {"a.wav", "b.wav"}) { // one over the other
        player.Open(song(name, 60));
        EXPECT_TRUE(comesInTime([&] { return player.CurrentPosition() > 1; }, 2ms));
        EXPECT_TRUE(hears(441));
        EXPECT_NEAR(heard().amplitude, 0.375, 0.02);
        EXPECT_NE(asks({"list", "sink-inputs"}).find(" 100% "), npos);
    }
    player.setMute(true);
    EXPECT_TRUE(hearsNothing());
    player.Open(song("c.wav", 60));
    EXPECT_TRUE(comesInTime([&] { return player.CurrentPosition() > 1; }, 2ms));
    EXPECT_TRUE(hearsNothing());
}

TEST_F(SoundServerTest, ASongFollowsTheDefaultDeviceUnderItsName) {
    startServer();
    PlayerControl player(loop, onDevice(), tell);
    player.Open(song("Night ride.wav", 60));
    EXPECT_TRUE(hears(441));
    const std::string shown = asks({"list", "sink-inputs"});
    EXPECT_NE(shown.find("application.name = \"larkspin\"\n"), npos) << shown;
    EXPECT_NE(shown.find("media.name = \"Night ride\"\n"), npos) << shown;
    listensTo("second");
    EXPECT_TRUE(hears(441));
    listensTo("first");
    EXPECT_TRUE(hears(441));
    EXPECT_EQ(told, "");
}

} // namespace
} // namespace larkspin
