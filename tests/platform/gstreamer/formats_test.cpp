// Each kind of file that is decoded, made by its own encoder, through all that is done with a song.
#include "platform/gstreamer/recording.h"

#include <filesystem>

namespace larkspin {
namespace {

namespace fs = std::filesystem;

struct FormatsTest : RecordingTest {
    struct Format {
        const char *name, *encoder;
        double level = 0.75; // of what comes out, mixed to one channel
    };
    std::string made(const Format& format) {
        const fs::path path = disk.path() / format.name;
        EXPECT_TRUE(makeTones(path, format.encoder));
        return drive(format.name);
    }
    // Where the second tone begins in what was recorded, in seconds: sought from the end, since
    // some decoders begin with a crackle.
    static double changeOf(const std::vector<std::int16_t>& samples) {
        double at = measured(samples).seconds - 0.5;
        while (at > 0 && measured(samples, at, at + 0.02).frequency > 660)
            at -= 0.005;
        return at + 0.01;
    }
};

constexpr const char* stereo96 = "audio/x-raw,format=S24LE,rate=96000,channels=2 ! flacenc";
constexpr FormatsTest::Format formats[] = {
    {"a.flac", "flacenc"},
    {"deep.flac", stereo96},
    {"six.flac", "audio/x-raw,channels=6,channel-mask=(bitmask)0x3f ! flacenc", 0.62},
    {"a.ogg", "vorbisenc ! oggmux"},
    {"a.oga", "flacenc ! flacparse ! oggmux"},
    {"a.opus", "opusenc ! oggmux"},
    {"long.opus", "audio/x-raw,channels=2 ! opusenc frame-size=60 bitrate-type=vbr ! oggmux"},
    {"a.m4a", "avenc_aac ! aacparse ! mp4mux"},
    {"six.m4a", "audio/x-raw,channels=6,channel-mask=(bitmask)0x3f ! avenc_aac ! aacparse ! mp4mux",
     0.49},
    {"lossless.m4a", "avenc_alac ! mp4mux"},
    {"a.aac", "avenc_aac ! aacparse ! audio/mpeg,stream-format=adts"},
    {"a.wv", "wavpackenc"},
    {"a.aiff", "avmux_aiff"},
    {"deep.aif", "audio/x-raw,format=S16BE,rate=96000 ! avmux_aiff"},
};

TEST_F(FormatsTest, SoundAsTheyWereMadeFromAnyMomentOn) {
    PlayerControl player(loop, playing(recordingSink()), tell);
    for (const Format& format : formats) {
        SCOPED_TRACE(format.name);
        const std::string path = made(format);
        EXPECT_TRUE(isPlayedToItsEnd(player, path));
        EXPECT_NEAR(player.Duration(), 4, 0.05);
        EXPECT_EQ(player.CurrentPosition(), player.Duration());
        const auto whole = recordedSamples();
        const double change = changeOf(whole);
        EXPECT_NEAR(measured(whole).seconds, 4, 0.05);
        EXPECT_NEAR(measured(whole, 0.5, 1.5).amplitude, format.level, 0.03);
        EXPECT_NEAR(measured(whole, 0.5, 1.5).frequency, 441, 1);
        EXPECT_NEAR(measured(whole, 2.5, 3.5).frequency, 882, 1);
        EXPECT_NEAR(change, 2, 0.06); // some encoders put silence in front
        for (const double place : {1.5, 0.03}) {
            player.Open(path);
            player.setCurrentPosition(place);
            EXPECT_TRUE(reaches(player, PlayState::stopped));
            const auto rest = recordedSamples();
            EXPECT_NEAR(measured(rest).seconds, measured(whole).seconds - place, 0.01);
            EXPECT_NEAR(changeOf(rest), change - place, 0.01);
        }
    }
}

} // namespace
} // namespace larkspin
