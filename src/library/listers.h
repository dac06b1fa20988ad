// The listers: File1 lists the files of one directory under a pattern, Dir1 its direct
// subdirectories, Drive1 the drives. They are one shared tool: whoever changes File1's pattern
// for another purpose puts it back.
//
// Both directory listers stay where they are when they are sent to a place that can't be
// entered.
#pragma once

#include "library/directories.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class FileLister {
public:
    explicit FileLister(Directories& directories) : directories_(directories) {}

    // Patterns joined by semicolons, such as "*.mp3;*.wav"; compared without regard to case.
    void setPattern(std::string_view pattern);
    const std::string& pattern() const { return pattern_; }

    // False, and nothing changes, when the directory can't be entered.
    bool setPath(const std::string& path);
    // The same for a directory whose files have just been read and selected.
    void show(std::string path, std::vector<std::string> selected);
    // Without a trailing backslash, but for a root; empty before the first setPath.
    const std::string& path() const { return path_; }

    void refresh() { setPath(path_); }

    // Leaves the names that the pattern lets through, in order.
    void select(std::vector<std::string>& names) const;

    // The files that fit, by name without regard to case. Outside the list: an empty text.
    int count() const { return static_cast<int>(names_.size()); }
    const std::string& name(int index) const;

private:
    Directories& directories_;
    std::string pattern_ = "*";
    std::string path_;
    std::vector<std::string> names_;
};

class DirectoryLister {
public:
    explicit DirectoryLister(Directories& directories) : directories_(directories) {}

    bool setPath(const std::string& path);
    const std::string& path() const { return path_; }

    // The full paths of the direct subdirectories, by name without regard to case.
    const std::vector<std::string>& list() const { return subdirectories_; }

    // The files of the directory, which were read along; they are given away.
    DirectoryListing giveListing() { return std::move(listing_); }

private:
    Directories& directories_;
    std::string path_;
    std::vector<std::string> subdirectories_;
    DirectoryListing listing_;
};

class DriveLister {
public:
    explicit DriveLister(Directories& directories) : directories_(directories) {}

    // One text per drive: letter, colon and perhaps a label behind them.
    std::vector<std::string> list() { return directories_.drives(); }

private:
    Directories& directories_;
};

struct Listers {
    explicit Listers(Directories& directories)
        : File1(directories), Dir1(directories), Drive1(directories) {}

    FileLister File1;
    DirectoryLister Dir1;
    DriveLister Drive1;
};

} // namespace larkspin
