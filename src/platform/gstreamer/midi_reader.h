// The sound of a MIDI file.
#pragma once

#include "platform/gstreamer/sound_reader.h"
#include "platform/gstreamer/synthesizer.h"

namespace larkspin {

class MidiReader : public SoundReader {
public:
    // The synthesizer must be silent, and is in use for as long as the reader lives.
    static OpenedSong open(const SongFile& file, Synthesizer& synthesizer);

    SoundFormat format() const override { return {Synthesizer::sampleRate, 2, 0}; }
    double duration() const override { return song_.duration; }
    void read(std::vector<float>& samples) override;
    void seek(double seconds) override;

private:
    MidiReader(MidiSong song, Synthesizer& synthesizer);

    Synthesizer& synthesizer_;
    MidiSong song_;
    std::size_t next_ = 0; // event
    std::int64_t frame_ = 0, end_ = 0;
};

} // namespace larkspin
