#include "library/adding.h"

#include "chat/reply.h"
#include "library/media_filter.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/scan.h"
#include "shell/app_state.h"
#include "shell/this_run.h"
#include "text/fold.h"

namespace larkspin {

void Adding::scan(const std::string& directory) {
    if (reply_.refusedInSilence("scanning"))
        return;
    const ThisRun run(state_);
    const std::string root = directories_.drivePath(directory);
    reply_.saychat("scanning directory <b>" + root + "</b> for <b>" + state_.mediaFilter);
    if (!run.lasts())
        return;
    state_.scanRoot = root;
    scan_.Command4_Click();
}

void Adding::listadd(const std::string& text) {
    if (reply_.refusedInSilence("scanning"))
        return;
    const int before = state_.masterList.count();
    addmatching(state_.scanRows, text);
    const int after = state_.masterList.count();
    showFileCountLabel(state_);
    reply_.saychat("added <b>" + std::to_string(after - before) + "</b> items for <b>" + text +
                   "</b> (<b>" + std::to_string(after) + "</b>)");
    showFileCountEntry(state_);
}

void Adding::transfer() {
    if (state_.scanRows.empty()) {
        reply_.saychat("there's nothing to transfer, you dumbass");
        return;
    }
    reply_.saychat("transferring <b>" + std::to_string(state_.scanRows.count()) +
                   "</b> files over to playlist");
    addScanned();
}

void Adding::addScanned() {
    for (int index = 0; index < state_.scanRows.count(); ++index)
        addToPlaylistOnce(state_, state_.scanRows.share(index));
    showfilecount(state_);
}

void Adding::scanAndOffer() {
    if (!scan_.scanDrives())
        return;
    if (dialogs_.ask("found " + std::to_string(state_.scanRows.count()) + " mp3s in " +
                     std::to_string(state_.knownDirs.count()) +
                     " directories, would you like to transfer them? or use add string on the "
                     "mp3s window to add individual songs"))
        addScanned();
}

bool Adding::addmatching(RowList& list, const std::string& text) {
    const std::string wanted = foldCase(text);
    bool matched = false;
    for (int index = 0; index < list.count(); ++index) {
        if (list.folded(index).find(wanted) == std::string::npos)
            continue;
        matched = true;
        list.setCurrentIndex(index);
        addToPlaylistOnce(state_, list.share(index));
    }
    return matched;
}

FileQuestion Adding::question(const std::string& wanted) const {
    return {.title = wanted + " - your current media filter is " + state_.mediaFilter,
            .types = {fileTypeOf(state_.mediaFilter)}};
}

void Adding::addFiles() {
    addFiles(dialogs_.openFiles(question("add file(s)")));
}

// A single file brings its directory with the backslash behind it, and leaves the memory of the
// random pick alone.
void Adding::addFiles(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        const Song song = songOfPath(path);
        if (song.title().empty() || song.directory.empty())
            continue; // the name of a directory, or of nothing
        const std::string directory =
            paths.size() == 1 ? joinPath(song.directory, "") : song.directory;
        if (addToPlaylistOnce(state_, Row(makerow(song.name, song.extension, directory))))
            showfilecount(state_);
    }
    if (paths.size() > 1)
        state_.playedMemory.clear();
}

// The listing stays what it is, whatever File1 shows by the time that it is added.
FileLister::Shown Adding::askForDirectory() {
    const auto path = dialogs_.openDirectory(question("add a directory"));
    const bool isThere =
        path && (File1_.setPath(*path) || File1_.setPath(songOfPath(*path).directory));
    return isThere ? File1_.shown() : nullptr;
}

FileLister::Shown Adding::directoryAt(const std::string& path) {
    return File1_.setPath(path) ? File1_.shown() : nullptr;
}

// Each directory with the backslash behind it, which a scan doesn't write.
void Adding::addDirectory(const DirectoryListing& chosen) {
    const std::string directory = joinPath(chosen.path, "");
    for (const std::string& name : chosen.files)
        addToPlaylistOnce(state_, Row(rowOfFile(name, directory)));
    showfilecount(state_);
    state_.playedMemory.clear();
}

void Adding::addString(const std::string& text) {
    addmatching(state_.scanRows, text);
    showfilecount(state_);
    state_.playedMemory.clear();
}

} // namespace larkspin
