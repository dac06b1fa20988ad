// What can't be played is given up for a reason that its owner can use.
#include "platform/posix/opened_file.h"
#include "support/real_player.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {
namespace {

namespace fs = std::filesystem;

struct FaultsTest : RealPlayer {
    std::string made(const std::string& name, const std::string& line) {
        EXPECT_TRUE(makeFile(line + intoFile(disk.path() / name)));
        return disk.read(name);
    }
    std::string begun(const std::string& name, std::size_t bytes) {
        song(name, 0.3);
        return disk.read(name).substr(0, bytes);
    }
    void isRefused(PlayerControl& player, const std::string& name, const std::string& reason) {
        SCOPED_TRACE(name);
        player.Open(drive(name));
        // Hardly faster than time passes for the player, which else would seem to stand still on a
        // busy machine.
        EXPECT_TRUE(comesInTime([&] { return player.PlayState() == PlayState::stopped; },
                                std::chrono::milliseconds(3)));
        EXPECT_EQ(player.failure(), reason);
    }
};

TEST_F(FaultsTest, AreToldByWhatIsInTheFile) {
    const std::string picture = "videotestsrc num-buffers=9 ! ",
                      sound = "audiotestsrc num-buffers=20 ! audioconvert ! ";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"empty.mp3", "", "the file is empty"},
        {"text.mp3", "To do: buy strings, tune the piano.\n", "it is no media file"},
        {"long.mp3", std::string(9000, 'x') + "\n", "it is no media file"},
        {"picture.mp3", made("png", picture + "pngenc snapshot=true"), "it is no media file"},
        {"video.mp4", made("mp4", picture + "jpegenc ! qtmux"), "there is no sound in it"},
        {"video.ogg", made("ogg", picture + "theoraenc ! oggmux"), "there is no sound in it"},
        {"nothing.wav", begun("a.wav", 44), "there is no sound in it"},
        {"ac3.m4a", made("ac3", sound + "avenc_ac3 ! mp4mux"), "there is no decoder for it"},
        {"speex.ogg", made("spx", sound + "speexenc ! oggmux"), "there is no decoder for it"},
        {"webm.mp3", made("webm", sound + "vorbisenc ! webmmux"), "there is no decoder for it"},
        {"cut.flac", begun("a.flac", 30), "it is damaged"},
        {"cut.wav", begun("a.wav", 30), "it is damaged"},
        {"cut.m4a", begun("a.m4a", 1000), "it is damaged"},
        {"cut.ogg", begun("a.ogg", 30), "it is damaged"},
        {"cut.wma", begun("a.wma", 100), "it is damaged"},
        {"cut.aac", begun("a.aac", 5), "it is damaged"},
        {"cut.mid", begun("a.mid", 16), "it is damaged"}};
    PlayerControl player(loop, playing(fastSink), tell);
    for (const auto& [name, bytes, reason] : cases) {
        disk.write(name, bytes);
        isRefused(player, name, reason);
    }
    fs::create_directory(disk.path() / "directory.mp3");
    EXPECT_EQ(::mkfifo((disk.path() / "pipe.mp3").c_str(), 0600), 0);
    isRefused(player, "directory.mp3", "it is a directory");
    isRefused(player, "pipe.mp3", "it is no file");
    isRefused(player, "gone.mp3", "there is no such file or directory");
    const bool root = ::geteuid() == 0 && ::seteuid(65534) == 0; // root may read anything
    if (!root)
        fs::permissions(disk.path(), fs::perms::none);
    EXPECT_EQ(openToRead((disk.path() / "cut.wav").native()).reason, "permission denied");
    EXPECT_EQ(root ? ::seteuid(0) : 0, 0);
    fs::permissions(disk.path(), fs::perms::owner_all);
    EXPECT_EQ(lost, "") << "one process has looked at all of them";
}

} // namespace
} // namespace larkspin
