// What is read from MIDI files, sound and damaged ones.
#include "platform/gstreamer/midi_file.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::string_literals;

std::string chunk(const std::string& kind, const std::string& content) {
    const auto size = static_cast<char>(content.size());
    return kind + "\0\0\0"s + size + content;
}

// Of 96 ticks a quarter: 192 a second, until a tempo says otherwise.
std::string file(const std::vector<std::string>& tracks, const std::string& division = "\0\x60"s) {
    std::string bytes = chunk("MThd", "\0\1\0"s + static_cast<char>(tracks.size()) + division);
    for (const std::string& track : tracks)
        bytes += chunk("MTrk", track);
    return bytes;
}

const std::string note = "\0\x90\x45\x7F"s, trackEnd = "\0\xFF\x2F\0"s;
const std::string pause96 = "\x60\x80\x45\x40"s; // ended by the note's end

TEST(MidiFile, LastsAsLongAsItsTempoSays) {
    const std::string twiceAsSlow = "\0\xFF\x51\3\x0F\x42\x40"s; // 1,000,000 microseconds
    const std::tuple<const char*, std::string, double> cases[] = {
        {"120 quarters a minute", file({note + pause96 + trackEnd}), 0.5},
        {"60 from the begin on", file({twiceAsSlow + note + pause96 + trackEnd}), 1},
        {"60 from the middle on", file({note + pause96 + twiceAsSlow + pause96 + trackEnd}), 1.5},
        {"a tempo track beside it", file({twiceAsSlow + trackEnd, note + pause96}), 1},
        {"the longest track", file({note + trackEnd, note + pause96 + pause96}), 1},
        {"silence at the end", file({note + "\x81\x40\xFF\x2F\0"s}), 1},
        {"24 frames of 4 ticks a second", file({twiceAsSlow + note + pause96}, "\xE8\4"s), 1},
        {"29.97 frames of them", file({note + pause96}, "\xE3\4"s), 96 / (29.97 * 4)},
        {"a text as long as a tempo", file({"\0\xFF\1\3abc"s + note + pause96}), 0.5},
        {"a tempo of one byte", file({"\0\xFF\x51\1\1"s + note + pause96}), 0.5},
        {"zeros in front of a number", file({note + "\x80\x80\x60\x80\x45\x40"s}), 0.5},
        {"less tracks than it tells of", file({note + pause96}).replace(11, 1, "\2"), 0.5},
        {"more tracks", file({note + pause96}) + chunk("MTrk", note + pause96 + pause96), 0.5},
        {"another chunk between",
         file({}).replace(11, 1, "\1") + chunk("XFIH", "abc") + chunk("MTrk", note + pause96), 0.5},
    };
    for (const auto& [what, bytes, duration] : cases) {
        SCOPED_TRACE(what);
        const auto song = readMidi(bytes);
        ASSERT_TRUE(song);
        EXPECT_NEAR(song->duration, duration, 1e-9);
    }
}

TEST(MidiFile, KeepsTheOrderOfItsMessages) {
    const auto song =
        readMidi(file({"\0\xC0\5"s + note + "\x60\x45\0"s /* running status */,
                       "\x30\xF0\3\x43\x10\xF7"s + "\0\xE1\1\2"s, "\x30\xD2\3\x30\x80\x45\x40"s}));
    ASSERT_TRUE(song);
    ASSERT_EQ(song->events.size(), 7u);
    using Bytes = decltype(MidiEvent::bytes);
    const std::pair<double, Bytes> expected[] = {{0, {0xC0, 5, 0}},        {0, {0x90, 0x45, 0x7F}},
                                                 {0.25, {0xF0, 0, 0}},     {0.25, {0xE1, 1, 2}},
                                                 {0.25, {0xD2, 3, 0}},     {0.5, {0x90, 0x45, 0}},
                                                 {0.5, {0x80, 0x45, 0x40}}};
    for (std::size_t at = 0; at < 7; ++at) {
        EXPECT_NEAR(song->events[at].seconds, expected[at].first, 1e-9) << at;
        EXPECT_EQ(song->events[at].bytes, expected[at].second) << at;
    }
    EXPECT_EQ(song->longTexts.at(0), "\x43\x10");
    const auto cut = readMidi(file({note + "\0\xF0\1\x43"s + note + "\0\xF7\2\x43\xF7"s + note +
                                        "\0\xF0\1\x43\0\x45\x40"s + note + pause96 + note,
                                    note + pause96}));
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->events.size(), 5u) << "a part of a long text means nothing and ends the status";
}

TEST(MidiFile, TakesWhatIsWholeOfADamagedOne) {
    std::string tooLong = file({note + pause96 + pause96});
    tooLong[18] = '\xFF'; // a track of 4 GB
    const auto song = readMidi(tooLong.substr(0, tooLong.size() - 2));
    ASSERT_TRUE(song);
    EXPECT_EQ(song->events.size(), 2u);
    EXPECT_NEAR(song->duration, 0.5, 1e-9);
}

TEST(MidiFile, RefusesWhatIsNoSong) {
    const std::string dayLong = "\xFF\xFF\xFF\x7F\x45\x7F"s; // 2^28 ticks
    const std::pair<const char*, std::string> cases[] = {
        {"nothing", ""},
        {"a head alone", file({})},
        {"no note", file({trackEnd})},
        {"silent notes", file({"\0\x90\x45\0"s + pause96})},
        {"a wait of too many bytes", file({"\x80\x80\x80\x80"s + note.substr(1) + pause96})},
        {"a text without a length", file({"\0\xFF\1\x80\x80\x80\x80"s + note + pause96})},
        {"a long text without one", file({"\0\xF0\x80\x80\x80\x80"s + note + pause96})},
        {"no status byte", file({"\0\x45\x7F\0\x45\0"s})},
        {"a status byte that no file has", file({"\0\xF4\x45\x7F"s + note})},
        {"no ticks a quarter", file({note + pause96}, "\0\0"s)},
        {"no ticks a frame", file({note + pause96}, "\xE8\0"s)},
        {"several songs", file({note + pause96}).replace(9, 1, "\2")},
        {"no length", file({note + trackEnd})},
        {"more than a day", file({note + dayLong}, "\0\1"s)},
        {"another type", "RIFF" + file({note + pause96})}};
    for (const auto& [what, bytes] : cases)
        EXPECT_FALSE(readMidi(bytes)) << what;
}

} // namespace
} // namespace larkspin
