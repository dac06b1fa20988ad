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
    select(listing->files);
    show(std::move(listing->path), std::move(listing->files));
    return true;
}

void FileLister::show(std::string path, std::vector<std::string> selected) {
    path_ = std::move(path);
    names_ = std::move(selected);
}

void FileLister::select(std::vector<std::string>& names) const {
    std::erase_if(names,
                  [this](const std::string& name) { return !fitsAny(foldCase(name), pattern_); });
    std::sort(names.begin(), names.end(), lessFolded);
}

const std::string& FileLister::name(int index) const {
    static const std::string none;
    return index >= 0 && index < count() ? names_[static_cast<std::size_t>(index)] : none;
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
