#include "library/refresh.h"

#include "chat/reply.h"
#include "library/listers.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/scan.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "shell/this_run.h"
#include "text/fold.h"
#include "text/sought_text.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace larkspin {

namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};

using Texts = std::unordered_set<std::string, TextHash, std::equal_to<>>;
using Views = std::unordered_set<std::string_view>;

std::string_view directoryOf(const Row& row) {
    return plainDirectory(rowdir(row.text()));
}

// The directories of the rows, each once, in the order of the rows. A row that names no directory
// has none to list.
std::vector<std::string> directoriesOf(const RowList& list) {
    Views seen;
    std::vector<std::string> directories;
    for (int index = 0; index < list.count(); ++index) {
        const std::string_view directory = directoryOf(list.share(index));
        if (!directory.empty() && seen.insert(directory).second)
            directories.emplace_back(directory);
    }
    return directories;
}

// The directory above this one; empty above the root of a drive.
std::string_view above(std::string_view directory) {
    if (isDriveRoot(directory))
        return {};
    const std::string_view head = directory.substr(0, directory.rfind('\\') + 1);
    return isDriveRoot(head) ? head : head.substr(0, head.empty() ? 0 : head.size() - 1);
}

// The directories that lie below none of the others.
std::vector<std::string> topmostOf(const std::vector<std::string>& directories) {
    const Views all(directories.begin(), directories.end());
    std::vector<std::string> topmost;
    std::ranges::copy_if(directories, std::back_inserter(topmost), [&](const std::string& one) {
        std::string_view upwards = above(one);
        while (!upwards.empty() && !all.contains(upwards))
            upwards = above(upwards);
        return upwards.empty();
    });
    return topmost;
}

// Knows which rows events have taken out of the list while directories were listed.
class Meanwhile {
public:
    Meanwhile(const RowList& before, const RowList& now) : before_(before) {
        if (before.rowsRevision() == now.rowsRevision())
            return;
        isChanged_ = true;
        for (std::string& directory : directoriesOf(before))
            gone_.insert(std::move(directory));
        for (const std::string& directory : directoriesOf(now))
            gone_.erase(directory);
    }

    // Whether the owner has taken the row out, or all from its directory.
    bool hasTakenOut(const Row& row) const {
        return isChanged_ && (holdsRow(before_, row) || gone_.contains(directoryOf(row)));
    }

private:
    const RowList& before_;
    bool isChanged_ = false;
    Texts gone_;
};

} // namespace

// The files on the disk, in the directories that could be listed.
struct Refresh::Listed {
    Texts directories, unread; // as rows name them
    std::vector<Row> rows;
    RowWriter writer;
};

class Refresh::AtWork {
public:
    explicit AtWork(Refresh& refresh) : refresh_(refresh), before_(refresh.runAtWork_) {
        refresh_.runAtWork_ = refresh_.state_.run;
    }
    ~AtWork() { refresh_.runAtWork_ = before_; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

private:
    Refresh& refresh_;
    std::optional<unsigned> before_; // of a run that ended in the middle
};

std::vector<std::string> Refreshed::notes(const std::string& mark,
                                          const std::string& unmark) const {
    std::vector<std::string> notes;
    if (!unread.empty())
        notes.push_back(unread.told(mark, unmark) + " - kept " + mark + std::to_string(kept) +
                        unmark + " songs");
    if (leftOut > 0)
        notes.push_back(leftOutText(leftOut, mark, unmark));
    return notes;
}

bool Refresh::isAtWork() {
    if (runAtWork_ != state_.run)
        return false;
    reply_.sayOrBox("im still refreshing, wait");
    return true;
}

void Refresh::say(const Refreshed& refreshed) {
    const ThisRun run(state_);
    const auto said = refreshed.notes(), boxed = refreshed.notes("", "");
    for (std::size_t index = 0; run.lasts() && index < said.size(); ++index)
        reply_.sayOrBox(said[index], boxed[index]);
}

std::optional<Refreshed> Refresh::refreshDirectories() {
    const AtWork atWork(*this);
    // A copy, since events may change the list while directories are listed. It shares the rows.
    const RowList before = state_.masterList;
    const std::string resumeBefore = state_.resumeIndex;
    const std::vector<std::string> directories = directoriesOf(before);
    Listed listed;
    listed.rows.reserve(static_cast<std::size_t>(before.count()));
    Refreshed refreshed;
    if (!list(directories, listed, refreshed))
        return std::nullopt;
    const bool hasMoved =
        state_.masterIndex() != before.currentIndex() || state_.resumeIndex != resumeBefore;
    bringInLine(before, listed, refreshed);
    state_.playlistView.clearSelection();
    state_.playlistView.setCurrentIndex(-1);
    if (!hasMoved) // a song has started meanwhile: the one after it is next
        state_.setMasterIndex(-1);
    showfilecount(state_);
    refreshed.grown = state_.masterList.count() - before.count();
    return refreshed;
}

bool Refresh::list(const std::vector<std::string>& paths, Listed& listed, Refreshed& refreshed) {
    const ThisRun run(state_);
    const auto reader = directories_.reader();
    // The reader may ask for several directories ahead if it knows which ones come.
    reader->expect(paths);
    for (const std::string& path : paths) {
        const DirectoryRead read = reader->read(path);
        loop_.serveTurn();
        if (!run.lasts())
            return false;
        if (read.isListed()) {
            listed.directories.insert(path);
            heyaz(read.listing, listed);
        } else {
            listed.unread.insert(path);
            refreshed.unread.note(path, read.outcome);
        }
    }
    return true;
}

void Refresh::heyaz(const DirectoryListing& listing, Listed& listed) const {
    // Rows may spell the directory as it was asked for, or as it is listed.
    listed.directories.insert(listing.path);
    for (const std::string& name : filesThatFit(listing.files, File1_.pattern()))
        listed.rows.push_back(listed.writer.write(rowOfFile(name, listing.path)));
}

void Refresh::bringInLine(const RowList& before, const Listed& listed, Refreshed& refreshed) {
    const Meanwhile meanwhile(before, state_.masterList);
    std::unordered_map<std::string_view, bool> onDisk; // and whether they are in the list
    onDisk.reserve(listed.rows.size());
    for (const Row& row : listed.rows)
        onDisk.emplace(row.text(), false);
    // From the end, since rows are removed on the way. A row goes if its directory was listed and
    // its file isn't there, or if an earlier row stood for the same file.
    for (int index = state_.masterList.count() - 1; index >= 0; --index) {
        const Row row = state_.masterList.share(index);
        const auto there = onDisk.find(row.text());
        if (there != onDisk.end() && !std::exchange(there->second, true))
            continue;
        const std::string_view directory = directoryOf(row);
        refreshed.kept += listed.unread.contains(directory);
        if (listed.directories.contains(directory))
            removeFromPlaylist(state_, index);
    }
    const auto isInList = [](const auto& row) { return row.second; };
    if (std::ranges::all_of(onDisk, isInList))
        return;
    for (const Row& row : listed.rows)
        // A row that the owner has taken out meanwhile stays out.
        if (!onDisk.at(row.text()) && !meanwhile.hasTakenOut(row) && !addToPlaylist(state_, row))
            ++refreshed.leftOut;
}

void Refresh::ref(const std::string& text) {
    if (reply_.refusedInSilence("scanning") || isAtWork())
        return;
    const ThisRun run(state_);
    if (state_.masterList.empty())
        reply_.saychat("nothin to refresh, bitch");
    if (run.lasts())
        refreshmatching(text);
    if (run.lasts())
        showfilecount(state_);
}

// Lists the trees below the directories that fit. One that the walk of its tree passes over, or
// couldn't look into, is listed by itself.
void Refresh::refreshmatching(const std::string& text) {
    const AtWork atWork(*this);
    const RowList before = state_.masterList;
    const SoughtText wanted(text);
    std::vector<std::string> directories = directoriesOf(before);
    std::erase_if(directories,
                  [&](const std::string& directory) { return !wanted.isIn(foldCase(directory)); });
    if (directories.empty()) {
        if (!before.empty())
            reply_.saychat("<b>" + text + "</b> not found");
        return;
    }
    Listed listed;
    Refreshed refreshed;
    const std::vector<std::string> roots = topmostOf(directories);
    state_.scanRoot = roots.back();
    if (!scan_.scanTrees(roots, [&](const DirectoryListing& found) { heyaz(found, listed); }))
        return;
    std::erase_if(directories, [&](const std::string& directory) {
        return listed.directories.contains(directory);
    });
    if (!list(directories, listed, refreshed))
        return;
    bringInLine(before, listed, refreshed);
    say(refreshed);
}

} // namespace larkspin
