// Rows, the lists they stand in, and the file they are kept in.
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "support/talk.h"

#include <array>
#include <random>

namespace larkspin {
namespace {

const std::string rowGap = std::string(78, ' ') + "{ ";

struct PlaylistRows : testing::Test {
    AppState& start(const std::string& lines) {
        machine.writeDataFile("temp.lst", lines);
        machine.start();
        return machine.state();
    }
    VirtualMachine machine;
};

TEST_F(PlaylistRows, AreBuiltAndTakenApartByOneTemplate) {
    // clang-format off
    for (const auto& [directory, name, extension] : std::vector<std::array<std::string, 3>>{
             {"c:\\a", "song", ".mp3"}, {"c:\\", "Ä", ".MP3"}, {"c:\\a\\", "x.", ".midi"}, {"c:\\a", "1.2", ".f"},
             {"c:\\{a", "", ".mp3"}, {"c:\\a", "\xFF", ".zÄÖÜ"}, {"c:\\a", "ab", ""}, {"c:\\a", "x", ".a long one"},
             {"c:\\{ ", "{a{{ ", ".{"}, {"c:\\", rowGap, ""}, {"c:\\a", rowGap + ".mp3 ä{ ", "."}}) {
        // clang-format on
        const std::string row = rowOfFile(name + extension, directory);
        EXPECT_EQ(row, name + rowGap + extension + " | " + directory);
        EXPECT_TRUE(isWellFormed(row)) << row;
        EXPECT_EQ(rowname(row), name);
        EXPECT_EQ(rowext(row), extension);
        EXPECT_EQ(rowdir(row), directory);
        EXPECT_EQ(rowpath(row), directory + (directory == "c:\\" ? "" : "\\") + name + extension);
    }
    EXPECT_EQ(songOfPath("c:\\a\\b.mp3").directory, "c:\\a");
    EXPECT_EQ(songOfPath("c:\\b.mp3").directory, "c:\\");
    std::mt19937 random(4);
    const std::string pieces[] = {rowGap, "{", "|", " ", ".mp3", " | ", "ä", "\xFF", "\\"};
    for (int round = 0; round < 20000; ++round) {
        std::string row;
        for (auto count = random() % 8; count > 0; --count)
            row += pieces[random() % std::size(pieces)];
        const std::string again = makerow(rowname(row), rowext(row), rowdir(row));
        if (isWellFormed(row))
            ASSERT_EQ(again, row);
    }
}

TEST_F(PlaylistRows, ComeFromAnyLinesAndAreKeptAsTheyStand) {
    std::mt19937 random(6);
    std::string noise, many;
    for (int number = 0; number < 40000; ++number) {
        many += std::to_string(number) + "\n";
        noise += static_cast<char>(random() % 16 == 0 ? '\n' : random());
    }
    // clang-format off
    for (const auto& [lines, saved] : std::map<std::string, std::string>{
             {"b\r\na\n\r\n\nc", "a\r\nb\r\nc\r\n"}, {"a\r\r\n", "a\r\n"}, {"", ""},
             {"\xFF |\nÄ\xC4\n", "Ä\xC4\r\n\xFF |\r\n"}, {many, "any"}, {noise, "any"}}) {
        // clang-format on
        const AppState& state = start(lines);
        const int count = state.masterList.count();
        EXPECT_EQ(state.mp3z, "view " + std::to_string(count) + " files");
        if (lines == many)
            EXPECT_EQ(count, 32767);
        EXPECT_EQ(rowsOf(state.playlistView), rowsOf(state.masterList));
        machine.owner("'exit");
        const std::string kept = machine.dataFile("temp.lst");
        if (saved != "any")
            EXPECT_EQ(kept, saved);
        EXPECT_EQ(start(kept).masterList.count(), count);
        machine.owner("'exit");
        EXPECT_EQ(machine.dataFile("temp.lst"), kept);
    }
}

TEST_F(PlaylistRows, AreSearchedByNameAndComparedWhole) {
    AppState& state =
        start(makerow("mp3", ".mp3", "c:\\a") + "\nno row\n" + makerow("ride ", ".wav", "c:\\A") +
              "\n" + makerow("Ride", ".mp3", "c:\\a\\\\") + "\n" + makerow("x{yz", ".mp3", "c:\\"));
    const std::vector<std::tuple<std::string, int, int>> searches = {
        {"RIDE", 2, 3}, {"ride ", 1, 2}, {"mp3", 1, 0}, {"c:", 0, 0}, {"", 5, 4}, {"{", 1, 4}};
    for (const auto& [text, count, last] : searches) {
        searchrows(state, state.masterList, text);
        EXPECT_EQ(state.choiceList.count(), count) << text;
        EXPECT_EQ(state.masterIndex(), last) << text;
    }
    EXPECT_EQ(state.choiceList.row(0), makerow("x{yz", ".mp3", "c:\\"));
    EXPECT_TRUE(isinlist(state.masterList, makerow("RIDE", ".MP3", "C:\\A\\\\")));
    EXPECT_FALSE(isinlist(state.masterList, "row"));
    EXPECT_FALSE(isinlist(state.masterList, ""));
    state.setMasterIndex(0);
    collectdirs(state);
    EXPECT_EQ(state.masterIndex(), 4);
    EXPECT_EQ(rowsOf(state.knownDirs), (Lines{"c:\\a", "", "c:\\"})) << "each once";
}

} // namespace
} // namespace larkspin
