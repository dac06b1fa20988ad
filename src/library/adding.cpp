#include "library/adding.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/scan.h"
#include "shell/app_state.h"
#include "shell/chosen_files.h"
#include "shell/media_types.h"
#include "shell/this_run.h"
#include "text/sought_text.h"

#include <algorithm>
#include <unordered_set>

namespace larkspin {

namespace {

// Tells whether a row is on the disk, for the results of a scan: what it has found is. These are
// put into a set only when somebody asks, which is seldom.
IsOnDisk asFoundIn(const RowList& found) {
    return [&found, texts = std::unordered_set<std::string_view>()](const Row& row) mutable {
        const bool isFirst = texts.empty(); // the first time that somebody asks
        for (int index = 0; isFirst && index < found.count(); ++index)
            texts.insert(found.row(index));
        return texts.contains(row.text());
    };
}

} // namespace

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
    const ThisRun run(state_);
    const int before = state_.masterList.count();
    const int leftOut = addmatching(state_.scanRows, text);
    const int after = state_.masterList.count();
    showfilecount(state_);
    reply_.saychat("added <b>" + std::to_string(after - before) + "</b> items for <b>" + text +
                   "</b> (<b>" + std::to_string(after) + "</b>)");
    if (run.lasts())
        sayLeftOut(leftOut);
}

void Adding::transfer() {
    const ThisRun run(state_);
    if (state_.scanRows.empty()) {
        reply_.saychat("there's nothing to transfer, you dumbass");
        return;
    }
    reply_.saychat("transferring <b>" + std::to_string(state_.scanRows.count()) +
                   "</b> files over to playlist");
    if (run.lasts())
        sayLeftOut(addScanned());
}

int Adding::addScanned() {
    const RowList& found = state_.scanRows;
    const IsOnDisk isOnDisk = asFoundIn(found);
    int leftOut = 0;
    for (int index = 0; index < found.count(); ++index)
        leftOut += addToPlaylistOnce(state_, found.share(index), isOnDisk) == Addition::leftOut;
    showfilecount(state_);
    return leftOut;
}

void Adding::scanAndOffer() {
    if (!scan_.scanDrives())
        return;
    if (dialogs_.ask("found " + std::to_string(state_.scanRows.count()) + " mp3s in " +
                     std::to_string(state_.knownDirs.count()) +
                     " directories, would you like to transfer them? or use add string on the "
                     "mp3s window to add individual songs" +
                     scan_.notes()))
        boxLeftOut(addScanned());
}

std::optional<Adding::Tree> Adding::addTree(const std::string& directory) {
    const ThisRun run(state_);
    if (!scan_.scanTree(directory))
        return std::nullopt;
    Tree tree{.found = state_.scanRows.count(), .notes = scan_.notes()};
    const int before = state_.masterList.count();
    tree.leftOut = addScanned();
    tree.added = state_.masterList.count() - before;
    return run.lasts() ? std::optional(tree) : std::nullopt;
}

int Adding::addmatching(RowList& list, const std::string& text) {
    const SoughtText wanted(text);
    const IsOnDisk isOnDisk = asFoundIn(list);
    int leftOut = 0;
    for (int index = 0; index < list.count(); ++index) {
        if (!wanted.isIn(list.folded(index)))
            continue;
        list.setCurrentIndex(index);
        leftOut += addToPlaylistOnce(state_, list.share(index), isOnDisk) == Addition::leftOut;
    }
    return leftOut;
}

void Adding::sayLeftOut(int count) {
    if (count > 0)
        reply_.sayOrBox(leftOutText(count), leftOutText(count, "", ""));
}

void Adding::boxLeftOut(int count) {
    if (count > 0)
        dialogs_.box(leftOutText(count, "", ""));
}

FileQuestion Adding::question(const std::string& wanted) const {
    return {.title = wanted + " - your current media filter is " + state_.mediaFilter,
            .types = {fileTypeOf(mediaTypeOf(state_.mediaFilter))}};
}

void Adding::addFiles() {
    const ThisRun run(state_);
    const auto chosen = dialogs_.openFiles(question("add file(s)"));
    const auto there = thoseThere(chosen, files_, dialogs_);
    if (run.lasts())
        addFiles(there);
}

// The row of a single file has a backslash after its directory, and adding it doesn't clear the
// memory of the random pick. Several files do it the other way round.
void Adding::addFiles(const std::vector<std::string>& paths) {
    const ThisRun run(state_);
    int leftOut = 0;
    for (const std::string& path : paths) {
        const Song song = songOfPath(path);
        if (song.title().empty() || song.directory.empty())
            continue; // the name of a directory, or of nothing
        const std::string directory =
            paths.size() == 1 ? joinPath(song.directory, "") : song.directory;
        const Addition came =
            addToPlaylistOnce(state_, Row(makerow(song.name, song.extension, directory)),
                              [&](const Row& other) { return isOnDisk(other) && run.lasts(); });
        if (!run.lasts())
            return;
        leftOut += came == Addition::leftOut;
        if (came == Addition::added)
            showfilecount(state_);
    }
    if (paths.size() > 1)
        state_.playedMemory.clear();
    boxLeftOut(leftOut);
}

// Events are served while the disk is asked.
bool Adding::isOnDisk(const Row& row) {
    const Song song = songOfRow(row.text());
    const DirectoryRead read = directories_.list(std::string(plainDirectory(song.directory)));
    return std::ranges::count(read.listing.files, song.title()) > 0;
}

FileLister::Shown Adding::askForDirectory() {
    const auto path = dialogs_.openDirectory(question("add a directory"));
    if (!path)
        return nullptr;
    const Place place = placeAt(*path);
    // The owner may have named a file in the directory that he means.
    return place.isDirectory || place.isUnread ? place.shown
                                               : placeAt(songOfPath(*path).directory).shown;
}

// The listing is kept with the place, since File1 may show another directory by the time that it is
// added.
Adding::Place Adding::placeAt(const std::string& path) {
    const DirectoryRead::Outcome outcome = File1_.show(path);
    if (outcome == DirectoryRead::Outcome::listed)
        return {.isDirectory = true, .shown = File1_.shown()};
    if (outcome == DirectoryRead::Outcome::missing ||
        outcome == DirectoryRead::Outcome::noDirectory)
        return {};
    UnreadDirectories unread;
    unread.note(path, outcome);
    dialogs_.box(unread.told("", ""));
    return {.isUnread = true};
}

// The rows have a backslash after their directory, unlike those of a scan.
void Adding::addDirectory(const DirectoryListing& chosen) {
    const std::string directory = joinPath(chosen.path, "");
    const auto isOneOfThem = [&](const Row& row) {
        const Song song = songOfRow(row.text());
        return plainDirectory(song.directory) == plainDirectory(directory) &&
               std::ranges::count(chosen.files, song.title()) > 0;
    };
    int leftOut = 0;
    for (const std::string& name : chosen.files)
        leftOut += addToPlaylistOnce(state_, Row(rowOfFile(name, directory)), isOneOfThem) ==
                   Addition::leftOut;
    showAdded(leftOut);
}

void Adding::addString(const std::string& text) {
    showAdded(addmatching(state_.scanRows, text));
}

void Adding::showAdded(int leftOut) {
    showfilecount(state_);
    state_.playedMemory.clear();
    boxLeftOut(leftOut);
}

} // namespace larkspin
