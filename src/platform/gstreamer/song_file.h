// The open plain file of a song, which this process was given: it has no way to any other. The file
// is read by place, since its own position is shared with everybody who has it open.
#pragma once

#include "platform/posix/descriptor.h"

#include <cstdint>
#include <span>
#include <string>

namespace larkspin {

class SongFile {
public:
    SongFile() = default; // none
    explicit SongFile(Descriptor descriptor);

    bool isOpen() const { return descriptor_.isOpen(); }
    std::uint64_t size() const { return size_; }

    // How many bytes there were, up to the file's end or to what can't be read.
    std::size_t read(std::uint64_t place, std::span<char> bytes) const;
    std::string begin(std::size_t most) const;

private:
    Descriptor descriptor_;
    std::uint64_t size_ = 0;
};

} // namespace larkspin
