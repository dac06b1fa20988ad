#include "platform/posix/asked_files.h"

#include "platform/posix/disk_questions.h"
#include "platform/posix/drive_paths.h"

namespace larkspin {

// The directory is what hangs, or doesn't.
std::optional<std::string> AskedFiles::ask(const std::string& question, const std::string& path) {
    const std::string native = nativePath(path);
    return disk_.ask(question, native.substr(0, native.rfind('/')));
}

Files::Presence AskedFiles::presence(const std::string& path) {
    if (isOwn(path))
        return files_.presence(path);
    const auto answer = ask(put(DiskQuestion::presence, path), path);
    return answer ? presenceIn(*answer) : Presence::unanswered;
}

std::optional<std::uintmax_t> AskedFiles::size(const std::string& path) {
    if (isOwn(path))
        return files_.size(path);
    const auto answer = ask(put(DiskQuestion::size, path), path);
    return answer ? std::optional<std::uintmax_t>(numberIn(*answer)) : std::nullopt;
}

FileRead AskedFiles::read(const std::string& path, std::size_t largest) {
    if (isOwn(path))
        return files_.read(path, largest);
    const auto answer = ask(put(DiskQuestion::read, path, largest), path);
    return answer ? fileIn(*answer) : FileRead{FileRead::Outcome::failed, {}, noAnswer};
}

FileChange AskedFiles::replace(const std::string& path, const std::string& contents) {
    if (isOwn(path))
        return files_.replace(path, contents);
    const auto answer = ask(put(DiskQuestion::replace, path, 0, contents), path);
    return answer ? changeIn(*answer) : FileChange{noAnswer};
}

FileChange AskedFiles::rename(const std::string& path, const std::string& newName) {
    if (isOwn(path))
        return files_.rename(path, newName);
    const auto answer = ask(put(DiskQuestion::rename, path, 0, newName), path);
    return answer ? changeIn(*answer) : FileChange{noAnswer};
}

FileChange AskedFiles::moveToWastebasket(const std::string& path) {
    if (isOwn(path))
        return files_.moveToWastebasket(path);
    const auto answer = ask(put(DiskQuestion::moveToWastebasket, path), path);
    return answer ? changeIn(*answer) : FileChange{noAnswer};
}

} // namespace larkspin
