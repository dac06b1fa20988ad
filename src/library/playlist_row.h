// PlaylistRow: one song as one line of text, the only record of where its file lies.
//
//     name, 78 blanks, "{ ", extension, " | ", directory
//
// The extension is what stands at the end of the file name from its last dot on, dot included, and
// the name what stands before that. The blanks push all but the name out of a list's sight. The
// directory stands in any of its spellings, with or without trailing backslashes.
//
// A row is taken apart from its "|", which no name and no extension holds. A line without it is no
// row: all its parts read empty.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// From the last dot on; empty without one.
std::string_view extensionOf(std::string_view fileName);

std::string makerow(std::string_view name, std::string_view extension, std::string_view directory);
std::string rowOfFile(std::string_view fileName, std::string_view directory);

// The parts, as views into the row.
std::string_view rowname(std::string_view row);
std::size_t longestName(std::size_t bar); // the most bytes that the name before that bar can take
std::string_view rowext(std::string_view row);
std::string_view rowdir(std::string_view row);

// The full path of the file.
std::string rowpath(std::string_view row);

// Directory and file name, with a backslash between them unless the directory is the root of
// a drive.
std::string joinPath(std::string_view directory, std::string_view fileName);
bool isDriveRoot(std::string_view directory);

// The one spelling of a directory: without trailing backslashes, but for the root of a drive.
std::string_view plainDirectory(std::string_view directory);

// Whether makerow of the row's parts gives the row again.
bool isWellFormed(std::string_view row);

// A row taken apart, to be kept across a wait.
struct Song {
    std::string name, extension, directory;

    std::string title() const { return name + extension; } // the file's name
    std::string path() const { return joinPath(directory, title()); }
};

// Whether both are the same file, however its directory is spelled.
bool isSameFile(const Song& a, const Song& b);

Song songOfRow(std::string_view row);
Song songOfFile(std::string_view fileName, std::string_view directory);
Song songOfPath(std::string_view path); // a full one

} // namespace larkspin
