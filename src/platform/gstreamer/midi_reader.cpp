#include "platform/gstreamer/midi_reader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t largestFile = 16 << 20;
constexpr std::int64_t framesAtOnce = Synthesizer::sampleRate / 5; // frames

std::int64_t frameAt(double seconds) {
    return std::llround(seconds * Synthesizer::sampleRate);
}

// Messages that make single notes sound. When the song is moved, those before the new place have no
// effect any more.
bool isNote(const MidiEvent& event) {
    return event.bytes[0] < 0xB0;
}

} // namespace

OpenedSong MidiReader::open(const SongFile& file, Synthesizer& synthesizer) {
    auto song = readMidi(file.begin(largestFile));
    if (!song)
        return {nullptr, SongFault::damaged};
    return {std::unique_ptr<SoundReader>(new MidiReader(std::move(*song), synthesizer))};
}

MidiReader::MidiReader(MidiSong song, Synthesizer& synthesizer)
    : synthesizer_(synthesizer), song_(std::move(song)), end_(frameAt(song_.duration)) {
    synthesizer_.reset();
}

// All that was set before the new place still holds there: instruments, loudness, bends.
void MidiReader::seek(double seconds) {
    synthesizer_.reset();
    frame_ = std::min(frameAt(seconds), end_);
    for (next_ = 0; next_ < song_.events.size(); ++next_) {
        const MidiEvent& event = song_.events[next_];
        if (frameAt(event.seconds) >= frame_)
            break;
        if (!isNote(event))
            synthesizer_.send(event, song_);
    }
}

// Renders the sound between one message and the next, and so on.
void MidiReader::read(std::vector<float>& samples) {
    const std::int64_t until = std::min(frame_ + framesAtOnce, end_);
    while (frame_ < until) {
        std::int64_t stop = until;
        for (; next_ < song_.events.size(); ++next_) {
            const MidiEvent& event = song_.events[next_];
            if (const std::int64_t at = frameAt(event.seconds); at > frame_) {
                stop = std::min(until, at);
                break;
            }
            synthesizer_.send(event, song_);
        }
        synthesizer_.render(samples, static_cast<int>(stop - frame_));
        frame_ = stop;
    }
}

} // namespace larkspin
