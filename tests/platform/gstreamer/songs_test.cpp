// Real songs through GStreamer, into a sink that keeps time or into a file that is measured.
#include "support/real_player.h"

#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct PlayerTest : RealPlayer {
    struct Sound {
        double seconds = 0, amplitude = 0, frequency = 0;
    };
    std::string recordingSink() const {
        return "audioconvert ! audioresample ! audio/x-raw,format=S16LE,rate=44100,channels=1 ! "
               "filesink location=" +
               (disk.path() / "sound").native();
    }
    Sound recordedSound() const {
        const std::string bytes = disk.read("sound");
        std::vector<std::int16_t> samples(bytes.size() / 2);
        if (!samples.empty())
            std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
        int peak = 0;
        std::vector<std::size_t> crossings;
        for (std::size_t at = 1; at < samples.size(); ++at) {
            peak = std::max(peak, std::abs(int{samples[at]}));
            if (samples[at - 1] < 0 && samples[at] >= 0)
                crossings.push_back(at);
        }
        Sound sound{static_cast<double>(samples.size()) / 44100, peak / 32768.0, 0};
        if (crossings.size() > 1)
            sound.frequency = static_cast<double>(crossings.size() - 1) * 44100 /
                              static_cast<double>(crossings.back() - crossings.front());
        return sound;
    }
    // Whoever opens the file stands still until this is closed.
    Descriptor held(const char* name) const {
        std::signal(SIGIO, SIG_IGN); // by which it is asked for
        Descriptor file(::open((disk.path() / name).c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_EQ(::fcntl(file.number(), F_SETLEASE, F_WRLCK), 0);
        return file;
    }
    Sound recordSong(PlayerControl& player, const std::string& path) {
        player.Open(path);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        return recordedSound();
    }
};

TEST_F(PlayerTest, PlaysEachFormatToItsEnd) {
    PlayerControl player(loop, playing(clockedSink), tell);
    EXPECT_EQ(player.PlayState(), PlayState::closed);
    for (const char* name : {"a.mp3", "a.wav", "a.wma", "a.mid"}) {
        SCOPED_TRACE(name);
        const std::string path = song(name, 0.3);
        player.Open(path);
        EXPECT_EQ(player.FileName(), path);
        EXPECT_TRUE(reaches(player, PlayState::playing));
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_NEAR(player.Duration(), 0.35, 0.08);
        EXPECT_EQ(player.CurrentPosition(), player.Duration());
    }
    player.Open("");
    EXPECT_EQ(player.PlayState(), PlayState::closed);
    EXPECT_EQ(player.Duration() + player.CurrentPosition(), 0);
}

// Each tells of a picture as large as some seconds of sound.
TEST_F(PlayerTest, PlaysAnMp3WhateverTagsStandAroundIt) {
    const auto number = [](std::size_t value, int bits = 8) { // in four bytes, the highest first
        std::string bytes;
        for (int at = 3; at >= 0; --at)
            bytes += static_cast<char>(value >> (bits * at) & ((1u << bits) - 1));
        return bytes;
    };
    const std::string picture(100'000, 'x'), kind("\0image/png\0\3\0", 13),
        item = littleEndian(100'000, 4) + littleEndian(2, 4) +
               std::string("Cover Art (Front)\0", 18) + picture,
        frame =
            "APIC" + number(kind.size() + picture.size()) + std::string(2, '\0') + kind + picture;
    const auto ape = [&](long flags) {
        return "APETAGEX" + littleEndian(2000, 4) +
               littleEndian(static_cast<long>(item.size()) + 32, 4) + littleEndian(1, 4) +
               littleEndian(flags, 4) + std::string(8, '\0');
    };
    const std::string before = std::string("ID3\3\0\0", 6) + number(frame.size(), 7) + frame,
                      after = ape(0xA0000000) + item + ape(0x80000000),
                      last = "TAGride" + std::string(121, '\0');
    PlayerControl player(loop, playing(fastSink), tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.mp3", 1)));
    const std::string sound = disk.read("a.mp3");
    const double seconds = player.Duration();
    for (const auto& [tags, bytes] : {std::pair("ID3v2", before + sound),
                                      {"ID3v1", sound + last},
                                      {"APE", sound + after},
                                      {"all", before + sound + after + last}}) {
        SCOPED_TRACE(tags);
        disk.write("a.mp3", bytes);
        EXPECT_TRUE(isPlayedToItsEnd(player, drive("a.mp3")));
        EXPECT_NEAR(player.Duration(), seconds, 0.1);
    }
}

TEST_F(PlayerTest, GivesUpTwoSecondsAfterOpeningWhatIsNoSong) {
    PlayerControl player(loop, playing(fastSink), tell);
    std::string noise(5000, '\0');
    for (std::size_t at = 0; at < noise.size(); ++at)
        noise[at] = static_cast<char>(at * at * 31 + at / 7);
    disk.write("garbage.mp3", noise);
    disk.write("empty.mp3", "");
    disk.write("text.wma", "these are words, and no song\n");
    disk.write("pixel.wav", "P6 1 1 255\nabc");
    song("whole.wav", 0.1);
    disk.write("cut.wav", disk.read("whole.wav").substr(0, 45)); // half a sample
    song("whole.mid", 0.1);
    disk.write("cut.mid", disk.read("whole.mid").substr(0, 23));
    fs::create_directory(disk.path() / "directory.mp3");
    ASSERT_TRUE(isPlayedToItsEnd(player, drive("whole.wav")));
    for (const std::string& path :
         {drive("cut.wav"), drive("garbage.mp3"), drive("empty.mp3"), drive("text.wma"),
          drive("pixel.wav"), drive("cut.mid"), drive("directory.mp3"), drive("missing.mp3"),
          std::string("d:\\song.mp3")}) {
        SCOPED_TRACE(path);
        player.Open(path);
        // Before the clock moves, or another process would take it over from that of the good song.
        EXPECT_FALSE(comesTrue([&] { return player.PlayState() == PlayState::stopped; }, 50ms));
        pass(1999ms);
        EXPECT_TRUE(reaches(player, PlayState::waiting));
        EXPECT_FALSE(player.wasGivenUp());
        pass(1ms);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_TRUE(player.wasGivenUp());
        EXPECT_NEAR(player.Duration() + player.CurrentPosition(), 0, 0.001);
    }
    EXPECT_TRUE(isPlayedToItsEnd(player, drive("whole.wav")));
}

TEST_F(PlayerTest, RateChangesTheTimeButNotThePitchAndSurvivesOpen) {
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

TEST_F(PlayerTest, VolumeIsInHundredthsOfADecibelAndMuteApartFromIt) {
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

TEST_F(PlayerTest, PausesSeeksAndStops) {
    PlayerControl player(loop, playing(clockedSink), tell);
    player.Open(song("a.wav", 10));
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() > 3.2; })) << "as it tells itself";
    player.setCurrentPosition(5);
    EXPECT_NEAR(player.CurrentPosition(), 5, 0.05);
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() > 5.05; }));
    player.Pause();
    player.setRate(2);
    EXPECT_TRUE(staysFor(player, PlayState::paused, 100ms));
    const double rest = player.CurrentPosition();
    player.setCurrentPosition(8);
    player.setCurrentPosition(7);
    EXPECT_TRUE(staysFor(player, PlayState::paused, 100ms));
    EXPECT_LT(rest, 5.5);
    EXPECT_NEAR(player.CurrentPosition(), 7, 0.05);
    player.Play();
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() > 7.1; }));
    const auto begin = Clock::now();
    const double position = player.CurrentPosition();
    std::this_thread::sleep_for(200ms);
    player.Stop();
    const std::chrono::duration<double> time = Clock::now() - begin;
    EXPECT_NEAR((player.CurrentPosition() - position) / time.count(), 2, 0.4) << "as set before";
    player.Play();
    EXPECT_TRUE(staysFor(player, PlayState::stopped, 50ms));
    EXPECT_FALSE(player.wasGivenUp());
    player.Open(player.FileName());
    player.setCurrentPosition(100); // while opening: to the end
    EXPECT_TRUE(reaches(player, PlayState::stopped));
}

TEST_F(PlayerTest, WhatIsOrderedWhileItIsBeingOpenedHolds) {
    PlayerControl player(loop, playing(clockedSink), tell);
    for (const char* name : {"a.mp3", "a.mid"}) {
        SCOPED_TRACE(name);
        const std::string path = song(name, 10);
        Descriptor file = held(name);
        player.Open(path);
        player.setRate(2);
        player.setCurrentPosition(7);
        EXPECT_TRUE(staysFor(player, PlayState::waiting, 100ms));
        player.Pause();
        file = {};
        EXPECT_TRUE(reaches(player, PlayState::paused));
        EXPECT_TRUE(staysFor(player, PlayState::paused, 100ms));
        EXPECT_NEAR(player.CurrentPosition(), 7, 0.001);
        player.Play();
        EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() > 7.1; }));
    }
}

TEST_F(PlayerTest, AFileThatIsOpenedLateIsNotTakenForALaterOne) {
    PlayerControl player(loop, playing(fastSink), tell);
    std::vector<Descriptor> files;
    for (const char* name : {"one/a.wav", "two/b.wav"}) {
        fs::create_directory((disk.path() / name).parent_path());
        const std::string path = song(name, files.empty() ? 0.3 : 0.1);
        files.push_back(held(name));
        player.Open(path);
    }
    for (Descriptor& file : files) {
        EXPECT_TRUE(staysFor(player, PlayState::waiting, 100ms));
        file = {};
    }
    EXPECT_TRUE(reaches(player, PlayState::stopped));
    EXPECT_NEAR(player.Duration(), 0.1, 0.001);
}

// Two of these outputs break soon after the seek.
TEST_F(PlayerTest, StaysWhereItIsSetToWhateverBecomesOfItsOutput) {
    const std::string path = song("a.wav", 10);
    for (const std::string output :
         {"", "identity error-after=3 ! ", "identity error-after=4 ! "}) {
        SCOPED_TRACE(output);
        PlayerControl player(loop, playing(output + clockedSink), tell);
        player.Open(path);
        ASSERT_TRUE(comesTrue([&] { return player.CurrentPosition() > 0.25; }));
        player.setCurrentPosition(7);
        player.Pause();
        EXPECT_TRUE(staysFor(player, PlayState::paused, 300ms));
        EXPECT_NEAR(player.CurrentPosition(), 7, 0.001);
        player.Play();
        EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() > 7.2; }));
        EXPECT_LT(player.CurrentPosition(), 9) << "a busy machine looks late";
    }
}

// In each of the songs once: then it is replaced. One that breaks twice needs another process.
TEST_F(PlayerTest, GoesOnWhereItsOutputBreaks) {
    PlayerControl player(loop, playing(std::string("identity error-after=8 ! ") + clockedSink),
                         tell);
    std::set<pid_t> processes;
    for (const char* name : {"a.wav", "b.wav"}) {
        player.Open(song(name, 2));
        double furthest = 0, back = 0;
        EXPECT_TRUE(comesTrue([&] {
            back = std::max(back, furthest - player.CurrentPosition());
            furthest = std::max(furthest, player.CurrentPosition());
            return player.PlayState() == PlayState::stopped;
        }));
        EXPECT_LT(back, 0.1);
        processes.insert(childProcesses().back());
    }
    EXPECT_EQ(processes.size(), 1u);
}

TEST_F(PlayerTest, GoesOnFromWhereItIsSetTo) {
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
        player.setCurrentPosition(4);
        EXPECT_TRUE(staysFor(player, PlayState::paused, 50ms));
        player.Play();
        ASSERT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_NEAR(recordedSound().seconds, 130 * 2 * 1024 / 44100. - 4, 0.15);
        EXPECT_NEAR(recordedSound().frequency, 882, 50); // 441 before it
    }
}

TEST_F(PlayerTest, PlaysOneSoundOfAFileAndPackedSamples) {
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
    // IMA ADPCM, in blocks of 1024 bytes, which are 2041 samples each.
    std::string bytes("RIFF\0\0\0\0WAVEfmt \x14\0\0\0\x11\0\1\0\x44\xAC\0\0\x44\xAC\0\0"
                      "\0\4\4\0\2\0\xF9\7"
                      "data\0\x50\0\0",
                      48);
    for (int block = 0; block < 20; ++block)
        bytes += std::string("\0\0\x40\0", 4) + std::string(1020, '\x80');
    disk.write("a.wav", bytes);
    const Sound sound = recordSong(player, drive("a.wav"));
    EXPECT_NEAR(sound.seconds, 20 * 2041 / 44100., 0.05);
    EXPECT_GT(sound.amplitude, 0.001);
}

TEST_F(PlayerTest, PlaysFilesOfAnyName) {
    PlayerControl player(loop, playing(fastSink), tell);
    song("plain.wav", 0.05);
    for (const char* name : {"a#b?c%41.wav", "'quotes\" & <>.wav", "line\nbreak.wav", "Füße.wav",
                             "песня 歌.wav", "bad\xFF\xC3.wav", " back\\slash|:* .wav"}) {
        SCOPED_TRACE(name);
        fs::copy_file(disk.path() / "plain.wav", disk.path() / name);
        EXPECT_TRUE(isPlayedToItsEnd(player, drive(name)));
        EXPECT_NEAR(player.Duration(), 0.05, 0.001);
    }
}

TEST_F(PlayerTest, AnOlderSongNeverDisturbsANewerOne) {
    PlayerControl player(loop, playing(clockedSink), tell);
    const std::string shorter = song("short.wav", 0.1), longer = song("long.wav", 0.6);
    for (const auto delay : {70ms, 100ms, 130ms}) { // around the end of the shorter one
        SCOPED_TRACE(delay.count());
        for (const std::string& path : {drive("missing.mp3"), longer, shorter})
            player.Open(path);
        std::this_thread::sleep_for(delay);
        player.Open(longer);
        ASSERT_TRUE(reaches(player, PlayState::playing));
        EXPECT_TRUE(staysFor(player, PlayState::playing, 150ms));
        EXPECT_NEAR(player.Duration(), 0.6, 0.001);
    }
    EXPECT_TRUE(reaches(player, PlayState::stopped));
}

TEST_F(PlayerTest, GoesOnSilentlyWithoutTheSoundDevice) {
    const std::string path = song("a.wav", 0.5);
    for (const char* sink : {"identity error-after=2 ! fakesink sync=true", "nosuchsink"}) {
        SCOPED_TRACE(sink);
        PlayerControl player(loop, playing(sink), tell);
        told.clear();
        for (int round = 0; round < 2; ++round) {
            const auto begin = Clock::now();
            player.Open(path);
            EXPECT_TRUE(reaches(player, PlayState::playing));
            EXPECT_TRUE(reaches(player, PlayState::stopped));
            EXPECT_GT(Clock::now() - begin, 500ms);
            EXPECT_NEAR(player.Duration(), 0.5, 0.001);
        }
        EXPECT_EQ(told, "larkspin: no sound device, songs play silently\n");
    }
}

} // namespace
} // namespace larkspin
