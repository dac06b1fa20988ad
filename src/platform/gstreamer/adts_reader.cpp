#include "platform/gstreamer/adts_reader.h"

#include "platform/gstreamer/song_kind.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

namespace {

// The header of a frame, from ISO/IEC 13818-7.
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

} // namespace

OpenedSong AdtsReader::open(const SongFile& file, Open open) {
    auto song = std::make_unique<AdtsReader>();
    song->index(file);
    if (song->marks_.empty())
        return {nullptr, SongFault::damaged};
    OpenedSong first = open(song->marks_.front().place);
    if (!first.reader)
        return first;
    song->reader_ = std::move(first.reader);
    song->open_ = std::move(open);
    return {std::move(song)};
}

void AdtsReader::index(const SongFile& file) {
    std::string bytes(lookedAtOnce, '\0');
    for (std::uint64_t place = afterTags(file); place < file.size();) {
        const std::string_view read(bytes.data(), file.read(place, bytes));
        if (read.size() < frameHeader)
            break;
        std::size_t at = 0;
        while (at + frameHeader <= read.size()) {
            const Frame frame = frameAt(read.substr(at));
            if (marks_.empty() || duration_ >= marks_.back().seconds + 1)
                marks_.push_back({place + at, duration_});
            duration_ += frame.seconds;
            at += std::max<std::size_t>(frame.length, 1); // over damage to the next frame
        }
        place += at;
    }
}

void AdtsReader::read(std::vector<float>& samples) {
    const auto begin = static_cast<std::ptrdiff_t>(samples.size());
    do {
        reader_->read(samples);
        const SoundFormat format = reader_->format();
        const auto frames = (static_cast<std::ptrdiff_t>(samples.size()) - begin) / format.channels;
        const auto skipped = std::min(frames, static_cast<std::ptrdiff_t>(skipped_ * format.rate));
        if (frames == 0)
            return;
        skipped_ -= static_cast<double>(skipped) / format.rate;
        samples.erase(samples.begin() + begin, samples.begin() + begin + skipped * format.channels);
    } while (static_cast<std::ptrdiff_t>(samples.size()) == begin);
}

void AdtsReader::seek(double seconds) {
    const auto after =
        std::upper_bound(marks_.begin() + 1, marks_.end(), seconds - runUp,
                         [](double wanted, const Mark& mark) { return wanted < mark.seconds; });
    const Mark mark = *std::prev(after);
    if (auto reader = open_(mark.place).reader) {
        reader_ = std::move(reader);
        skipped_ = std::max(seconds - mark.seconds, 0.0);
    }
}

} // namespace larkspin
