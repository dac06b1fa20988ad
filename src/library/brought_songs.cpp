#include "library/brought_songs.h"

#include "library/listers.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/tree_walk.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "shell/files.h"
#include "shell/media_types.h"
#include "shell/this_run.h"
#include "text/wildcard.h"

#include <algorithm>

namespace larkspin {

namespace {

bool isAddress(std::string_view path) {
    return path.find("://") != path.npos;
}

std::string playable() {
    return patternOf(mediaTypeOf(anyMediaType));
}

} // namespace

std::optional<Brought> BroughtSongs::bring(const std::string& path) {
    Brought brought{.path = path};
    if (isAddress(path)) {
        brought.outcome = Brought::Outcome::elsewhere;
        return brought;
    }
    const ThisRun run(state_);
    const Files::Presence presence = files_.presence(path);
    if (!run.lasts())
        return std::nullopt;
    bool lasts = true;
    if (presence == Files::Presence::unanswered)
        brought.outcome = Brought::Outcome::unanswered;
    else if (presence == Files::Presence::there)
        lasts = bringFile(brought);
    else
        lasts = bringDirectory(brought);
    if (!lasts)
        return std::nullopt;
    if (brought.added > 0) {
        showfilecount(state_);
        state_.playedMemory.clear();
    }
    return brought;
}

// False when the run has ended, as below.
bool BroughtSongs::bringFile(Brought& brought) {
    const Song song = songOfPath(brought.path);
    if (filesThatFit({song.title()}, playable()).empty()) {
        brought.outcome = Brought::Outcome::unplayable;
        return true;
    }
    const ThisRun run(state_);
    brought.outcome = Brought::Outcome::file;
    const auto isOnDisk = [&](const Row& other) {
        return files_.exists(rowpath(other.text())) && run.lasts();
    };
    brought.row = add(song.title(), std::string(plainDirectory(song.directory)), isOnDisk, brought);
    return run.lasts();
}

bool BroughtSongs::bringDirectory(Brought& brought) {
    const ThisRun run(state_);
    TreeWalk walk(directories_, brought.path);
    for (bool isRoot = true; !walk.isOver(); isRoot = false) {
        const std::string directory = walk.takeNext();
        DirectoryRead read = walk.read();
        loop_.serveTurn();
        if (!run.lasts())
            return false;
        using Outcome = DirectoryRead::Outcome;
        if (isRoot && (read.outcome == Outcome::missing || read.outcome == Outcome::noDirectory)) {
            brought.outcome = read.outcome == Outcome::missing ? Brought::Outcome::missing
                                                               : Brought::Outcome::unplayable;
            return true;
        }
        brought.outcome = Brought::Outcome::directory;
        if (read.isListed()) {
            walk.goBelow(read.listing);
            addAll(read.listing, brought);
        } else if (isRoot || read.outcome == Outcome::failed ||
                   read.outcome == Outcome::unanswered) {
            brought.unread.note(directory, read.outcome);
        }
    }
    return true;
}

void BroughtSongs::addAll(const DirectoryListing& listing, Brought& brought) {
    const auto isOneOfThem = [&](const Row& other) {
        const Song song = songOfRow(other.text());
        return plainDirectory(song.directory) == listing.path &&
               std::ranges::count(listing.files, song.title()) > 0;
    };
    for (const std::string& name : filesThatFit(listing.files, playable()))
        add(name, listing.path, isOneOfThem, brought);
}

// The row that the list has of the file in the end.
Row BroughtSongs::add(std::string_view fileName, const std::string& directory,
                      const IsOnDisk& isOnDisk, Brought& brought) {
    const Row withBackslash(rowOfFile(fileName, joinPath(directory, "")));
    if (holdsRow(state_.masterList, withBackslash)) {
        ++brought.there;
        return withBackslash;
    }
    const Row row(rowOfFile(fileName, directory));
    const Addition addition = addToPlaylistOnce(state_, row, isOnDisk);
    if (addition == Addition::leftOut) {
        ++brought.leftOut;
        return Row();
    }
    const bool isNew = addition == Addition::added;
    ++(isNew ? brought.added : brought.there);
    brought.filtered +=
        isNew && !fitsAnyFolded(fileName, patternOf(mediaTypeOf(state_.mediaFilter)));
    return row;
}

} // namespace larkspin
