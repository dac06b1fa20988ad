// The owner's notes and his launcher items, put together: so far the lists and their files.
#pragma once

#include "shell/data_directory.h"

namespace larkspin {

struct AppState;
class Files;

struct Companions {
    Companions(AppState& state, Files& files, const DataDirectory& directory)
        : state_(state), files_(files), directory_(directory) {}

    void load();
    void save();

private:
    AppState& state_;
    Files& files_;
    const DataDirectory& directory_;
};

} // namespace larkspin
