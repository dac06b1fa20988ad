#include "library/library.h"

#include "shell/app_state.h"

namespace larkspin {

void Library::load(const StoredSettings& stored) {
    playlistFiles.loadOfLastRun(stored);
    playlistFiles.fillplaylistmenu();
    listers.File1.setPattern("*.mp3");
    listers.File1.setPath("c:\\");
    const std::string filter = stored.get("media filter");
    mediaFilter.choose(filter.empty() ? "mp3" : filter);
}

void Library::save(SettingsChanges& changes) {
    playlistFiles.endRun(changes);
    changes.emplace_back("media filter", core_.state.mediaFilter);
}

} // namespace larkspin
