// A song whose file is a chain of several: they are played one after the other as one song, though
// each may have a rate and channels of its own.
#pragma once

#include "platform/gstreamer/ogg_links.h"
#include "platform/gstreamer/sound_reader.h"

#include <functional>

namespace larkspin {

class ChainReader : public SoundReader {
public:
    using Open = std::function<OpenedSong(const OggLink&)>;

    // Links that can't be played are left out.
    static OpenedSong open(const std::vector<OggLink>& links, Open open);

    SoundFormat format() const override { return reader_->format(); }
    double duration() const override { return duration_; }
    void read(std::vector<float>& samples) override;
    void seek(double seconds) override;

private:
    struct Link {
        OggLink part;
        double begin; // seconds
    };

    bool enter(std::size_t link);

    Open open_;
    std::vector<Link> links_;
    std::unique_ptr<SoundReader> reader_; // of one link
    std::size_t link_ = 0;
    double duration_ = 0;
};

} // namespace larkspin
