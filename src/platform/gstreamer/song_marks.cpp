#include "platform/gstreamer/song_marks.h"

#include "platform/gstreamer/song_kind.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace larkspin {

namespace {

// The header of a frame of AAC, from ISO/IEC 13818-7.
constexpr std::size_t frameHeader = 7;
constexpr double blockSamples = 1024;
constexpr int rates[] = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                         22050, 16000, 12000, 11025, 8000,  7350};

constexpr std::size_t lookedAtOnce = std::size_t{256} * 1024; // bytes of the file

struct Frame {
    std::size_t length = 0; // 0: there is none
    double seconds = 0;
};

Frame frameAt(std::string_view bytes) {
    const auto byte = [&](std::size_t at) {
        return std::size_t{static_cast<unsigned char>(bytes[at])};
    };
    const std::size_t rate = byte(2) >> 2u & 15u, blocks = (byte(6) & 3u) + 1,
                      length = (byte(3) & 3u) << 11u | byte(4) << 3u | byte(5) >> 5u;
    const bool isFrame = byte(0) == 0xFF && (byte(1) & 0xF6u) == 0xF0;
    if (!isFrame || length < frameHeader || rate >= std::size(rates))
        return {};
    return {length, blockSamples * static_cast<double>(blocks) / rates[rate]};
}

// A number of Musepack's: seven bits a byte, the highest first, as long as the top bit is set.
std::uint64_t takeNumber(std::string_view& bytes) {
    constexpr int mostBytes = 10; // which 64 bits take
    std::uint64_t number = 0;
    bool goesOn = true;
    for (int count = 0; goesOn && count < mostBytes; ++count) {
        const auto byte = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        number = number << 7 | (byte & 0x7F);
        goesOn = (byte & 0x80) != 0;
    }
    return number;
}

} // namespace

SongMarks adtsMarks(const SongFile& file) {
    SongMarks song;
    std::string bytes(lookedAtOnce, '\0');
    for (std::uint64_t place = afterTags(file); place < file.size();) {
        const std::string_view read(bytes.data(), file.read(place, bytes));
        if (read.size() < frameHeader)
            break;
        std::size_t at = 0;
        while (at + frameHeader <= read.size()) {
            const Frame frame = frameAt(read.substr(at));
            const bool isDue = song.marks.empty() || song.duration >= song.marks.back().seconds + 1;
            if (frame.length > 0 && isDue)
                song.marks.push_back({place + at, song.duration});
            song.duration += frame.seconds;
            at += std::max<std::size_t>(frame.length, 1); // over damage to the next frame
        }
        place += at;
    }
    return song;
}

// The stream's header comes first in version 8, after its key, its length, a checksum and its
// version: the number of samples, that of those in front which are silent, and in three bits which
// rate it is. What version 7 says of its length is right.
SongMarks musepackMarks(const SongFile& file) {
    constexpr int samplerates[] = {44100, 48000, 37800, 32000};
    constexpr std::size_t mostHeader = 64, sumAndVersion = 5; // more than all its numbers take
    SongMarks song{.marks = {{0, 0}}};
    std::string header(mostHeader, '\0');
    file.read(afterTags(file), header);
    if (!header.starts_with("MPCKSH"))
        return song;
    std::string_view left = std::string_view(header).substr(6);
    takeNumber(left);
    left.remove_prefix(sumAndVersion);
    const auto samples = static_cast<double>(takeNumber(left)),
               silent = static_cast<double>(takeNumber(left));
    const std::size_t rate = static_cast<unsigned char>(left[0]) >> 5u;
    if (rate < std::size(samplerates))
        song.duration = std::max(samples - silent, 0.0) / samplerates[rate];
    return song;
}

} // namespace larkspin
