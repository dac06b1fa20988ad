// The port to the files on the owner's disk. Paths are drive paths (`c:\music\ride.mp3`);
// a doubled separator counts as one. Nothing throws: a failure is an empty or false result.
#pragma once

#include <optional>
#include <string>

namespace larkspin {

class Files {
public:
    virtual ~Files() = default;

    // True for a file, also one that can't be opened; false for a directory.
    virtual bool exists(const std::string& path) = 0;

    // The whole contents; nothing when the file is missing or can't be read.
    virtual std::optional<std::string> read(const std::string& path) = 0;

    // Puts the contents in place of the file, or makes it. The file holds either the old or
    // the new contents at every moment, also after a kill, a crash or a full disk. Lifts a
    // read-only mark. False, and the old contents stay, when that can't be done or when the
    // old file couldn't be read: what nobody could load is not overwritten.
    virtual bool replace(const std::string& path, const std::string& contents) = 0;

    // Makes the directory with those above it. True when it is there afterwards.
    virtual bool makeDirectory(const std::string& path) = 0;

    // Keeps the file out of directory listings, where the file system has such a mark.
    virtual void hide(const std::string& path) = 0;
};

} // namespace larkspin
