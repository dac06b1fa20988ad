#include "library/library.h"

#include "library/playlist.h"
#include "library/playlist_menu.h"
#include "shell/app_state.h"

namespace larkspin {

namespace {

constexpr std::string_view playlistTitleHead = " playlist:  ";
constexpr std::string_view playlistEnding = ".lkl";

} // namespace

void Library::load(const StoredSettings& stored) {
    loadPlaylistOf(stored.get("playlist"));
    fillPlaylistMenu();
    const std::string filter = stored.get("media filter");
    mediaFilter.choose(filter.empty() ? "mp3" : filter);
}

void Library::loadPlaylistOf(const std::string& name) {
    AppState& state = core_.state;
    if (name.empty()) {
        lineFiles.loadPlaylist(directory_.unnamedPlaylist(), state);
    } else {
        lineFiles.loadPlaylist(directory_.file(name), state);
        state.playlistTitle = std::string(playlistTitleHead) + name;
    }
    showFileCountEntry(state);
}

void Library::fillPlaylistMenu() {
    listers.File1.setPattern("*.lkl");
    if (listers.File1.setPath(directory_.path()))
        fillplaylistmenu(core_.state, listers.File1);
    else
        core_.state.numl = "0 playlists";
    listers.File1.setPattern("*.mp3");
    listers.File1.setPath("c:\\");
}

void Library::save(SettingsChanges& changes) {
    const AppState& state = core_.state;
    if (state.playlistTitle.ends_with(playlistEnding))
        changes.emplace_back("playlist",
                             state.playlistTitle.substr(state.playlistTitle.find(':') + 3));
    else
        lineFiles.savelines(directory_.unnamedPlaylist(), state.masterList);
    changes.emplace_back("media filter", state.mediaFilter);
}

} // namespace larkspin
