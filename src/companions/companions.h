// The owner's notes and his launcher items, put together: so far the lists and their files.
#pragma once

#include "shell/data_directory.h"

namespace larkspin {

struct AppState;
class LineFiles;

struct Companions {
    Companions(AppState& state, LineFiles& lineFiles, const DataDirectory& directory)
        : state_(state), lineFiles_(lineFiles), directory_(directory) {}

    void load();
    void save();

private:
    AppState& state_;
    LineFiles& lineFiles_;
    const DataDirectory& directory_;
};

} // namespace larkspin
