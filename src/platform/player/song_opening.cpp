#include "platform/player/song_opening.h"

#include "platform/posix/no_signals.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t mostHanging = 64;
constexpr std::ptrdiff_t mostInDirectory = 4;

std::string directoryOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

std::string reasonOf(int error) {
    std::string reason = std::generic_category().message(error);
    if (!reason.empty() && reason[0] >= 'A' && reason[0] <= 'Z')
        reason[0] = static_cast<char>(reason[0] - 'A' + 'a');
    return reason;
}

} // namespace

// A pipe or a device isn't even touched: the file is looked at first, and then opened by that look.
OpenedSong openSong(const std::string& path) {
    const Descriptor look(::open(path.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!look.isOpen() || ::fstat(look.number(), &status) != 0)
        return {{}, reasonOf(errno)};
    if (!S_ISREG(status.st_mode))
        return {{}, "not a file"};
    const std::string same = "/proc/self/fd/" + std::to_string(look.number());
    Descriptor file(::open(same.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen())
        return {{}, reasonOf(errno)};
    return {std::move(file)};
}

struct SongOpening::Shared {
    std::string directory;
    std::mutex mutex;
    std::condition_variable ended;
    bool isOver = false;
    OpenedSong song;
};

bool SongOpening::begin(const std::string& path) {
    std::erase_if(threads_, [](const auto& thread) {
        const std::lock_guard lock(thread->mutex);
        return thread->isOver;
    });
    const auto inDirectory = std::ranges::count_if(
        threads_, [&](const auto& thread) { return thread->directory == directoryOf(path); });
    if (inDirectory >= mostInDirectory || threads_.size() >= mostHanging)
        return false;
    path_ = path;
    startThread();
    return true;
}

void SongOpening::startThread() {
    auto shared = std::make_shared<Shared>();
    shared->directory = directoryOf(*path_);
    threads_.push_back(shared);
    const auto run = [shared, open = open_, path = *path_] {
        OpenedSong song = open(path);
        const std::lock_guard lock(shared->mutex);
        shared->song = std::move(song);
        shared->isOver = true;
        shared->ended.notify_all();
    };
    const NoSignals quiet; // they are the other threads' business
    try {
        std::thread(run).detach();
    } catch (const std::system_error&) { // there can be no more of them
        run();
    }
}

std::optional<OpenedSong> SongOpening::result(std::chrono::milliseconds patience) {
    if (!path_)
        return std::nullopt;
    const auto thread = threads_.back();
    std::unique_lock lock(thread->mutex);
    if (!thread->ended.wait_for(lock, patience, [&] { return thread->isOver; }))
        return std::nullopt;
    path_.reset();
    return std::move(thread->song);
}

} // namespace larkspin
