// A song's file on its way to being open. Asked of a disk that is gone, that may take for ever:
// threads do it that nobody has to wait for.
#pragma once

#include "platform/posix/descriptor.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

struct OpenedSong {
    Descriptor file;
    std::string reason = {}; // why there is none
};

// A regular file to read from. Waits for the disk.
OpenedSong openSong(const std::string& path);

class SongOpening {
public:
    using Open = std::function<OpenedSong(const std::string& path)>;

    explicit SongOpening(Open open) : open_(std::move(open)) {}

    // The one before isn't wanted any more. False when too many of those still hang, in its
    // directory or in all.
    bool begin(const std::string& path);
    void drop() { path_.reset(); }
    bool isUnderWay() const { return path_.has_value(); }

    // What came of it, once: waits for it as long.
    std::optional<OpenedSong> result(std::chrono::milliseconds patience);

private:
    struct Shared;
    void startThread();

    Open open_;
    std::optional<std::string> path_;
    std::vector<std::shared_ptr<Shared>>
        threads_; // that may still hang; the wanted one is the last
};

} // namespace larkspin
