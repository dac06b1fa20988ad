#include "platform/posix/asked_files.h"

#include "platform/posix/disk_questions.h"
#include "platform/posix/drive_paths.h"

namespace larkspin {

namespace {

// A file hangs or answers together with its directory.
std::string directoryOf(const std::string& path) {
    const std::string native = nativePath(path);
    return native.substr(0, native.rfind('/'));
}

} // namespace

std::optional<std::string> AskedFiles::ask(const std::string& question, const std::string& path) {
    return disk_.ask(question, directoryOf(path));
}

// A disk that was asked but gives no answer in time may still make the change, before its worker
// dies. The second value of the outcome says so.
FileChange AskedFiles::change(const std::string& question, const std::string& path) {
    const bool isAsked = !disk_.isHung(directoryOf(path));
    const auto answer = ask(question, path);
    return answer ? changeIn(*answer) : FileChange{noAnswer, isAsked};
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
    return change(put(DiskQuestion::replace, path, 0, contents), path);
}

FileChange AskedFiles::append(const std::string& path, const std::string& text) {
    return change(put(DiskQuestion::append, path, 0, text), path);
}

FileChange AskedFiles::rename(const std::string& path, const std::string& newName) {
    if (isOwn(path))
        return files_.rename(path, newName);
    return change(put(DiskQuestion::rename, path, 0, newName), path);
}

FileChange AskedFiles::moveToWastebasket(const std::string& path) {
    if (isOwn(path))
        return files_.moveToWastebasket(path);
    return change(put(DiskQuestion::moveToWastebasket, path), path);
}

} // namespace larkspin
