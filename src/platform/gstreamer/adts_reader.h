// Plain AAC. Its frames alone tell how long it is and where a moment of it stands, so that they are
// gone through once at the beginning.
#pragma once

#include "platform/gstreamer/sound_reader.h"

#include <functional>

namespace larkspin {

class AdtsReader : public SoundReader {
public:
    // Decodes the file from that place on.
    using Open = std::function<OpenedSong(std::uint64_t place)>;

    static OpenedSong open(const SongFile& file, Open open);

    SoundFormat format() const override { return reader_->format(); }
    double duration() const override { return duration_; }
    void read(std::vector<float>& samples) override;
    void seek(double seconds) override;

private:
    struct Mark { // about one a second
        std::uint64_t place;
        double seconds;
    };

    void index(const SongFile& file);

    Open open_;
    std::unique_ptr<SoundReader> reader_;
    std::vector<Mark> marks_; // the first one is the song's beginning
    double duration_ = 0;
    double skipped_ = 0; // seconds that are still to be left out
};

} // namespace larkspin
