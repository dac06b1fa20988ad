// Real songs through GStreamer, into a sink that keeps time.
#include "support/real_player.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <set>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct PlayerTest : RealPlayer {
    // Whoever opens the file stands still until this is closed.
    Descriptor held(const char* name) const {
        std::signal(SIGIO, SIG_IGN); // by which it is asked for
        Descriptor file(::open((disk.path() / name).c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_EQ(::fcntl(file.number(), F_SETLEASE, F_WRLCK), 0);
        return file;
    }
};

TEST_F(PlayerTest, PlaysEachFormatToItsEnd) {
    PlayerControl player(loop, playing(clockedSink), tell);
    EXPECT_EQ(player.PlayState(), PlayState::closed);
    std::vector<pid_t> processes;
    for (const char* name : {"a.mp3", "a.wav", "a.wma", "a.mid"}) {
        SCOPED_TRACE(name);
        const std::string path = song(name, 0.3);
        player.Open(path);
        EXPECT_EQ(player.FileName(), path);
        EXPECT_TRUE(reaches(player, PlayState::playing));
        if (processes.empty())
            processes = childProcesses();
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_NEAR(player.Duration(), 0.35, 0.08);
        EXPECT_EQ(player.CurrentPosition(), player.Duration());
    }
    EXPECT_EQ(childProcesses(), processes) << "one plays them all";
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
    song("whole.wma", 0.1);
    disk.write("cut.wma", disk.read("whole.wma").substr(0, 60));
    disk.write("head.wav", "RIFF");
    // IMA ADPCM of no samples a second.
    disk.write("norate.wav", packedWav().replace(24, 4, 4, '\0'));
    fs::create_directory(disk.path() / "directory.mp3");
    player.Open(drive("whole.wav"));
    player.Pause(); // what has sounded of it counts for none of the others
    ASSERT_TRUE(reaches(player, PlayState::paused));
    for (const std::string& path :
         {drive("cut.wav"), drive("garbage.mp3"), drive("empty.mp3"), drive("text.wma"),
          drive("pixel.wav"), drive("cut.mid"), drive("cut.wma"), drive("head.wav"),
          drive("norate.wav"), drive("directory.mp3"), drive("missing.mp3"),
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
    EXPECT_EQ(lost.find("died"), lost.npos);
    EXPECT_EQ(told, "");
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
    player.setCurrentPosition(100);
    EXPECT_EQ(player.CurrentPosition(), player.Duration());
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
    const double end = player.CurrentPosition();
    EXPECT_NEAR((end - position) / time.count(), 2, 0.4) << "as set before";
    player.Play();
    player.setCurrentPosition(1);
    EXPECT_TRUE(staysFor(player, PlayState::stopped, 50ms));
    EXPECT_EQ(player.CurrentPosition(), end);
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
        EXPECT_EQ(player.PlayState(), PlayState::waiting);
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
    files.push_back(held("one/a.wav"));
    player.Open(drive("one/a.wav"));
    player.Open("");
    files.clear();
    EXPECT_TRUE(staysFor(player, PlayState::closed, 100ms));
    EXPECT_EQ(player.Duration(), 0);
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
        EXPECT_LT(back, 1) << "a busy machine reckons ahead; it broke after 1.6 seconds";
        processes.insert(childProcesses().back());
    }
    EXPECT_EQ(processes.size(), 1u);
}

TEST_F(PlayerTest, ALongSongTakesNoMoreMemoryThanAShortOne) {
    const char* const options = std::getenv("ASAN_OPTIONS");
    ::setenv("ASAN_OPTIONS", "quarantine_size_mb=1", 1); // which would keep what is free
    PlayerControl player(loop, playing(fastSink), tell);
    song("a.wav", 0.1);
    disk.write("packed.wav", packedWav());
    for (const auto& [name, sizeAt, size] :
         {std::tuple("a.wav", 40, 30 << 20), {"packed.wav", 44, 8 << 20}}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(isPlayedToItsEnd(player, drive(name)));
        const fs::path memory = "/proc/" + std::to_string(newChild(before)) + "/statm";
        const auto pages = [&] { // in use, and not shared
            long total = 0, resident = 0, shared = 0;
            std::ifstream(memory) >> total >> resident >> shared;
            return resident - shared;
        };
        const long first = pages();
        disk.write(name, disk.read(name).replace(static_cast<std::size_t>(sizeAt), 4,
                                                 littleEndian(size, 4)));
        fs::resize_file(disk.path() / name, static_cast<std::uintmax_t>(size));
        EXPECT_TRUE(isPlayedToItsEnd(player, drive(name)));
        EXPECT_GT(player.Duration(), 300);
        EXPECT_LT((pages() - first) * ::sysconf(_SC_PAGESIZE), 7 << 20);
    }
    options ? ::setenv("ASAN_OPTIONS", options, 1) : ::unsetenv("ASAN_OPTIONS");
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

// ALSA's own device without a sound card, wherever its owner has set it up.
TEST_F(PlayerTest, PlaysToTheDeviceThatItsOwnerHasSetUp) {
    const std::string path = song("a.wav", 0.3), home = std::getenv("HOME");
    ::setenv("HOME", disk.path().c_str(), 1);
    for (const std::string file : {".asoundrc", ".config/alsa/asoundrc", "own/alsa/asoundrc", ""}) {
        SCOPED_TRACE(file);
        if (file.starts_with("own"))
            ::setenv("XDG_CONFIG_HOME", (disk.path() / "own").c_str(), 1);
        const fs::path setup = disk.path() / (file.empty() ? "nowhere/asoundrc" : file);
        fs::create_directories(setup.parent_path());
        std::ofstream(setup) << "pcm.!default { type null }\n";
        PlayerControl player(loop, {LARKSPIN_PLAYER, {}, asked}, tell);
        EXPECT_TRUE(isPlayedToItsEnd(player, path));
        fs::remove(setup); // the device is open already
        EXPECT_TRUE(isPlayedToItsEnd(player, path));
        EXPECT_EQ(told == "", file != "");
    }
    EXPECT_EQ(told, "larkspin: no sound device, songs play silently\n");
    ::setenv("HOME", home.c_str(), 1);
    ::unsetenv("XDG_CONFIG_HOME");
}

TEST_F(PlayerTest, GoesOnSilentlyWithoutTheSoundDevice) {
    const std::string path = song("a.flac", 0.5);
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
