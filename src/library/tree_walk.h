// A walk through a directory and all that is below it: depth-first, the directories of each by
// name. It passes over what desktops hide: directories whose name begins with a dot, and
// wastebaskets. One that it begins at is walked, whatever its name.
#pragma once

#include "library/directories.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class TreeWalk {
public:
    TreeWalk(Directories& directories, std::string root) : reader_(directories.reader()) {
        pending_.push_back({std::move(root)});
    }

    bool isOver() const { return pending_.empty(); }
    std::string takeNext(); // a directory; there must be one

    DirectoryRead read(); // the one that was taken last; once

    // The directories in this one come next. Those that are hidden are taken out of the listing.
    void goBelow(DirectoryListing& listing);

private:
    struct Pending {
        std::string path;
        std::optional<DirectoryRead> read = {}; // ahead of its turn
    };

    void lookAhead();

    std::unique_ptr<DirectoryReader> reader_;
    std::vector<Pending> pending_; // the next to enter stands last
    std::size_t latest_ = 0;       // so many of them have only just come, and were expected then
    Pending taken_{};
};

// Whether a walk passes over a directory of that name.
bool isHiddenDirectory(std::string_view name);

} // namespace larkspin
