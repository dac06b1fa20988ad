// Files that are no songs, or songs that were damaged: each is given up or played, a good song
// after it plays, and the program stays what it was.
#include "support/listener.h"
#include "support/real_player.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct DamagedSongs : RealPlayer {
    // Opens it and waits until it has ended or has been given up.
    void isOver(PlayerControl& player, const std::string& path) {
        player.Open(path);
        const auto isOver = [&] {
            return player.PlayState() == PlayState::stopped || player.Duration() > longSong;
        };
        EXPECT_TRUE(comesInTime(isOver, 10ms));
        hung += player.failure() == "the player stood still";
    }

    std::string made(const std::string& name) {
        song(name, 2);
        return disk.read(name);
    }
    std::string musepack() {
        EXPECT_TRUE(makeTones(disk.path() / "whole.mpc", "mpcenc --silent $in $out 2>&1"));
        return disk.read("whole.mpc");
    }
    // In two tracks, with an instrument and a tempo.
    static std::string manyNotes() {
        std::string notes("\0\xC0\5\0\xFF\x51\3\x05\0\0\0\xB0\7\x60", 14);
        for (char key = 30; key < 54; ++key)
            notes += std::string("\1\x90") + key + std::string("\x7F\1") + key + '\0';
        notes += std::string("\0\xFF\x2F\0", 4);
        const std::string track =
            std::string("MTrk\0\0\0", 7) + static_cast<char>(notes.size()) + notes;
        return std::string("MThd\0\0\0\6\0\1\0\2\0\x60", 14) + track + track;
    }
    std::string damaged(std::string bytes) {
        for (std::size_t count = upTo(7) + 1; count > 0 && !bytes.empty(); --count) {
            // Half of them where the sizes stand.
            const std::size_t at = upTo(upTo(1) ? bytes.size() - 1 : 127) % bytes.size();
            switch (upTo(5)) {
            case 0:
                bytes.resize(at);
                break;
            case 1:
                bytes.erase(at, upTo(64));
                break;
            case 2:
                for (std::size_t noise = upTo(63) + 1; noise > 0; --noise)
                    bytes.insert(at, 1, static_cast<char>(upTo(255)));
                break;
            case 3: // a wrong length
                bytes.replace(at, 4, 4, upTo(1) ? '\xFF' : '\0');
                break;
            default:
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << upTo(7)));
            }
        }
        return bytes;
    }
    std::size_t upTo(std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(0, most)(chance_);
    }

    static long residentKilobytes() {
        std::ifstream file("/proc/self/statm");
        long total = 0, resident = 0;
        file >> total >> resident;
        return resident * ::sysconf(_SC_PAGESIZE) / 1024;
    }
    static auto descriptors() {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    }

    static constexpr double longSong = 60; // seconds
    int hung = 0;                          // until the player was replaced
    std::minstd_rand chance_{20031219};
};

TEST_F(DamagedSongs, OtherFilesAskForNothingAndShowNothing) {
    const Listener listener;
    const std::string url = "http://127.0.0.1:" + std::to_string(listener.port()) + "/song";
    disk.write("hls", "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\n" + url +
                          ".ts\n#EXT-X-ENDLIST\n");
    disk.write("dash", "<?xml version=\"1.0\"?>\n<MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" "
                       "type=\"static\" mediaPresentationDuration=\"PT10S\"><BaseURL>" +
                           url +
                           "</BaseURL><Period><AdaptationSet mimeType=\"audio/mp4\">"
                           "<Representation id=\"1\" bandwidth=\"1\"/></AdaptationSet>"
                           "</Period></MPD>\n");
    disk.write("list", "[playlist]\nFile1=" + url + "\nNumberOfEntries=1\n");
    ASSERT_TRUE(makeFile("videotestsrc num-buffers=1 ! pngenc" + intoFile(disk.path() / "png")));
    ASSERT_TRUE(makeFile("videotestsrc num-buffers=9 ! jpegenc ! avimux" +
                         intoFile(disk.path() / "video")));
    PlayerControl player(loop, playing(fastSink), tell);
    const std::string good = song("good.wav", 0.1);
    for (const char* name : {"hls", "dash", "list", "png", "video"}) {
        for (const std::string extension : {".mp3", ".wma", ".mid"}) {
            SCOPED_TRACE(name + extension);
            fs::copy_file(disk.path() / name, disk.path() / (name + extension));
            isOver(player, drive(name + extension));
            EXPECT_TRUE(player.wasGivenUp());
            EXPECT_FALSE(listener.wasCalled());
        }
        EXPECT_TRUE(isPlayedToItsEnd(player, good));
    }
}

TEST_F(DamagedSongs, LeaveTheProgramAsItWasAndTheNextSongPlays) {
    const char* const wanted = std::getenv("LARKSPIN_DAMAGED_SONGS");
    const int count = wanted ? std::atoi(wanted) : 6; // of each type
    PlayerControl player(loop, playing(fastSink), tell);
    const std::string good = song("good.wav", 0.1);
    ASSERT_TRUE(isPlayedToItsEnd(player, good));
    const std::pair<std::string, std::string> wholeSongs[] = {
        {".mp3", made("whole.mp3")},   {".wav", made("whole.wav")},   {".wma", made("whole.wma")},
        {".mid", manyNotes()},         {".flac", made("whole.flac")}, {".ogg", made("whole.ogg")},
        {".opus", made("whole.opus")}, {".m4a", made("whole.m4a")},   {".aac", made("whole.aac")},
        {".wv", made("whole.wv")},     {".aiff", made("whole.aiff")}, {".mpc", musepack()}};
    const auto filesBefore = descriptors();
    const long memoryBefore = residentKilobytes();
    for (const auto& [type, whole] : wholeSongs) {
        int givenUp = 0;
        const auto begin = Clock::now();
        for (int number = 0; number < count; ++number) {
            SCOPED_TRACE(std::to_string(number) + type);
            disk.write("damaged" + type, damaged(whole));
            isOver(player, drive("damaged" + type));
            givenUp += player.wasGivenUp();
            EXPECT_TRUE(isPlayedToItsEnd(player, good));
        }
        const std::chrono::duration<double> took = Clock::now() - begin;
        if (wanted)
            std::cout << count << ' ' << type << ": " << givenUp << " given up, "
                      << std::exchange(hung, 0) << " hung, " << took.count() << " s, "
                      << descriptors() - filesBefore << " descriptors and "
                      << residentKilobytes() - memoryBefore << " KB more\n";
    }
    pass(1s);
    EXPECT_EQ(descriptors(), filesBefore);
    EXPECT_LT(residentKilobytes() - memoryBefore, 64 * 1024); // the sanitizers keep freed memory
    EXPECT_EQ(childProcesses().size(), before.size() + 1);
}

// The owner doesn't wait for what becomes of them.
TEST_F(DamagedSongs, TheNextOneIsNeverToBlame) {
    const char* const wanted = std::getenv("LARKSPIN_DAMAGED_SONGS");
    const int count = wanted ? std::atoi(wanted) : 8; // of each type
    PlayerControl player(loop, playing(fastSink), tell);
    const std::string good = song("good.wav", 0.1);
    for (const std::string type : {".mp3", ".wav"}) {
        const std::string whole = made("whole" + type);
        for (int number = 0; number < count; ++number) {
            SCOPED_TRACE(std::to_string(number) + type);
            disk.write("damaged" + type, damaged(whole));
            player.Open(drive("damaged" + type));
            const auto left = Clock::now() + std::chrono::milliseconds(upTo(40));
            comesTrue([&] { return Clock::now() > left; });
            player.Open(good);
            EXPECT_TRUE(
                comesInTime([&] { return player.PlayState() == PlayState::stopped; }, 10ms));
            EXPECT_FALSE(player.wasGivenUp());
        }
    }
}

} // namespace
} // namespace larkspin
