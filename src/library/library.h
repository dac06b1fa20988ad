// The library put together: the playlist's files, and all that brings rows in, takes them out or
// finds them.
#pragma once

#include "chat/core.h"
#include "library/adding.h"
#include "library/brought_songs.h"
#include "library/directories.h"
#include "library/line_files.h"
#include "library/list_questions.h"
#include "library/listers.h"
#include "library/media_filter.h"
#include "library/playlist_commands.h"
#include "library/playlist_files.h"
#include "library/refresh.h"
#include "library/removing.h"
#include "library/scan.h"
#include "shell/data_directory.h"
#include "shell/kept_files.h"
#include "shell/settings.h"

namespace larkspin {

struct Library {
    Library(const Core& core, KeptFiles& files, Directories& directories,
            const DataDirectory& directory)
        : core_(core), files_(files), directories_(directories), directory_(directory) {}

private: // what the units are made with
    Core core_;
    KeptFiles& files_;
    Directories& directories_;
    const DataDirectory& directory_;

public:
    LineFiles lineFiles{files_,
                        [this](std::string_view typed) { return directories_.drivePath(typed); }};
    Listers listers{directories_};
    MediaFilter mediaFilter{core_, listers.File1};
    Scan scan{core_.state, directories_, listers, core_.loop, core_.reply};
    Adding adding{core_, files_, directories_, listers.File1, scan};
    BroughtSongs broughtSongs{core_, files_, directories_};
    Removing removing{core_};
    PlaylistFiles playlistFiles{core_.state, files_, lineFiles, listers.File1, directory_};
    PlaylistCommands playlistCommands{core_, playlistFiles, mediaFilter};
    ListQuestions questions{core_};
    Refresh refresh{core_, directories_, listers.File1, scan};

    // The playlist of the last run with the menu of all of them, and the media filter.
    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes);
};

} // namespace larkspin
