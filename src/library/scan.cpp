#include "library/scan.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "shell/this_run.h"

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
    const ThisRun run(state_);
    state_.knownDirs.clear();
    state_.scanRows.clear();
    const Walk walk = queueTree(run);
    listers_.File1.refresh();
    listFiles(walk, run);
    if (run.lasts())
        sayFound();
}

void Scan::Command4z(const ThisRun& run) {
    listFiles(queueTree(run), run);
}

Scan::Walk Scan::queueTree(const ThisRun& run) {
    Walk walk = walkdirs(state_.scanRoot, run);
    state_.dirQueue.clear();
    for (const Visit& visit : walk)
        state_.dirQueue.add(visit.directory);
    return walk;
}

void Scan::scanpc() {
    const ThisRun run(state_);
    clearResults();
    reply_.saychat("scanning pc for <b>" + state_.mediaFilter + "</b>, please wait..");
    scanRoots(run);
    if (run.lasts())
        sayFound();
}

bool Scan::scanDrives() {
    const ThisRun run(state_);
    clearResults();
    scanRoots(run);
    return run.lasts();
}

void Scan::clearResults() {
    state_.driveRoots.clear();
    state_.knownDirs.clear();
    state_.scanRows.clear();
}

void Scan::scanRoots(const ThisRun& run) {
    for (const std::string& drive : listers_.Drive1.list()) {
        const std::string root = drive.substr(0, drive.find(':')) + ":\\";
        if (!isinlist(state_.driveRoots, root))
            state_.driveRoots.add(root);
    }
    for (int index = 0; run.lasts() && index < state_.driveRoots.count(); ++index) {
        state_.scanRoot = state_.driveRoots.row(index);
        Command4z(run);
        pause_(0.6);
    }
}

// Depth-first. A directory that can't be entered has no subdirectories. A walk ends where its
// queue would be full.
Scan::Walk Scan::walkdirs(std::string directory, const ThisRun& run) {
    Walk walk;
    std::vector<std::string> pending; // the next to enter stands last
    for (;;) {
        FileLister::Shown listing;
        if (listers_.Dir1.setPath(directory)) {
            const auto& entries = listers_.Dir1.list();
            const auto end =
                entries.begin() + static_cast<std::ptrdiff_t>(std::min(entries.size(), entryLimit));
            std::copy(std::make_reverse_iterator(end), std::make_reverse_iterator(entries.begin()),
                      std::back_inserter(pending));
            listing = listers_.File1.select(listers_.Dir1.giveListing());
        }
        walk.push_back({std::move(directory), listers_.File1.pattern(), std::move(listing)});
        loop_.serveTurn();
        if (!run.lasts())
            return {};
        if (pending.empty() || walk.size() == RowList::limit)
            return walk;
        directory = std::move(pending.back());
        pending.pop_back();
    }
}

// A directory that can't be entered leaves File1 where it was, so that the one before it is
// listed once more.
void Scan::listFiles(const Walk& walk, const ThisRun& run) {
    FileLister::Shown listed = listers_.File1.shown();
    for (const Visit& visit : walk) {
        if (enter(visit))
            listed = listers_.File1.shown();
        for (const std::string& name : listed->files) {
            loop_.serveTurn();
            if (!run.lasts())
                return;
            noteFile(name, listed->path);
        }
    }
}

bool Scan::enter(const Visit& visit) {
    if (listers_.File1.pattern() != visit.pattern) // it has changed meanwhile
        return listers_.File1.setPath(visit.directory);
    if (visit.listing)
        listers_.File1.show(visit.listing);
    return visit.listing != nullptr;
}

void Scan::noteFile(const std::string& fileName, const std::string& directory) {
    if (!state_.scanRows.full())
        state_.scanRows.add(rows_.write(rowOfFile(fileName, directory)));
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
