#include "platform/posix/posix_files.h"

#include "platform/posix/append_file.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/failure_words.h"
#include "platform/posix/private_directory.h"
#include "platform/posix/rename_file.h"
#include "platform/posix/replace_file.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

// Reads until the end or until the text is full; false when that fails.
bool fill(std::string& text, const Descriptor& file) {
    std::size_t got = 0;
    while (got < text.size()) {
        const ssize_t count = ::read(file.number(), text.data() + got, text.size() - got);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            break;
        got += static_cast<std::size_t>(count);
    }
    text.resize(got);
    return true;
}

FileRead unreadable(std::string reason) {
    return {FileRead::Outcome::failed, {}, std::move(reason)};
}

FileRead readWhole(const std::string& native, std::size_t largest) {
    // Without O_NONBLOCK, opening a pipe of that name would wait for a writer.
    const Descriptor file(::open(native.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen()) {
        const int reason = errno;
        // A link to a disk that isn't mounted now: what it holds is out of reach, not missing.
        const bool isMissing = (reason == ENOENT || reason == ENOTDIR) && !leadsNowhere(native);
        return isMissing ? FileRead{FileRead::Outcome::missing} : unreadable(failureWords(reason));
    }
    struct stat facts {};
    if (::fstat(file.number(), &facts) != 0)
        return unreadable(failureWords(errno));
    if (!S_ISREG(facts.st_mode))
        return unreadable("it is no file");
    if (static_cast<std::uintmax_t>(facts.st_size) > largest)
        return unreadable("it is too large");
    const auto size = static_cast<std::size_t>(facts.st_size);
    std::string contents(size + 1, '\0'); // one byte more, to see whether the file has grown
    if (!fill(contents, file))
        return unreadable(failureWords(errno));
    if (contents.size() != size)
        return unreadable("somebody else is writing it");
    return {FileRead::Outcome::contents, std::move(contents)};
}

// The facts of the file that the path leads to, also through a link. Nothing unless it is a plain
// file.
std::optional<struct stat> factsOfFile(const std::string& native) {
    struct stat facts {};
    const bool isFile =
        !native.empty() && ::stat(native.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
    return isFile ? std::optional(facts) : std::nullopt;
}

// Whether there is something that may be moved: a file of any kind, or a link to anything.
FileChange isMovable(const std::string& native) {
    struct stat facts {};
    if (::lstat(native.c_str(), &facts) != 0)
        return failedBecause(errno);
    return S_ISDIR(facts.st_mode) ? failedBecause(EISDIR) : FileChange{};
}

// The name in native form. Empty when the text is no single name, in drive form or native.
std::string nativeName(const std::string& name) {
    if (name.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos)
        return {};
    std::string native = nativePath("c:\\" + name).substr(1);
    return native == "." || native == ".." ? "" : native;
}

} // namespace

Files::Presence PosixFiles::presence(const std::string& path) {
    return factsOfFile(nativePath(path)) ? Presence::there : Presence::gone;
}

std::optional<std::uintmax_t> PosixFiles::size(const std::string& path) {
    const auto facts = factsOfFile(nativePath(path));
    return facts ? static_cast<std::uintmax_t>(facts->st_size) : 0;
}

FileRead PosixFiles::read(const std::string& path, std::size_t largest) {
    return readWhole(nativePath(path), largest);
}

FileChange PosixFiles::replace(const std::string& path, const std::string& contents) {
    return replaceFile(nativePath(path), contents);
}

FileChange PosixFiles::append(const std::string& path, const std::string& text) {
    return appendToFile(nativePath(path), text);
}

FileChange PosixFiles::rename(const std::string& path, const std::string& newName) {
    const std::string from = nativePath(path), name = nativeName(newName);
    if (name.empty())
        return {"no file can have that name"};
    FileChange outcome = isMovable(from);
    if (outcome && !renameFile(from, from.substr(0, from.rfind('/') + 1) + name))
        outcome = failedBecause(errno);
    return outcome;
}

FileChange PosixFiles::moveToWastebasket(const std::string& path) {
    const std::string native = nativePath(path);
    FileChange outcome = isMovable(native);
    return outcome ? wastebasket_.take(native) : outcome;
}

FileChange PosixFiles::remove(const std::string& path) {
    const bool isGone = ::unlink(nativePath(path).c_str()) == 0 || errno == ENOENT;
    return isGone ? FileChange{} : failedBecause(errno);
}

FileChange PosixFiles::makeDirectory(const std::string& path) {
    return makePrivateDirectory(nativePath(path)) ? FileChange{} : failedBecause(errno);
}

// Nothing to do: on this system files in directories whose name begins with a dot are hidden, and
// the data directory lies below one.
void PosixFiles::hide(const std::string&) {}

} // namespace larkspin
