#include "library/scan.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/tree_walk.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "shell/this_run.h"
#include "text/fold.h"
#include "text/parts.h"

#include <utility>

namespace larkspin {

namespace {

struct AtWork {
    explicit AtWork(int& all) : count(all) { ++count; }
    ~AtWork() { --count; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;
    int& count;
};

} // namespace

std::optional<std::string> Scan::lookingIn() const {
    return atWork_ > 0 ? std::optional(state_.scanRoot) : std::nullopt;
}

void Scan::Command4_Click() {
    const AtWork atWork(atWork_);
    if (scanTrees({state_.scanRoot}, {}))
        sayUnread();
}

bool Scan::scanTrees(const std::vector<std::string>& roots, const Take& take) {
    const ThisRun run(state_);
    state_.dirQueue.clear();
    clearResults();
    for (const std::string& root : roots)
        if (run.lasts())
            walkdirs(root, run, take);
    if (run.lasts())
        sayFound();
    return run.lasts();
}

bool Scan::scanTree(const std::string& root) {
    const ThisRun run(state_);
    state_.dirQueue.clear();
    clearResults();
    walkdirs(root, run, {});
    return run.lasts();
}

void Scan::Command4z(const ThisRun& run) {
    state_.dirQueue.clear();
    walkdirs(state_.scanRoot, run, {});
}

void Scan::scanpc() {
    const ThisRun run(state_);
    state_.driveRoots.clear();
    clearResults();
    reply_.saychat("scanning pc for <b>" + state_.mediaFilter + "</b>, please wait..");
    scanRoots(run);
    if (run.lasts())
        sayFound();
    if (run.lasts())
        sayUnread();
}

bool Scan::scanDrives() {
    const ThisRun run(state_);
    state_.driveRoots.clear();
    clearResults();
    scanRoots(run);
    return run.lasts();
}

void Scan::clearResults() {
    state_.knownDirs.clear();
    state_.scanRows.clear();
    leftOut_ = 0;
    unread_ = {};
}

void Scan::scanRoots(const ThisRun& run) {
    const AtWork atWork(atWork_);
    for (const std::string& drive : listers_.Drive1.list()) {
        // A drive may be listed with a label after its letter.
        const std::string root = std::string(partedAt(drive, ':').head) + ":\\";
        if (!isinlist(state_.driveRoots, root))
            state_.driveRoots.add(root);
    }
    for (int index = 0; run.lasts() && index < state_.driveRoots.count(); ++index) {
        state_.scanRoot = state_.driveRoots.row(index);
        Command4z(run);
        pause_(0.6);
    }
}

// A directory that can't be entered has no subdirectories.
void Scan::walkdirs(const std::string& root, const ThisRun& run, const Take& take) {
    TreeWalk walk(directories_, root);
    for (bool isRoot = true; !walk.isOver(); isRoot = false) {
        const std::string directory = walk.takeNext();
        state_.dirQueue.add(directory);
        DirectoryRead read = walk.read();
        if (isRoot && !take && read.outcome == DirectoryRead::Outcome::missing)
            read = readAlike(directory); // the owner named it, and may have spelled it otherwise
        loop_.serveTurn();
        if (!run.lasts())
            return;
        if (!read.isListed()) {
            noteUnread(directory, read.outcome, isRoot);
            continue;
        }
        walk.goBelow(read.listing);
        read.listing.files = filesThatFit(std::move(read.listing.files), listers_.File1.pattern());
        if (take)
            take(read.listing);
        listFiles(read.listing, run);
        if (!run.lasts())
            return;
    }
}

// Reads the directory whose name is this text in another case or spelling, if there is only one.
// The names of the directories above it may differ in the same way.
DirectoryRead Scan::readAlike(const std::string& path) {
    const std::string_view plain = plainDirectory(path);
    const auto slash = plain.rfind('\\');
    if (slash == std::string_view::npos || isDriveRoot(plain))
        return DirectoryRead(DirectoryRead::Outcome::missing);
    const std::string above(plainDirectory(joinPath(plain.substr(0, slash), "")));
    DirectoryRead around = directories_.list(above);
    if (around.outcome == DirectoryRead::Outcome::missing)
        around = readAlike(above);
    std::vector<std::string>& names = around.listing.directories;
    std::erase_if(names, [&](const std::string& name) {
        return !equalFolded(name, plain.substr(slash + 1));
    });
    return names.size() == 1 ? directories_.list(joinPath(around.listing.path, names.front()))
                             : DirectoryRead(DirectoryRead::Outcome::missing);
}

void Scan::listFiles(const DirectoryListing& listing, const ThisRun& run) {
    for (const std::string& name : listing.files) {
        loop_.serveTurn();
        if (!run.lasts())
            return;
        noteFile(name, listing.path);
    }
}

// A directory counts as known when a row from it has been added.
void Scan::noteFile(const std::string& fileName, const std::string& directory) {
    if (state_.scanRows.full()) {
        ++leftOut_;
        return;
    }
    state_.scanRows.add(rows_.write(rowOfFile(fileName, directory)));
    // Most files lie where the one before them did.
    const RowList& known = state_.knownDirs;
    if (known.row(known.count() - 1) != directory && !known.contains(directory))
        state_.knownDirs.add(directory);
}

// The owner isn't told of directories that the system keeps from him, or that have gone since they
// were seen, except of one that he named.
void Scan::noteUnread(const std::string& directory, DirectoryRead::Outcome outcome, bool isRoot) {
    const bool isFault =
        outcome == DirectoryRead::Outcome::failed || outcome == DirectoryRead::Outcome::unanswered;
    if (isRoot || isFault)
        unread_.note(directory, outcome);
}

std::string Scan::notes() const {
    return (leftOut_ > 0 ? " - " + leftOutText(leftOut_, "", "") : "") +
           (unread_.empty() ? "" : " - " + unread_.told("", ""));
}

void Scan::sayFound() {
    const ThisRun run(state_);
    const int leftOut = leftOut_;
    reply_.saychat("found <b>" + std::to_string(state_.scanRows.count()) + "</b> (<b>" +
                   state_.mediaFilter + "</b>) in <b>" + std::to_string(state_.knownDirs.count()) +
                   "</b> directories");
    if (leftOut > 0 && run.lasts())
        reply_.sayOrBox(leftOutText(leftOut), leftOutText(leftOut, "", ""));
}

void Scan::sayUnread() {
    const UnreadDirectories unread = unread_;
    if (!unread.empty())
        reply_.sayOrBox(unread.told(), unread.told("", ""));
}

} // namespace larkspin
