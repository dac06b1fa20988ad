// A song in which its library doesn't find a moment: it is told beforehand at which places the song
// can be decoded from, and the sound from there to the wanted moment is left out.
#pragma once

#include "platform/gstreamer/song_marks.h"
#include "platform/gstreamer/sound_reader.h"

#include <functional>

namespace larkspin {

class MarkedReader : public SoundReader {
public:
    // Decodes the file from that place on.
    using Open = std::function<OpenedSong(std::uint64_t place)>;

    static OpenedSong open(SongMarks marks, Open open);

    SoundFormat format() const override { return reader_->format(); }
    double duration() const override { return song_.duration; }
    void read(std::vector<float>& samples) override;
    void seek(double seconds) override;

private:
    Open open_;
    std::unique_ptr<SoundReader> reader_;
    SongMarks song_;
    double skipped_ = 0; // seconds that are still to be left out
};

} // namespace larkspin
