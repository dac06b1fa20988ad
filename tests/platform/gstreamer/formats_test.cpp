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

constexpr const char* plainAac = "avenc_aac ! aacparse ! audio/mpeg,stream-format=adts";
constexpr const char* stereo96 = "audio/x-raw,format=S24LE,rate=96000,channels=2 ! flacenc";
constexpr FormatsTest::Format formats[] = {
    {"a.flac", "flac -s -o $out $in"},
    {"deep.flac", stereo96},
    {"six.flac", "audio/x-raw,channels=6,channel-mask=(bitmask)0x3f ! flacenc", 0.62},
    {"a.ogg", "oggenc -Q -o $out $in"},
    {"a.oga", "flacenc ! flacparse ! oggmux"},
    {"a.opus", "opusenc --quiet $in $out 2>&1"},
    {"long.opus", "audio/x-raw,channels=2 ! opusenc frame-size=60 bitrate-type=vbr ! oggmux"},
    {"a.m4a", "avenc_aac ! aacparse ! mp4mux"},
    {"six.m4a", "audio/x-raw,channels=6,channel-mask=(bitmask)0x3f ! avenc_aac ! aacparse ! mp4mux",
     0.49},
    {"lossless.m4a", "avenc_alac ! mp4mux"},
    {"a.aac", plainAac},
    {"a.wv", "wavpackenc"},
    {"a.mpc", "mpcenc --silent $in $out 2>&1"},
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
        player.setRate(2);
        EXPECT_TRUE(isPlayedToItsEnd(player, path));
        player.setRate(1);
        EXPECT_NEAR(recordedSound().seconds, measured(whole).seconds / 2, 0.1);
        EXPECT_NEAR(measured(recordedSamples(), 0.3, 0.7).frequency, 441, 15);
    }
}

// As a radio station records them: songs of several rates and channels, one after the other.
TEST_F(FormatsTest, ThatAreChainedAreOneSong) {
    made({"one.ogg", "vorbisenc ! oggmux"});
    made({"two.ogg", "audio/x-raw,rate=48000,channels=2 ! vorbisenc ! oggmux"});
    const std::string one = disk.read("one.ogg"), two = disk.read("two.ogg");
    disk.write("three.ogg", one + two + one);
    PlayerControl player(loop, playing(recordingSink()), tell);
    EXPECT_TRUE(isPlayedToItsEnd(player, drive("three.ogg")));
    EXPECT_NEAR(player.Duration(), 12, 0.1);
    const auto whole = recordedSamples();
    EXPECT_NEAR(measured(whole).seconds, 12, 0.1);
    for (const double at : {0.0, 4.0, 8.0}) {
        EXPECT_NEAR(measured(whole, at + 0.5, at + 1.5).frequency, 441, 1) << at;
        EXPECT_NEAR(measured(whole, at + 2.5, at + 3.5).frequency, 882, 1) << at;
    }
    for (const double place : {5.5, 1.5}) {
        player.Open(drive("three.ogg"));
        player.setCurrentPosition(place);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        const auto rest = recordedSamples();
        EXPECT_NEAR(measured(rest).seconds, 12 - place, 0.1);
        EXPECT_NEAR(measured(rest, 0, 0.45).frequency, 441, 2);
        EXPECT_NEAR(measured(rest, 0.55, 1.5).frequency, 882, 2);
    }
    // At a large file there is only a look here and there.
    std::string holed = one, many;
    holed.insert(one.size() * 3 / 4, 1 << 20, 'P');
    while (many.size() <= holed.size())
        many += one;
    const auto copies = static_cast<double>(many.size() / one.size());
    for (const auto& [bytes, seconds] : {std::pair(holed + two, 8.0), {many, 4 * copies}}) {
        disk.write("large.ogg", bytes);
        player.Open(drive("large.ogg"));
        EXPECT_TRUE(comesTrue([&] { return player.Duration() > 0; }));
        EXPECT_NEAR(player.Duration(), seconds, seconds / 50);
    }
}

TEST_F(FormatsTest, WithPicturesAndTagsInFrontPlayAtAnyTempo) {
    const std::string picture(100'000, 'x'), tag("ID3\4\0\x10\0\0\7\x68", 10), // a thousand bytes
        foot("3DI\4\0\x10\0\0\7\x68", 10);
    PlayerControl player(loop, playing(recordingSink()), tell);
    player.setRate(2);
    for (const Format& format :
         {Format{"a.flac", "flacenc"}, Format{"a.wv", "wavpackenc"}, Format{"a.aac", plainAac},
          Format{"a.ogg", "vorbisenc ! oggmux"}}) {
        SCOPED_TRACE(format.name);
        made(format);
        std::string bytes = disk.read(format.name);
        if (bytes.starts_with("fLaC")) // a block of kind 6, with its length in three bytes
            bytes.insert(4 + 4 + 34, "\6\1\x86\xA0" + picture);
        disk.write(format.name, bytes.starts_with("OggS")
                                    ? bytes
                                    : tag + std::string(1000, '\0') + foot + bytes);
        EXPECT_TRUE(isPlayedToItsEnd(player, drive(format.name)));
        EXPECT_NEAR(player.Duration(), 4, 0.06);
        const auto samples = recordedSamples();
        EXPECT_NEAR(measured(samples).seconds, 2, 0.1);
        EXPECT_NEAR(measured(samples, 0.3, 0.7).frequency, 441, 15);
        EXPECT_NEAR(measured(samples, 1.3, 1.7).frequency, 882, 30);
    }
}

// A hole in a file, larger than a page of Ogg, and a download that broke off.
TEST_F(FormatsTest, WithDamagePlayButForThat) {
    PlayerControl player(loop, playing(recordingSink()), tell);
    for (const Format& format : {Format{"a.flac", "flacenc"}, Format{"a.ogg", "vorbisenc ! oggmux"},
                                 Format{"a.opus", "opusenc ! oggmux"}, Format{"a.aac", plainAac}}) {
        SCOPED_TRACE(format.name);
        made(format);
        std::string bytes = disk.read(format.name);
        const std::size_t place = bytes.size() * 5 / 8;
        disk.write("half", bytes.substr(0, place));
        disk.write("holed", bytes.replace(place, 40, 150'000, 'P'));
        EXPECT_TRUE(isPlayedToItsEnd(player, drive("holed")));
        EXPECT_NEAR(player.Duration(), 4, 0.1);
        const auto holed = recordedSamples();
        EXPECT_GT(measured(holed).seconds, 3);
        EXPECT_NEAR(measured(holed, measured(holed).seconds - 0.6).frequency, 882, 2);
        EXPECT_TRUE(isPlayedToItsEnd(player, drive("half")));
        EXPECT_NEAR(recordedSound().seconds, 2, 0.7);
        EXPECT_NEAR(recordedSound().frequency, 441, 1);
    }
}

} // namespace
} // namespace larkspin
