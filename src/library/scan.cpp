#include "library/scan.h"

#include "chat/reply.h"
#include "library/listers.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

// As many subdirectories of one directory as a walk enters.
constexpr std::size_t entryLimit = 1001;

} // namespace

void Scan::Command4_Click() {
    state_.knownDirs.clear();
    state_.scanRows.clear();
    ReadAhead read = queueTree();
    listers_.File1.refresh();
    listQueue(std::move(read));
    sayFound();
}

void Scan::Command4z() {
    listQueue(queueTree());
}

Scan::ReadAhead Scan::queueTree() {
    state_.dirQueue.clear();
    state_.dirQueue.add(state_.scanRoot);
    return walkdirs(state_.scanRoot);
}

void Scan::scanpc() {
    clearResults();
    reply_.saychat("scanning pc for <b>" + state_.mediaFilter + "</b>, please wait..");
    scanRoots();
    sayFound();
}

void Scan::scanDrives() {
    clearResults();
    scanRoots();
}

void Scan::clearResults() {
    state_.driveRoots.clear();
    state_.knownDirs.clear();
    state_.scanRows.clear();
}

void Scan::scanRoots() {
    for (const std::string& drive : listers_.Drive1.list()) {
        const std::string root = drive.substr(0, drive.find(':')) + ":\\";
        if (!isinlist(state_.driveRoots, root))
            state_.driveRoots.add(root);
    }
    for (int index = 0; index < state_.driveRoots.count(); ++index) {
        state_.scanRoot = state_.driveRoots.row(index);
        Command4z();
        pause_(0.6);
    }
}

// Depth-first below the path, into dirQueue. A directory that can't be entered has no
// subdirectories. With the queue full there is nothing left to find.
Scan::ReadAhead Scan::walkdirs(const std::string& path) {
    ReadAhead read{listers_.File1.pattern(), {}};
    std::vector<std::string> pending; // the next to enter stands last
    std::string directory = path;
    for (;;) {
        const bool entered = listers_.Dir1.setPath(directory);
        read.visits.push_back({std::move(directory), entered, {}});
        if (entered) {
            const auto& entries = listers_.Dir1.list();
            const auto end =
                entries.begin() + static_cast<std::ptrdiff_t>(std::min(entries.size(), entryLimit));
            std::copy(std::make_reverse_iterator(end), std::make_reverse_iterator(entries.begin()),
                      std::back_inserter(pending));
            DirectoryListing& listing = read.visits.back().listing;
            listing = listers_.Dir1.giveListing();
            listers_.File1.select(listing.files);
        }
        loop_.serveTurn();
        if (pending.empty() || !state_.dirQueue.add(pending.back()))
            return read;
        directory = std::move(pending.back());
        pending.pop_back();
    }
}

void Scan::listQueue(ReadAhead read) {
    FileLister& File1 = listers_.File1;
    const int last = state_.dirQueue.count() - 1;
    for (int queued = 0; queued <= last; ++queued) {
        enter(queued, read);
        for (int index = 0; index < File1.count(); ++index) {
            loop_.serveTurn();
            if (index < File1.count())
                noteFile(File1.name(index), File1.path());
        }
    }
}

// A directory that can't be entered leaves File1 where it was, so that the one before it is
// listed once more.
void Scan::enter(int queued, ReadAhead& read) {
    FileLister& File1 = listers_.File1;
    const std::string directory(state_.dirQueue.row(queued));
    const auto visited = static_cast<std::size_t>(queued);
    if (visited < read.visits.size() && read.visits[visited].queued == directory &&
        read.pattern == File1.pattern()) {
        ReadAhead::Visit& visit = read.visits[visited];
        if (visit.entered)
            File1.show(std::move(visit.listing.path), std::move(visit.listing.files));
    } else {
        File1.setPath(directory);
    }
}

void Scan::noteFile(const std::string& fileName, const std::string& directory) {
    if (!state_.scanRows.full())
        state_.scanRows.add(rowOfFile(fileName, directory));
    // Most files lie where the one before them did.
    const RowList& known = state_.knownDirs;
    if (known.row(known.count() - 1) != directory && !known.contains(directory))
        state_.knownDirs.add(directory);
}

void Scan::sayFound() {
    reply_.saychat("found <b>" + std::to_string(state_.scanRows.count()) + "</b> (<b>" +
                   state_.mediaFilter + "</b>) in <b>" + std::to_string(state_.knownDirs.count()) +
                   "</b> directories");
}

} // namespace larkspin
