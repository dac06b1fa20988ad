#include "platform/posix/wastebasket.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/failure_words.h"
#include "platform/posix/local_time.h"
#include "platform/posix/percent_escapes.h"
#include "platform/posix/private_directory.h"
#include "platform/posix/rename_file.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view noteEnding = ".trashinfo";

// A file can be renamed within this alone: one file system, mounted at one place.
struct Disk {
    std::uint32_t major = 0, minor = 0;
    std::uint64_t mount = 0;
    bool operator==(const Disk&) const = default;
};

// Asked for directories only: where file systems lie over each other, a file may tell another disk
// than its directory.
std::optional<Disk> diskOf(const fs::path& directory) {
    struct statx facts {};
    if (::statx(AT_FDCWD, directory.c_str(), 0, STATX_MNT_ID, &facts) != 0)
        return std::nullopt;
    return Disk{facts.stx_dev_major, facts.stx_dev_minor, facts.stx_mnt_id};
}

// The uppermost directory on the disk.
fs::path topOf(fs::path directory, const Disk& disk) {
    while (directory.has_relative_path() && diskOf(directory.parent_path()) == disk)
        directory = directory.parent_path();
    return directory;
}

// The path with no links in its directories. The file itself may be a link.
fs::path withoutLinksAbove(const fs::path& path) {
    std::error_code failed;
    const fs::path directory = fs::canonical(path.parent_path(), failed);
    return failed ? fs::path() : directory / path.filename();
}

// Whether it is a directory of this user and no link, so that nobody else has put it there.
bool isOwnDirectory(const fs::path& path) {
    struct stat facts {};
    return ::lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
           facts.st_uid == ::geteuid();
}

bool makeOwnDirectory(const fs::path& path) {
    ::mkdir(path.c_str(), S_IRWXU);
    return isOwnDirectory(path);
}

// An administrator may have made one wastebasket for all users. It counts only with the sticky bit,
// which keeps users from removing each other's files.
bool isSharedBasket(const fs::path& path) {
    struct stat facts {};
    return ::lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
           (facts.st_mode & S_ISVTX);
}

FileChange noWastebasket() {
    return {"its disk has no wastebasket that can be written"};
}

// The note that a file manager needs to put the file back where it was.
std::string noteFor(std::string_view origin) {
    const std::tm local = localTime(std::time(nullptr));
    std::array<char, 32> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + percentEscaped(origin) + "\nDeletionDate=" + date.data() + "\n";
}

// Each of these steps returns the error that ended it, or `done`; EEXIST means that the name is
// taken.
constexpr int done = 0;

int write(const fs::path& path, const std::string& contents) {
    const Descriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.isOpen())
        return errno;
    const auto size = static_cast<ssize_t>(contents.size());
    errno = ENOSPC; // of a write that comes to an end too early
    if (::write(file.number(), contents.data(), contents.size()) == size &&
        ::fsync(file.number()) == 0)
        return done;
    const int error = errno;
    ::unlink(path.c_str());
    return error;
}

// The note comes first, since creating it claims the name. A file of that name that has no note is
// still somebody's, and isn't replaced.
int putUnder(const std::string& name, const fs::path& basket, const fs::path& file,
             const std::string& note) {
    const fs::path notePath = basket / "info" / (name + std::string(noteEnding));
    if (const int error = write(notePath, note); error != done)
        return error;
    if (renameFile(file, basket / "files" / name))
        return done;
    const int error = errno;
    ::unlink(notePath.c_str());
    return error;
}

// The name for the `round`th file of the same name: "ride.mp3", "ride.mp3.2". If it would be too
// long together with the note's ending, it is cut between two characters.
std::string nameInBasket(std::string_view name, int round, std::size_t longest) {
    const std::string number = round == 1 ? "" : '.' + std::to_string(round);
    std::size_t length = 0;
    while (length < name.size()) {
        const std::size_t next = length + firstCharacter(name.substr(length)).length;
        if (next + number.size() + noteEnding.size() > longest)
            break;
        length = next;
    }
    return std::string(name.substr(0, length)) + number;
}

// `origin`: the path to put it back to.
FileChange put(const fs::path& basket, const fs::path& file, const std::string& origin) {
    constexpr int mostOfOneName = 10'000;
    if (!makeOwnDirectory(basket) || !makeOwnDirectory(basket / "info") ||
        !makeOwnDirectory(basket / "files"))
        return noWastebasket();
    const long limit = ::pathconf((basket / "info").c_str(), _PC_NAME_MAX);
    const auto longest = static_cast<std::size_t>(limit > 0 ? limit : NAME_MAX);
    const std::string note = noteFor(origin);
    for (int round = 1; round <= mostOfOneName; ++round) {
        const std::string name = nameInBasket(file.filename().native(), round, longest);
        const int error = putUnder(name, basket, file, note);
        if (error != EEXIST)
            return error == done ? FileChange{} : failedBecause(error);
    }
    return failedBecause(EEXIST);
}

// The user may have made his own wastebasket a link to another place.
FileChange putInHome(const fs::path& dataHome, const fs::path& file, const Disk& disk) {
    const fs::path basket = dataHome / "Trash";
    if (makePrivateDirectory(dataHome) && diskOf(dataHome) == disk)
        ::mkdir(basket.c_str(), S_IRWXU);
    std::error_code failed;
    const fs::path real = fs::canonical(basket, failed);
    return !failed && diskOf(real) == disk ? put(real, file, file.native()) : noWastebasket();
}

// The notes of a disk's own wastebasket tell paths below its top, so that they hold wherever it is
// mounted next.
FileChange putOnDisk(const fs::path& file, const Disk& disk) {
    const fs::path top = topOf(file.parent_path(), disk);
    const std::string user = std::to_string(::geteuid());
    const std::string origin = file.lexically_relative(top).native();
    const fs::path shared = top / ".Trash";
    FileChange outcome =
        isSharedBasket(shared) ? put(shared / user, file, origin) : noWastebasket();
    return outcome ? outcome : put(top / (".Trash-" + user), file, origin);
}

} // namespace

FileChange Wastebasket::take(const std::string& path) const {
    if (!dataHome_.is_absolute())
        return noWastebasket();
    const fs::path file = withoutLinksAbove(path);
    const auto disk = diskOf(file.parent_path());
    if (!disk)
        return failedBecause(errno);
    // The user's own wastebasket comes first, if it is on the file's disk; else that disk's. If
    // neither takes the file, the reason that says more is told.
    FileChange atHome = putInHome(dataHome_, file, *disk);
    if (atHome)
        return atHome;
    const FileChange onDisk = putOnDisk(file, *disk);
    return onDisk || atHome.reason == noWastebasket().reason ? onDisk : atHome;
}

} // namespace larkspin
