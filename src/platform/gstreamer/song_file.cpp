#include "platform/gstreamer/song_file.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace larkspin {

SongFile::SongFile(Descriptor descriptor) : descriptor_(std::move(descriptor)) {
    struct stat status {};
    if (::fstat(descriptor_.number(), &status) == 0)
        size_ = static_cast<std::uint64_t>(status.st_size);
}

std::size_t SongFile::read(std::uint64_t place, std::span<char> bytes) const {
    std::size_t count = 0;
    while (count < bytes.size()) {
        const ssize_t got = ::pread(descriptor_.number(), bytes.data() + count,
                                    bytes.size() - count, static_cast<off_t>(place + count));
        if (got <= 0)
            break;
        count += static_cast<std::size_t>(got);
    }
    return count;
}

std::string SongFile::begin(std::size_t most) const {
    std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(most, size_)), '\0');
    bytes.resize(read(0, bytes));
    return bytes;
}

} // namespace larkspin
