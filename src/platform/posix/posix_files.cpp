#include "platform/posix/posix_files.h"

#include "platform/posix/drive_paths.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace larkspin {

namespace {

// A file past this is not ours: reading it would only stall the program.
constexpr off_t largestFile = 64 * 1024 * 1024;

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

private:
    int number_;
};

std::optional<std::string> readWhole(const std::string& native) {
    const Descriptor file(::open(native.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat facts {};
    if (!file.isOpen() || ::fstat(file.number(), &facts) != 0 || !S_ISREG(facts.st_mode) ||
        facts.st_size > largestFile)
        return std::nullopt;
    std::string contents(static_cast<std::size_t>(facts.st_size), '\0');
    std::size_t got = 0;
    while (got < contents.size()) {
        const ssize_t count = ::read(file.number(), contents.data() + got, contents.size() - got);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break; // it has become shorter meanwhile
        got += static_cast<std::size_t>(count);
    }
    contents.resize(got);
    return contents;
}

bool writeTo(const Descriptor& file, const std::string& contents, std::optional<mode_t> mode) {
    if (!file.isOpen())
        return false;
    if (mode)
        ::fchmod(file.number(), *mode); // not every file system can keep it
    std::size_t put = 0;
    while (put < contents.size()) {
        const ssize_t count = ::write(file.number(), contents.data() + put, contents.size() - put);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        put += static_cast<std::size_t>(count);
    }
    return ::fsync(file.number()) == 0;
}

// The file gets its name when it is whole, so that a kill leaves no half of it behind. Not every
// system can do that.
bool writeThenName(const std::filesystem::path& path, const std::string& contents,
                   std::optional<mode_t> mode) {
    const Descriptor file(
        ::open(path.parent_path().c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666));
    const std::string unnamed = "/proc/self/fd/" + std::to_string(file.number());
    return writeTo(file, contents, mode) &&
           ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool nameThenWrite(const std::filesystem::path& path, const std::string& contents,
                   std::optional<mode_t> mode) {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    return writeTo(file, contents, mode);
}

// A link stays a link: what it points to is replaced, or made where there is nothing yet.
std::filesystem::path behindLinks(const std::string& native) {
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code failed;
    std::filesystem::path path = native;
    for (int links = 0; links < mostLinks; ++links) {
        const auto target = std::filesystem::read_symlink(path, failed);
        if (failed)
            break;
        path = path.parent_path() / target;
    }
    return path;
}

} // namespace

bool PosixFiles::exists(const std::string& path) {
    struct stat facts {};
    const std::string native = nativePath(path);
    return !native.empty() && ::stat(native.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
}

std::optional<std::string> PosixFiles::read(const std::string& path) {
    return readWhole(nativePath(path));
}

bool PosixFiles::replace(const std::string& path, const std::string& contents) {
    const std::filesystem::path native = behindLinks(nativePath(path));
    if (native.empty())
        return false;
    std::optional<mode_t> mode; // without one, the usual
    struct stat facts {};
    if (::stat(native.c_str(), &facts) == 0) {
        if (!S_ISREG(facts.st_mode) || facts.st_size > largestFile ||
            ::access(native.c_str(), R_OK) != 0)
            return false;
        mode = (facts.st_mode & 0777) | S_IWUSR;
    } else if (errno != ENOENT) {
        return false;
    }
    // Always the same name, so that what a kill leaves behind goes the next time.
    const auto fresh = native.parent_path() / ".larkspin.new";
    ::unlink(fresh.c_str());
    if ((writeThenName(fresh, contents, mode) || nameThenWrite(fresh, contents, mode)) &&
        ::rename(fresh.c_str(), native.c_str()) == 0)
        return true;
    ::unlink(fresh.c_str());
    return false;
}

bool PosixFiles::makeDirectory(const std::string& path) {
    std::error_code failed;
    std::filesystem::create_directories(nativePath(path), failed);
    return std::filesystem::is_directory(nativePath(path), failed);
}

// Hidden is what begins with a dot here, and the data directory lies below one.
void PosixFiles::hide(const std::string&) {}

} // namespace larkspin
