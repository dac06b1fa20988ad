// The port to directories and drives. Paths are drive paths; nothing throws.
//
// A directory lies on a disk of the owner's, which may take its time or hang. Events are served
// while it does, so that any state may have changed after each of these calls; a disk that hasn't
// answered within a bound counts as one that doesn't.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

// What one directory holds, as names without a path, in no particular order.
struct DirectoryListing {
    // In its one spelling: no trailing backslash, except for a root (`c:\`), and no `..`.
    std::string path;
    std::vector<std::string> files;
    std::vector<std::string> directories; // those that a walk from above should enter
    std::vector<std::string> links = {};  // to directories, by which a walk could run in circles
};

// The outcome of reading a directory.
struct DirectoryRead {
    enum class Outcome {
        listed,
        missing,     // there is no such directory
        noDirectory, // something else lies there
        refused,     // the owner may not look into it
        failed,      // the disk can't read it
        unanswered,  // the disk doesn't answer
    };

    Outcome outcome = Outcome::failed;
    DirectoryListing listing = {}; // empty unless that is the outcome

    DirectoryRead() = default;
    explicit DirectoryRead(Outcome what) : outcome(what) {}
    explicit DirectoryRead(DirectoryListing found)
        : outcome(Outcome::listed), listing(std::move(found)) {}
    bool isListed() const { return outcome == Outcome::listed; }
};

// For a caller who reads many directories.
class DirectoryReader {
public:
    virtual ~DirectoryReader() = default;

    // Names directories that will be asked for, in that order, so that they can be read ahead.
    virtual void expect(const std::vector<std::string>& paths) = 0;
    virtual DirectoryRead read(const std::string& path) = 0;
};

class Directories {
public:
    virtual ~Directories() = default;

    virtual DirectoryRead list(const std::string& path) = 0;

    // It must not outlive the port.
    virtual std::unique_ptr<DirectoryReader> reader();

    // One text per drive: letter, colon and perhaps a label after them.
    virtual std::vector<std::string> drives() = 0;

    // The drive path for what the owner typed: the system's own notation (`~/Music`,
    // `/home/jo`) is translated, anything else comes back as typed.
    virtual std::string drivePath(std::string_view typed) = 0;
};

// The folder that the owner means by what he has typed; nothing when none is there, or it can't be
// looked into.
std::optional<std::string> folderOf(Directories& directories, std::string_view typed);

} // namespace larkspin
