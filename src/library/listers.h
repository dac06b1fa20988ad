// The listers: File1 lists the files of one directory under a pattern, Drive1 the drives. They are
// one shared tool: whoever changes File1's pattern for another purpose puts it back.
//
// A lister that is sent to a place that can't be entered stays where it is.
#pragma once

#include "library/directories.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class FileLister {
public:
    explicit FileLister(Directories& directories) : directories_(directories) {}

    // Patterns joined by semicolons, such as "*.mp3;*.wav"; compared without regard to case. What
    // is shown stays until the next setPath.
    void setPattern(std::string_view pattern) { pattern_ = pattern; }
    const std::string& pattern() const { return pattern_; }

    // False, and nothing changes, when the directory can't be entered. Events are served before it
    // is shown, and none after that.
    bool setPath(const std::string& path) { return show(path) == DirectoryRead::Outcome::listed; }
    DirectoryRead::Outcome show(const std::string& path);
    // The path ends without a backslash, unless it is a root. It is empty before the first setPath.
    const std::string& path() const { return shown_->path; }

    // The files that fit, by name without regard to case; names that differ in nothing else stand
    // in the order of their bytes. Outside the list: an empty text.
    int count() const { return static_cast<int>(shown_->files.size()); }
    const std::string& name(int index) const;

    // The directory with the files that fit, in order. It stays as it is when the lister moves on:
    // who lets events run while he goes through the files holds on to it.
    using Shown = std::shared_ptr<const DirectoryListing>;
    const Shown& shown() const { return shown_; }

private:
    Directories& directories_;
    std::string pattern_ = "*";
    Shown shown_ = std::make_shared<DirectoryListing>();
};

// Those of the names that fit the pattern, in File1's order. A file such as "._ride.mp3", in which
// a Mac keeps what the disk can't hold of "ride.mp3", doesn't count.
std::vector<std::string> filesThatFit(std::vector<std::string> names, std::string_view pattern);
void sortByName(std::vector<std::string>& names);

class DriveLister {
public:
    explicit DriveLister(Directories& directories) : directories_(directories) {}

    // One text per drive: letter, colon and perhaps a label after them.
    std::vector<std::string> list() { return directories_.drives(); }

private:
    Directories& directories_;
};

struct Listers {
    explicit Listers(Directories& directories) : File1(directories), Drive1(directories) {}

    FileLister File1;
    DriveLister Drive1;
};

} // namespace larkspin
