// The recital of the songs that have been played most.
#pragma once

#include "chat/core.h"
#include "shell/data_directory.h"

#include <cstdint>
#include <string>
#include <vector>

namespace larkspin {

class Files;

struct CountedSong {
    std::string title; // file name with extension
    double value;
    std::string count; // the value as it is shown: every digit, however long
};

// All songs of the counter file, in its order. A line without an equals sign counts no song, and
// a count that isn't numeric is 0. A file that can't be read has none.
std::vector<CountedSong> readcounts(Files& files, const std::string& path);

// Leaves the `wanted` songs with the highest counts, those first. Among equal counts the title
// that sorts last, without regard to case, comes first.
void keepMostPlayed(std::vector<CountedSong>& songs, std::size_t wanted);

class TopList {
public:
    TopList(const Core& core, Files& files, const DataDirectory& directory)
        : reply_(core.reply), recitals_(core.recitals), files_(files),
          countsFile_(directory.countsFile()) {}

    // Says the n most played songs, 0.7 seconds apart, as they are when it begins. Another recital
    // may begin meanwhile; each one has songs of its own.
    void toplist(std::int32_t n);

private:
    Reply& reply_;
    Recitals& recitals_;
    Files& files_;
    std::string countsFile_;
};

} // namespace larkspin
