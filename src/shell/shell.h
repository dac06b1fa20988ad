// What all else stands on, put together: the data directory, the state, the settings and the
// splash window, with the totals that the program's clock counts.
#pragma once

#include "shell/app_state.h"
#include "shell/data_directory.h"
#include "shell/settings.h"
#include "shell/splash.h"

#include <string>

namespace larkspin {

class Files;

// Reads a stored flag. No word switches the flag off; a word other than "yes" and "no" leaves it.
void loadFlag(bool& flag, const std::string& stored);
const char* yesNo(bool flag);

struct Shell {
    // `fadesWindows`: the desktop can draw a window half transparent.
    Shell(EventLoop& loop, Files& files, const std::string& dataDirectory, bool fadesWindows);

    DataDirectory directory;
    AppState state;
    Settings settings;
    Splash splash;

    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes) const;

    // Begins a new run: every field of the state gets its first value, and all timers stop.
    // Handlers that still wait belong to the run before.
    void reset();

    void countSecond(bool songPlays);
};

} // namespace larkspin
