#include "library/listers.h"

#include "library/playlist_row.h"
#include "text/fold.h"
#include "text/wildcard.h"

#include <algorithm>

namespace larkspin {

namespace {

// A list without regard to case takes only the first of several names that differ in case alone.
// Which one that is must not depend on the order in which the disk tells them.
void sortByName(std::vector<std::string>& names) {
    std::sort(names.begin(), names.end()); // as a rule that is the order, and it is found quickly
    if (!std::is_sorted(names.begin(), names.end(), lessFolded))
        std::stable_sort(names.begin(), names.end(), lessFolded);
}

} // namespace

void FileLister::setPattern(std::string_view pattern) {
    pattern_ = pattern;
    refresh();
}

bool FileLister::setPath(const std::string& path) {
    auto listing = directories_.list(path);
    if (!listing)
        return false;
    show(select(std::move(*listing)));
    return true;
}

FileLister::Shown FileLister::select(DirectoryListing listing) const {
    std::erase_if(listing.files,
                  [this](const std::string& name) { return !fitsAnyFolded(name, pattern_); });
    sortByName(listing.files);
    listing.directories = {};
    return std::make_shared<const DirectoryListing>(std::move(listing));
}

const std::string& FileLister::name(int index) const {
    static const std::string none;
    return index >= 0 && index < count() ? shown_->files[static_cast<std::size_t>(index)] : none;
}

bool DirectoryLister::setPath(const std::string& path) {
    auto listing = directories_.list(path);
    if (!listing)
        return false;
    listing_ = std::move(*listing);
    path_ = listing_.path;
    sortByName(listing_.directories);
    subdirectories_.clear();
    for (const std::string& name : listing_.directories)
        subdirectories_.push_back(joinPath(path_, name));
    return true;
}

} // namespace larkspin
