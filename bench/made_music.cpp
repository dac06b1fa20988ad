#include "made_music.h"

#include "library/playlist_row.h"

#include <algorithm>
#include <fstream>
#include <numeric>
#include <random>

namespace larkspin {

namespace {

constexpr int artists = 97;
constexpr int filesInDirectory = 20;
constexpr int directoriesBelowOne = 50;

std::string padded(int number, int width) {
    std::string digits = std::to_string(number);
    return std::string(static_cast<std::size_t>(width) - digits.size(), '0') + digits;
}

std::string songName(int artist, int number) {
    return "Artist " + padded(artist, 2) + " - Some Title " + padded(number, 6);
}

// Puts the files into `count` directories of which none holds all the others.
void makeBranch(const std::filesystem::path& root, int files, int& number) {
    for (int left = files, made = 0; left > 0; ++made) {
        const auto directory = root / ("Shelf " + padded(made / directoriesBelowOne, 3)) /
                               ("Album " + padded(made % directoriesBelowOne, 2));
        std::filesystem::create_directories(directory);
        for (int i = 0; i < filesInDirectory && left > 0; ++i, --left, ++number)
            std::ofstream(directory / (songName(number % artists, number) + ".mp3"));
    }
}

} // namespace

int directoriesFor(int rows) {
    return std::max(1, rows * 2000 / RowList::limit);
}

std::vector<Row> scannedRows(int rows) {
    const int directories = directoriesFor(rows);
    std::vector<Row> made;
    made.reserve(static_cast<std::size_t>(rows));
    RowWriter writer;
    for (int at = 0, number = 0; at < directories; ++at) {
        const std::string directory = "c:\\home\\jo\\Music\\Shelf\\Album " + padded(at, 4);
        const int first = number, end = (at + 1) * rows / directories;
        for (; number < end; ++number) {
            const int artist = (number - first) * artists / (end - first);
            made.push_back(writer.write(makerow(songName(artist, number), ".mp3", directory)));
        }
    }
    return made;
}

RowList savedOrder(const std::vector<Row>& rows) {
    RowList list(RowList::Order::sorted);
    for (const Row& row : rows)
        list.add(row);
    return list;
}

RowList shuffledOrder(const std::vector<Row>& rows) {
    RowList list;
    for (int index : shuffledIndexes(static_cast<int>(rows.size())))
        list.add(rows[static_cast<std::size_t>(index)]);
    return list;
}

std::vector<int> shuffledIndexes(int count) {
    std::vector<int> indexes(static_cast<std::size_t>(count));
    std::iota(indexes.begin(), indexes.end(), 0);
    std::shuffle(indexes.begin(), indexes.end(), std::mt19937(1));
    return indexes;
}

void makeTree(const std::filesystem::path& root, int files) {
    int number = 0;
    makeBranch(root, files / 2, number);
    makeBranch(root / "half", files / 4, number);
    makeBranch(root / "half" / "half", files / 4, number);
}

} // namespace larkspin
