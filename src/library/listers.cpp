#include "library/listers.h"

#include "text/fold.h"
#include "text/wildcard.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::string_view besideFile = "._";

} // namespace

// Of several names that differ in case alone, a list without regard to case takes only the first.
// Which one that is must not depend on the order in which the disk lists them.
void sortByName(std::vector<std::string>& names) {
    std::sort(names.begin(), names.end()); // usually the final order, and quickly found
    if (!std::is_sorted(names.begin(), names.end(), lessFolded))
        std::stable_sort(names.begin(), names.end(), lessFolded);
}

std::vector<std::string> filesThatFit(std::vector<std::string> names, std::string_view pattern) {
    std::erase_if(names, [pattern](const std::string& name) {
        return name.starts_with(besideFile) || !fitsAnyFolded(name, pattern);
    });
    sortByName(names);
    return names;
}

DirectoryRead::Outcome FileLister::show(const std::string& path) {
    DirectoryRead read = directories_.list(path);
    if (read.isListed()) {
        read.listing.files = filesThatFit(std::move(read.listing.files), pattern_);
        read.listing.directories = {};
        shown_ = std::make_shared<const DirectoryListing>(std::move(read.listing));
    }
    return read.outcome;
}

const std::string& FileLister::name(int index) const {
    static const std::string none;
    return index >= 0 && index < count() ? shown_->files[static_cast<std::size_t>(index)] : none;
}

} // namespace larkspin
