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

// A flag as it is stored. An unknown word leaves the flag as it is; none switches it off.
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

    // Every field begins anew, and all timers stop. What waits has outlived its run then.
    void reset();

    void countSecond(bool songPlays);
};

} // namespace larkspin
