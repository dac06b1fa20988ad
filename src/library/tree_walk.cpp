#include "library/tree_walk.h"

#include "library/listers.h"
#include "library/playlist_row.h"
#include "text/fold.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

// Directories of other systems, whose names don't hide them here.
constexpr std::string_view wastebaskets[] = {"$recycle.bin", "recycler", "recycled",
                                             "system volume information"};

} // namespace

bool isHiddenDirectory(std::string_view name) {
    return name.starts_with('.') || std::ranges::count(wastebaskets, foldCase(name)) > 0;
}

std::string TreeWalk::takeNext() {
    std::string directory = std::move(pending_.back());
    pending_.pop_back();
    return directory;
}

// They are pushed in reverse, so that the first one by name is entered next.
void TreeWalk::goBelow(DirectoryListing& listing) {
    std::erase_if(listing.directories, isHiddenDirectory);
    sortByName(listing.directories);
    std::vector<std::string> paths;
    paths.reserve(listing.directories.size());
    for (const std::string& name : listing.directories)
        paths.push_back(joinPath(listing.path, name));
    reader_->expect(paths);
    std::move(paths.rbegin(), paths.rend(), std::back_inserter(pending_));
}

} // namespace larkspin
