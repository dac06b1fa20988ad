// The port to the files on the owner's disk. Paths are drive paths (`c:\music\ride.mp3`);
// a doubled separator counts as one. Nothing throws: what has failed is told by the result.
//
// What lies outside the data directory lies on a disk of the owner's, which may take its time or
// hang. Events are served while it does, so that any state may have changed after such a call; a
// disk that hasn't answered within a bound counts as one that doesn't.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace larkspin {

// What came of reading a file. One that couldn't be read is still there with all that it holds,
// so that nobody may take it for missing or empty and write over it.
struct FileRead {
    enum class Outcome { contents, missing, failed };

    Outcome outcome = Outcome::failed;
    std::string contents = {}; // empty unless that is the outcome
    std::string reason = {};   // of a failure, in a few words, as they stand after a colon

    bool failed() const { return outcome == Outcome::failed; }
};

// What came of a change on the disk: made, or else why not, in a few words for the owner ("no space
// left on the device"), as they stand after a colon.
struct FileChange {
    std::string reason = {}; // empty when it was made
    bool mayHappen = false;  // or have happened: nobody knows

    explicit operator bool() const { return reason.empty(); }
};

// What is said of a disk that hangs.
inline constexpr const char* noAnswer = "the disk doesn't answer";

class Files {
public:
    virtual ~Files() = default;

    // Whether there is a file, also one that can't be opened; a directory is none.
    enum class Presence { there, gone, unanswered };
    virtual Presence presence(const std::string& path) = 0;
    bool exists(const std::string& path) { return presence(path) == Presence::there; }

    // In bytes; of a link, that of the file behind it. 0 where there is no file, nothing when the
    // disk doesn't answer.
    virtual std::optional<std::uintmax_t> size(const std::string& path) = 0;

    // No file that the program keeps comes near this size, in bytes.
    static constexpr std::size_t largestFile = std::size_t{64} * 1024 * 1024;

    // The whole contents. A file of more bytes than `largest` isn't ours and counts as one that
    // can't be read, like a directory in its place or one that is being written just now.
    virtual FileRead read(const std::string& path, std::size_t largest = largestFile) = 0;

    // Puts the contents in place of the file, or makes it, for the owner's eyes alone. The file
    // holds either the old or the new contents at every moment, also after a kill, a crash or a
    // full disk. Lifts a read-only mark. It fails, and the old contents stay, when that can't be
    // done, or when the old file is none that could be read.
    virtual FileChange replace(const std::string& path, const std::string& contents) = 0;

    // Puts the text after what the file holds, which isn't read or written anew for that. Makes the
    // file, and its directory with those above it, where they aren't there, and keeps it to the
    // owner's eyes alone. It fails, and the file ends where it ended before, when not all of it can
    // be written, as on a full disk, and for a file that is somebody else's, or none. What is
    // written may be lost with the power in the next seconds.
    virtual FileChange append(const std::string& path, const std::string& text) = 0;

    // Gives the file another name in its directory. Nothing that is there is ever replaced, and the
    // file never leaves its directory: it fails, and all stays as it was, when the name is taken,
    // or no single name (empty, "." or "..", with a separator in it), or when it can't be done. A
    // directory isn't renamed. Of a link the link is.
    virtual FileChange rename(const std::string& path, const std::string& newName) = 0;

    // Puts the file into the desktop's wastebasket, from where the owner can take it back. Asks
    // nothing. It fails, and the file stays, when there is no wastebasket that can take it, and for
    // a directory. Of a link the link is taken.
    virtual FileChange moveToWastebasket(const std::string& path) = 0;

    // Takes the file away for good; of a link, the link. It fails when it is still there, as a
    // directory is in any case.
    virtual FileChange remove(const std::string& path) = 0;

    // Makes the directory with those above it, for the owner alone. It fails when it isn't there
    // afterwards.
    virtual FileChange makeDirectory(const std::string& path) = 0;

    // Keeps the file out of directory listings, where the file system has such a mark.
    virtual void hide(const std::string& path) = 0;
};

} // namespace larkspin
