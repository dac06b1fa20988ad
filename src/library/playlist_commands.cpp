#include "library/playlist_commands.h"

#include "chat/reply.h"
#include "library/media_filter.h"
#include "library/playlist.h"
#include "library/playlist_files.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/fold.h"

namespace larkspin {

namespace {

constexpr double betweenLines = 0.7; // of a recital, in seconds

// The settings file, which remembers the name, drops blanks in front of it. Their stand-in stays.
std::string keptInSettings(std::string name) {
    for (std::size_t at = 0; at < name.size() && name[at] == ' ';) {
        constexpr std::string_view blank = "\uF020";
        name.replace(at, 1, blank);
        at += blank.size();
    }
    return name;
}

} // namespace

void PlaylistCommands::list(const std::string& text) {
    if (reply_.refusedInSilence("load"))
        return;
    loadnamed(foldCase(text));
    filter_.restorepattern();
}

void PlaylistCommands::xlist(const std::string& text) {
    if (reply_.refusedInSilence("load"))
        return;
    deletenamed(foldCase(text));
    playlists_.fillplaylistmenu();
    filter_.restorepattern();
}

void PlaylistCommands::loadnamed(const std::string& lowered) {
    forEachNamed(lowered, [this](const std::string& name) {
        playlists_.load(name);
        sayLoaded(name);
    });
}

// What can't be deleted is passed over: it will stand on the menu again.
void PlaylistCommands::deletenamed(const std::string& lowered) {
    forEachNamed(lowered, [this](const std::string& name) {
        playlists_.remove(name);
        reply_.saychat("deleted playlist <b>" + name);
    });
}

// Events run at each file. One that is gone when its turn comes doesn't count.
template <typename Action>
void PlaylistCommands::forEachNamed(const std::string& lowered, Action&& action) {
    bool any = false;
    for (const std::string& name : playlists_.names()) {
        loop_.serveTurn();
        if (foldCase(name).find(lowered) == std::string::npos || !playlists_.exists(name))
            continue;
        any = true;
        action(name);
    }
    if (!any)
        reply_.saychat("<b>" + lowered + "</b> not found");
}

void PlaylistCommands::save(const std::string& name) {
    if (!reply_.refusedInSilence("save"))
        saveAs(name + ".lkl");
}

void PlaylistCommands::saveAs(const std::string& fileName) {
    const bool isNew = playlists_.save(keptInSettings(fileName));
    reply_.saychat((isNew ? "saved playlist <b>" : "saved over original playlist <b>") + fileName +
                   "</b>, <b>" + std::to_string(state_.masterList.count()) + "</b> files");
}

void PlaylistCommands::loadFile(const std::string& path) {
    const std::string name = songOfPath(path).title();
    playlists_.loadFrom(path, name);
    sayLoaded(name);
}

void PlaylistCommands::sayLoaded(const std::string& name) {
    reply_.saychat("loaded playlist <b>" + name + "</b>, <b>" +
                   std::to_string(state_.masterList.count()) + "</b> files");
}

void PlaylistCommands::pl() {
    if (reply_.silentguard())
        return;
    if (state_.playlistTitle == unnamedPlaylistTitle)
        reply_.saychat("temporarly playlist in use");
    else
        reply_.saychat("playlist in use:  <b>" + playlists_.shownName());
}

void PlaylistCommands::tellCount() {
    if (!reply_.silentguard())
        reply_.saychat("there are <b>" + std::to_string(state_.p.size()) + "</b> playlists");
}

void PlaylistCommands::scrpl() {
    if (reply_.silentguard())
        return;
    const std::vector<std::string> names = playlists_.names();
    if (names.empty()) {
        reply_.saychat("there are no playlists to scroll");
        return;
    }
    const ThisRun run(state_);
    const Pause pause(loop_);
    reply_.saychat("scrolling <b>" + std::to_string(names.size()) + "</b> playlists");
    pause(betweenLines);
    int number = 0;
    for (const std::string& name : names) {
        if (!run.lasts())
            return;
        reply_.saychat("<b>" + std::to_string(++number) + "</b>.  " + name);
        pause(betweenLines);
    }
}

void PlaylistCommands::newpl() {
    if (state_.playlistView.empty()) {
        playlists_.showName("new playlist");
        reply_.saychat("new playlist created");
        return;
    }
    const ThisRun run(state_);
    const bool isCleared = clearIfWanted();
    if (run.lasts())
        reply_.saychat(std::string("new playlist created: files ") +
                       (isCleared ? "deleted" : "not deleted"));
}

void PlaylistCommands::startAnew() {
    const ThisRun run(state_);
    if (!state_.playlistView.empty())
        clearIfWanted();
    if (run.lasts())
        playlists_.showName("new playlist");
}

bool PlaylistCommands::clearIfWanted() {
    if (!dialogs_.ask("do you wanna clear the list?"))
        return false;
    clearPlaylist(state_);
    showFileCountLabel(state_);
    return true;
}

void PlaylistCommands::clearpl() {
    clearPlaylist(state_);
    showfilecount(state_);
    state_.playedMemory.clear();
    reply_.saychat("media playlist cleared");
}

} // namespace larkspin
