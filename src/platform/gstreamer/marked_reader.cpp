#include "platform/gstreamer/marked_reader.h"

#include <algorithm>
#include <utility>

namespace larkspin {

OpenedSong MarkedReader::open(SongMarks marks, Open open) {
    if (marks.marks.empty())
        return {nullptr, SongFault::damaged};
    OpenedSong first = open(marks.marks.front().place);
    if (!first.reader)
        return first;
    auto song = std::make_unique<MarkedReader>();
    if (marks.duration == 0)
        marks.duration = first.reader->duration();
    song->song_ = std::move(marks);
    song->reader_ = std::move(first.reader);
    song->open_ = std::move(open);
    return {std::move(song), {}, first.tags};
}

void MarkedReader::read(std::vector<float>& samples) {
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

void MarkedReader::seek(double seconds) {
    const auto after = std::upper_bound(
        song_.marks.begin() + 1, song_.marks.end(), seconds - runUp,
        [](double wanted, const SongMarks::Mark& mark) { return wanted < mark.seconds; });
    const SongMarks::Mark mark = *std::prev(after);
    if (auto reader = open_(mark.place).reader) {
        reader_ = std::move(reader);
        skipped_ = std::max(seconds - mark.seconds, 0.0);
    }
}

} // namespace larkspin
