// A walk through a directory and all that is below it: depth-first, the directories of each by
// name. It passes over what desktops hide: directories whose name begins with a dot, and
// wastebaskets. One that it begins at is walked, whatever its name.
#pragma once

#include "library/directories.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class TreeWalk {
public:
    TreeWalk(Directories& directories, std::string root)
        : reader_(directories.reader()), pending_{std::move(root)} {}

    bool isOver() const { return pending_.empty(); }
    std::string takeNext(); // a directory; there must be one

    DirectoryRead read(const std::string& directory) { return reader_->read(directory); }

    // The directories in this one come next. Those that are hidden are taken out of the listing.
    void goBelow(DirectoryListing& listing);

private:
    std::unique_ptr<DirectoryReader> reader_;
    std::vector<std::string> pending_; // the next to enter stands last
};

// Whether a walk passes over a directory of that name.
bool isHiddenDirectory(std::string_view name);

} // namespace larkspin
