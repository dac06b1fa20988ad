#include "library/tree_walk.h"

#include "library/listers.h"
#include "library/playlist_row.h"
#include "text/fold.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// Directories of other systems, whose names don't hide them here.
constexpr std::string_view wastebaskets[] = {"$recycle.bin", "recycler", "recycled",
                                             "system volume information"};

constexpr std::size_t fewest = 64; // directories that are expected while others are read

// Where the walk goes from there, in its order. What is hidden is taken out of the listing.
std::vector<std::string> enteredFrom(DirectoryListing& listing) {
    std::erase_if(listing.directories, isHiddenDirectory);
    sortByName(listing.directories);
    std::vector<std::string> paths;
    paths.reserve(listing.directories.size());
    for (const std::string& name : listing.directories)
        paths.push_back(joinPath(listing.path, name));
    return paths;
}

} // namespace

bool isHiddenDirectory(std::string_view name) {
    return name.starts_with('.') || std::ranges::count(wastebaskets, foldCase(name)) > 0;
}

std::string TreeWalk::takeNext() {
    taken_ = std::move(pending_.back());
    pending_.pop_back();
    return taken_.path;
}

DirectoryRead TreeWalk::read() {
    lookAhead();
    return taken_.read ? std::move(*taken_.read) : reader_->read(taken_.path);
}

// They are pushed in reverse, so that the first one by name is entered next.
void TreeWalk::goBelow(DirectoryListing& listing) {
    std::vector<std::string> paths = enteredFrom(listing);
    if (!taken_.read)
        reader_->expect(paths);
    latest_ = paths.size();
    for (auto path = paths.rbegin(); path != paths.rend(); ++path)
        pending_.push_back({std::move(*path)});
}

// Before the first of some that have only just come is read. Where they are few, some of those
// around the one that they are in, which have been expected for longer, are read before their turn,
// so that what is below them is expected, too: else the disk would rest at each shelf of ten albums
// while the program works on them, and the program while they are read.
void TreeWalk::lookAhead() {
    std::size_t soon = std::exchange(latest_, 0);
    if (soon == 0)
        return;
    const std::size_t latestLeft = soon - 1;
    for (std::size_t at = pending_.size() - latestLeft; at > 0 && soon < fewest; ++soon) {
        Pending& next = pending_[--at];
        if (!next.read) {
            next.read = reader_->read(next.path);
            reader_->expect(enteredFrom(next.read->listing));
        }
        soon += next.read->listing.directories.size();
    }
}

} // namespace larkspin
