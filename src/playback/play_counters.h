// Play counters: how often each song has been played to its end, and how many songs in all.
//
// The counts stand in a file of their own under the song's file name, so that two files of
// one name share a count. A count that isn't numeric is 0.
#pragma once

#include "shell/data_directory.h"

#include <string>

namespace larkspin {

struct AppState;
class Reply;
class Settings;

class PlayCounters {
public:
    PlayCounters(AppState& state, Settings& settings, Reply& reply, const DataDirectory& directory)
        : state_(state), settings_(settings), reply_(reply), countsFile_(directory.countsFile()) {}

    double count(const std::string& title);

    // Counts the song that has just ended, which the setting "play" still names, and shows
    // the new count.
    void bumpcount();

    // One more song played in all.
    void bumpPlayed();

    // In the menu's entry for the current song.
    void show(double count);

private:
    AppState& state_;
    Settings& settings_;
    Reply& reply_;
    std::string countsFile_;
};

} // namespace larkspin
