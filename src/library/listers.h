// The listers: File1 lists the files of one directory under a pattern, Dir1 its direct
// subdirectories, Drive1 the drives. They are one shared tool: whoever changes File1's pattern
// for another purpose puts it back.
//
// Both directory listers stay where they are when they are sent to a place that can't be
// entered.
#pragma once

#include "library/directories.h"

#include <memory>
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
    // Without a trailing backslash, but for a root; empty before the first setPath.
    const std::string& path() const { return shown_->path; }

    void refresh() { setPath(path()); }

    // The files that fit, by name without regard to case; names that differ in nothing else stand
    // in the order of their bytes. Outside the list: an empty text.
    int count() const { return static_cast<int>(shown_->files.size()); }
    const std::string& name(int index) const;

    // The directory with the files that fit, in order. It stays as it is when the lister moves on:
    // who lets events run while he goes through the files holds on to it.
    using Shown = std::shared_ptr<const DirectoryListing>;
    const Shown& shown() const { return shown_; }
    // What setPath would show of a directory that has been read already, and showing it.
    Shown select(DirectoryListing listing) const;
    void show(Shown directory) { shown_ = std::move(directory); }

private:
    Directories& directories_;
    std::string pattern_ = "*";
    Shown shown_ = std::make_shared<DirectoryListing>();
};

class DirectoryLister {
public:
    explicit DirectoryLister(Directories& directories) : directories_(directories) {}

    bool setPath(const std::string& path);
    const std::string& path() const { return path_; }

    // The full paths of the direct subdirectories, in the order of File1's files.
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
