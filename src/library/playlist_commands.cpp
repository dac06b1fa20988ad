#include "library/playlist_commands.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "library/media_filter.h"
#include "library/playlist.h"
#include "library/playlist_files.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/this_run.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr double betweenLines = 0.7; // of a recital, in seconds

// The stored form of a file name as typed. Blanks at its beginning become stand-ins as well, since
// the settings file would drop them. A text with a zero byte can be no name, and is refused later.
std::string fileNameFor(const std::string& typed) {
    if (typed.find('\0') != std::string::npos)
        return typed;
    const auto blanksInFront = std::min(typed.find_first_not_of(' '), typed.size());
    std::string name;
    for (std::size_t count = 0; count < blanksInFront; ++count)
        appendStandIn(name, ' ');
    return name + asStored(typed.substr(blanksInFront));
}

} // namespace

void PlaylistCommands::list(const std::string& text) {
    if (reply_.refusedInSilence("load"))
        return;
    loadnamed(foldName(text));
    filter_.restorepattern();
}

void PlaylistCommands::xlist(const std::string& text) {
    if (reply_.refusedInSilence("load"))
        return;
    deletenamed(foldName(text));
    playlists_.fillplaylistmenu();
    filter_.restorepattern();
}

void PlaylistCommands::loadnamed(const std::string& lowered) {
    bool any = false;
    const bool isThrough = forEach(namesWith(lowered), [&](const std::string& name) {
        any = true;
        tellLoad(name, playlists_.load(name), true);
    });
    if (isThrough && !any)
        sayNotFound(lowered);
}

// An empty text is a mistake, such as a completed command word and Return. It must not delete every
// playlist.
void PlaylistCommands::deletenamed(const std::string& lowered) {
    const std::vector<std::string> names =
        withoutBlanks(lowered).empty() ? std::vector<std::string>() : namesWith(lowered);
    const ThisRun run(state_);
    const bool isMeant = mayDelete(names);
    if (!run.lasts())
        return;
    if (!isMeant)
        return reply_.saychat("playlists not deleted");
    bool any = false;
    const bool isThrough = forEach(names, [&](const std::string& name) {
        any = true;
        const FileChange removed = playlists_.remove(name);
        reply_.saychat(removed
                           ? "deleted playlist <b>" + name
                           : "couldn't delete playlist <b>" + name + "</b>:  " + removed.reason);
    });
    if (isThrough && !any)
        sayNotFound(lowered);
}

// The owner is asked when several playlists fit, since these may be more than he meant.
bool PlaylistCommands::mayDelete(const std::vector<std::string>& names) {
    constexpr std::size_t mostNamed = 10;
    if (names.size() < 2)
        return true;
    std::string all;
    for (std::size_t at = 0; at < names.size() && at < mostNamed; ++at)
        all += (at == 0 ? "" : ", ") + names[at];
    if (names.size() > mostNamed)
        all += ", ...";
    return dialogs_.ask("do you really wanna delete " + std::to_string(names.size()) +
                        " playlists: " + all + "?");
}

std::vector<std::string> PlaylistCommands::namesWith(const std::string& lowered) {
    std::vector<std::string> names = playlists_.names();
    std::erase_if(names, [&](const std::string& name) {
        return foldCase(name).find(lowered) == std::string::npos;
    });
    return names;
}

// Does something with each of the files, and serves events before it. A file that is gone when its
// turn comes is passed over. False when the run has ended meanwhile.
template <typename Action>
bool PlaylistCommands::forEach(const std::vector<std::string>& names, Action&& action) {
    const ThisRun run(state_);
    for (const std::string& name : names) {
        loop_.serveTurn();
        if (!run.lasts())
            return false;
        if (playlists_.exists(name))
            action(name);
    }
    return run.lasts();
}

void PlaylistCommands::sayNotFound(const std::string& text) {
    reply_.saychat("<b>" + text + "</b> not found");
}

void PlaylistCommands::save(const std::string& name) {
    if (!reply_.refusedInSilence("save"))
        saveAs(name + ".lkl");
}

void PlaylistCommands::saveAs(const std::string& fileName) {
    const auto [outcome, isNew] = playlists_.save(fileNameFor(fileName));
    if (!outcome)
        return reply_.sayOrBox("couldn't save playlist <b>" + fileName + "</b>:  " + outcome.reason,
                               "couldn't save playlist " + fileName + ":  " + outcome.reason);
    reply_.saychat((isNew ? "saved playlist <b>" : "saved over original playlist <b>") + fileName +
                   "</b>, <b>" + std::to_string(state_.masterList.count()) + "</b> files");
}

void PlaylistCommands::loadFile(const std::string& path) {
    const std::string name = songOfPath(path).title();
    const ThisRun run(state_);
    const Loaded loaded = playlists_.loadFrom(path, name);
    if (run.lasts())
        tellLoad(name, loaded, true);
}

void PlaylistCommands::loadSilently(const std::string& name) {
    tellLoad(name, playlists_.load(name), false);
}

// `says`: whether a load that went well is told, too.
void PlaylistCommands::tellLoad(const std::string& name, const Loaded& loaded, bool says) {
    const std::string files = std::to_string(state_.masterList.count()),
                      leftOut = std::to_string(loaded.leftOut);
    if (loaded.failed())
        reply_.sayOrBox("couldn't load playlist <b>" + name + "</b>:  " + loaded.reason,
                        "couldn't load playlist " + name + ":  " + loaded.reason);
    else if (loaded.leftOut > 0)
        reply_.sayOrBox("loaded playlist <b>" + name + "</b>, <b>" + files + "</b> files, <b>" +
                            leftOut + "</b> more don't fit",
                        "loaded playlist " + name + ", " + files + " files, " + leftOut +
                            " more don't fit");
    else if (says)
        reply_.saychat("loaded playlist <b>" + name + "</b>, <b>" + files + "</b> files");
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
    std::vector<std::string> names = playlists_.names();
    if (names.empty()) {
        reply_.saychat("there are no playlists to scroll");
        return;
    }
    const std::string opening = "scrolling <b>" + std::to_string(names.size()) + "</b> playlists";
    recitals_.begin(opening, betweenLines,
                    [this, names = std::move(names), next = std::size_t{0}]() mutable {
                        if (next == names.size())
                            return std::optional<double>();
                        const std::string& name = names[next++];
                        reply_.saychat("<b>" + std::to_string(next) + "</b>.  " + name);
                        return std::optional(betweenLines);
                    });
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
    showfilecount(state_);
    return true;
}

void PlaylistCommands::clearpl() {
    clearPlaylist(state_);
    showfilecount(state_);
    state_.playedMemory.clear();
    reply_.saychat("media playlist cleared");
}

} // namespace larkspin
