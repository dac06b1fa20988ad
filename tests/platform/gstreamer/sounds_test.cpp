// What is heard of real songs: they are played into a file, which is measured.
#include "platform/gstreamer/recording.h"

#include <cmath>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

using SoundTest = RecordingTest;

TEST_F(SoundTest, RateChangesTheTimeButNotThePitchAndSurvivesOpen) {
    PlayerControl player(loop, playing(recordingSink()), tell);
    const std::string path = song("a.wav", 1), inStereo = song("a.mid", 1);
    player.setRate(2);
    player.setRate(0);
    player.setRate(-1);
    for (int round = 0; round < 2; ++round) {
        EXPECT_NEAR(recordSong(player, inStereo).seconds, 0.5, 0.06);
        const Sound fast = recordSong(player, path);
        EXPECT_NEAR(fast.seconds, 0.5, 0.06);
        EXPECT_NEAR(fast.frequency, 441, 1);
        EXPECT_NEAR(fast.amplitude, 0.75, 0.005);
    }
    player.setRate(0.5);
    EXPECT_NEAR(recordSong(player, path).seconds, 2, 0.1);
    player.setRate(1);
    EXPECT_NEAR(recordSong(player, path).seconds, 1, 0.01);
}

TEST_F(SoundTest, VolumeIsInHundredthsOfADecibelAndMuteApartFromIt) {
    PlayerControl player(loop, playing(recordingSink()), tell);
    const std::string path = song("a.wav", 0.1);
    player.setVolume(-1500);
    EXPECT_NEAR(recordSong(player, path).amplitude, 0.75 * std::pow(10, -0.75), 0.005);
    player.setMute(true);
    player.setVolume(0);
    EXPECT_EQ(recordSong(player, path).amplitude, 0);
    player.setMute(false);
    EXPECT_NEAR(recordSong(player, path).amplitude, 0.75, 0.005);
}

TEST_F(SoundTest, GoesOnFromWhereItIsSetTo) {
    const std::string tones = "concat name=tones ! audioconvert ! audio/x-raw,rate=44100,"
                              "channels=2 ! ",
                      both = " audiotestsrc freq=441 num-buffers=130 ! tones."
                             " audiotestsrc freq=882 num-buffers=130 "
                             "timestamp-offset=3018594104 ! tones.";
    PlayerControl player(loop, playing(recordingSink()), tell);
    for (const auto& [name, encoder] : {std::pair("a.wav", "wavenc"),
                                        {"a.mp3", "lamemp3enc"},
                                        {"a.wma", "avenc_wmav2 ! avmux_asf"}}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(makeFile(tones + encoder + intoFile(disk.path() / name) + both));
        player.Open(drive(name));
        player.Pause();
        ASSERT_TRUE(reaches(player, PlayState::paused));
        player.setCurrentPosition(5.9); // it is read to its end there
        EXPECT_TRUE(staysFor(player, PlayState::paused, 50ms));
        player.setCurrentPosition(4);
        EXPECT_TRUE(staysFor(player, PlayState::paused, 50ms));
        player.Play();
        ASSERT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_NEAR(recordedSound().seconds, 130 * 2 * 1024 / 44100. - 4, 0.15);
        EXPECT_NEAR(recordedSound().frequency, 882, 50); // 441 before it
        EXPECT_NEAR(recordSong(player, drive(name)).seconds, 130 * 2 * 1024 / 44100., 0.08);
    }
}

TEST_F(SoundTest, PlaysOneSoundOfAFileAndPackedSamples) {
    PlayerControl player(loop, playing(recordingSink()), tell);
    for (const std::string encoder : {"alawenc", "mulawenc"}) {
        ASSERT_TRUE(makeFile("audiotestsrc freq=441 num-buffers=43 ! audio/x-raw,rate=44100,"
                             "channels=1 ! " +
                             encoder + " ! wavenc" + intoFile(disk.path() / "a.wav")));
        EXPECT_NEAR(recordSong(player, drive("a.wav")).frequency, 441, 2) << encoder;
    }
    // The first sound of a file that also holds a film, and another sound.
    const std::string tone = " audiotestsrc num-buffers=43 freq=",
                      wma = " ! audio/x-raw,rate=44100,channels=1 ! avenc_wmav2 ! all.";
    ASSERT_TRUE(makeFile("videotestsrc num-buffers=2 ! video/x-raw,width=32,height=32 ! avenc_wmv1 "
                         "! avmux_asf name=all" +
                         intoFile(disk.path() / "a.wma") + tone + "441" + wma + tone + "882" +
                         wma));
    EXPECT_NEAR(recordSong(player, drive("a.wma")).frequency, 441, 20);
    disk.write("a.wav", packedWav());
    const Sound sound = recordSong(player, drive("a.wav"));
    EXPECT_NEAR(sound.seconds, 20 * 2041 / 44100., 0.0001);
    EXPECT_GT(sound.amplitude, 0.001);
}

// Notes of half a second, the second one an octave above the first.
TEST_F(SoundTest, PlaysMidiAsItsMessagesSay) {
    const std::string flute("\0\xC0\x4A", 3), bend("\0\xE0\0\x7F", 4),
        first("\0\x90\x45\x7F\x32\x80\x45\0", 8), second("\0\x90\x51\x7F\x32\x80\x51\0", 8),
        soft("\0\xB0\7\x20", 4), reset("\0\xF0\5\x7E\x7F\x09\1\xF7", 8);
    const struct {
        const char* what;
        std::string track;
        double from, frequency;
        bool isSoft = false;
    } cases[] = {{"a note", flute + first, 0, 440},
                 {"with a bend", flute + bend + first, 0, 494},
                 {"softly", flute + soft + first, 0, 440, true},
                 {"two notes", flute + first + second, 0, 880},
                 {"from the second on", flute + first + second, 0.5, 880},
                 {"from within the first on", flute + first + second, 0.25, 880},
                 {"softly from there on", flute + soft + first + second, 0.25, 880, true},
                 {"with what comes later", flute + first + second + soft, 0.25, 880},
                 {"with a long text", flute + soft + reset + flute + first, 0, 440}};
    PlayerControl player(loop, playing(recordingSink()), tell);
    for (const auto& [what, track, from, frequency, isSoft] : cases) {
        SCOPED_TRACE(what);
        disk.write("a.mid", std::string("MThd\0\0\0\6\0\0\0\1\xE7\4MTrk\0\0\0", 21) +
                                static_cast<char>(track.size()) + track);
        player.Open(drive("a.mid"));
        player.Pause();
        EXPECT_TRUE(reaches(player, PlayState::paused));
        player.setCurrentPosition(from);
        EXPECT_TRUE(staysFor(player, PlayState::paused, 20ms));
        player.Play();
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_NEAR(recordedSound().frequency, frequency, 4);
        EXPECT_NEAR(recordedSound().amplitude, isSoft ? 0 : 0.05, 0.02);
    }
}

} // namespace
} // namespace larkspin
