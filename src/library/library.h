// The library put together: the playlist's files, and all that brings rows in or finds them.
#pragma once

#include "chat/core.h"
#include "library/adding.h"
#include "library/listers.h"
#include "library/media_filter.h"
#include "library/scan.h"
#include "shell/data_directory.h"
#include "shell/settings.h"

#include <string>

namespace larkspin {

class Files;

struct Library {
    Library(const Core& core, Files& files, Directories& directories,
            const DataDirectory& directory);

    Listers listers;
    MediaFilter mediaFilter;
    Scan scan;
    Adding adding;

    // The playlist of the last run with the menu of all of them, and the media filter.
    void load(const StoredSettings& stored);
    // A named playlist is saved only when the owner says so; its name is remembered.
    void save(SettingsChanges& changes);

private:
    void loadPlaylistOf(const std::string& name);
    void fillPlaylistMenu();

    Core core_;
    Files& files_;
    const DataDirectory& directory_;
};

} // namespace larkspin
