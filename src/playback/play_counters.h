// Play counters: how often each song has been played to its end, and how many songs in all.
//
// The counts stand in a file of their own under the song's file name, so that two files of
// one name share a count, also when they differ in case. A count that isn't numeric is 0.
#pragma once

#include "chat/core.h"
#include "shell/data_directory.h"

#include <string>

namespace larkspin {

class PlayCounters {
public:
    PlayCounters(const Core& core, const DataDirectory& directory)
        : state_(core.state), settings_(core.settings), countsFile_(directory.countsFile()) {}

    double count(const std::string& title);

    // Counts the song that has just ended, which is still the one last started, and shows the new
    // count.
    void bumpcount();

    // Counts one more song played in all.
    void bumpPlayed();

    // Both.
    void countEnd();

    // A song's count goes with its file, or moves to the file's new name. A song that has none
    // leaves that of the new name alone.
    void drop(const std::string& title);
    void carry(const std::string& title, const std::string& newTitle);

    // How many songs have been played in all, which the menu then shows as well.
    std::string played();

    // Shows a count in the menu's entry for the current song.
    void show(double count);

private:
    void store(const std::string& title, double counted);

    AppState& state_;
    Settings& settings_;
    std::string countsFile_;
};

} // namespace larkspin
