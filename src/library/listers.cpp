#include "library/listers.h"

#include "library/playlist_row.h"
#include "text/fold.h"
#include "text/wildcard.h"

#include <algorithm>

namespace larkspin {

void FileLister::setPattern(std::string_view pattern) {
    pattern_ = pattern;
    refresh();
}

bool FileLister::setPath(const std::string& path) {
    auto listing = directories_.list(path);
    if (!listing)
        return false;
    take(std::move(*listing));
    return true;
}

void FileLister::take(DirectoryListing listing) {
    path_ = std::move(listing.path);
    names_ = std::move(listing.files);
    filter(names_);
    std::sort(names_.begin(), names_.end(), lessFolded);
}

void FileLister::filter(std::vector<std::string>& names) const {
    std::erase_if(names,
                  [this](const std::string& name) { return !fitsAny(foldCase(name), pattern_); });
}

std::string FileLister::name(int index) const {
    return index >= 0 && index < count() ? names_[static_cast<std::size_t>(index)] : "";
}

bool DirectoryLister::setPath(const std::string& path) {
    auto listing = directories_.list(path);
    if (!listing)
        return false;
    listing_ = std::move(*listing);
    path_ = listing_.path;
    std::sort(listing_.directories.begin(), listing_.directories.end(), lessFolded);
    subdirectories_.clear();
    for (const std::string& name : listing_.directories)
        subdirectories_.push_back(joinPath(path_, name));
    return true;
}

} // namespace larkspin
