// Directories that couldn't be looked into, and how the owner is told of them: the first one by
// name, with what was wrong with it, the others by their number.
#pragma once

#include "library/directories.h"

#include <string>

namespace larkspin {

class UnreadDirectories {
public:
    void note(const std::string& directory, DirectoryRead::Outcome outcome);

    bool empty() const { return count_ == 0; }
    int count() const { return count_; }

    // "couldn't look into <b>c:\nas</b> and <b>2</b> more directories:  the disk doesn't answer".
    // The marks are for the room; a box goes without.
    std::string told(const std::string& mark = "<b>", const std::string& unmark = "</b>") const;

private:
    std::string first_;
    DirectoryRead::Outcome outcome_ = DirectoryRead::Outcome::failed; // of that one
    int count_ = 0;
};

} // namespace larkspin
