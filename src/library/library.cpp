#include "library/library.h"

#include "shell/app_state.h"
#include "shell/kept_files.h"

namespace larkspin {

void Library::load(const StoredSettings& stored) {
    playlistFiles.loadOfLastRun(stored);
    playlistFiles.fillplaylistmenu();
    listers.File1.setPattern("*.mp3");
    listers.File1.setPath("c:\\");
    mediaFilter.load(stored.get("media filter"));
}

void Library::save(SettingsChanges& changes) {
    playlistFiles.endRun(changes);
    changes.emplace_back("media filter", core_.state.mediaFilter);
}

} // namespace larkspin
