// What songs say of themselves, as the player reads it.
#include "support/real_player.h"

namespace larkspin {
namespace {

struct TagsTest : RealPlayer {
    // Of a song that is played to its end.
    std::string tagsOf(const std::string& name) {
        EXPECT_TRUE(isPlayedToItsEnd(player, drive(name))) << name;
        const auto [title, artist, album] = player.tags();
        return title + " - " + artist + " - " + album;
    }
    // A frame of ID3v2.4, in UTF-8.
    static std::string frame(const std::string& name, const std::string& text) {
        return name + std::string(3, '\0') + static_cast<char>(text.size() + 1) +
               std::string("\0\0\3", 3) + text;
    }

    PlayerControl player{loop, playing(), tell};
    const std::string title = "Who Made Who?", artist = "AC/DC \u00FC", album = "Live",
                      wanted = title + " - " + artist + " - " + album;
};

TEST_F(TagsTest, AreToldOfEachKindOfFileThatHasThem) {
    const std::string tags =
        R"(title=\")" + title + R"(\",artist=\")" + artist + R"(\",album=)" + album;
    for (const std::string name : {"a.flac", "a.ogg", "a.opus", "a.m4a"}) {
        ASSERT_TRUE(makeTaggedSong(disk.path() / name, 0.2, tags)) << name;
        EXPECT_EQ(tagsOf(name), wanted) << name;
    }
    ASSERT_TRUE(makeSong(disk.path() / "a.mp3", 0.2));
    const std::string frames = frame("TIT2", title) + frame("TPE1", artist) + frame("TALB", album);
    disk.write("a.mp3", std::string("ID3\4\0\0\0\0\0", 9) + static_cast<char>(frames.size()) +
                            frames + disk.read("a.mp3"));
    EXPECT_EQ(tagsOf("a.mp3"), wanted);
    ASSERT_TRUE(makeSong(disk.path() / "b.wav", 0.2));
    EXPECT_EQ(tagsOf("b.wav"), " -  - ") << "nor does it keep those of the song before";
}

} // namespace
} // namespace larkspin
