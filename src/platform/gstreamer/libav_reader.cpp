#include "platform/gstreamer/libav_reader.h"

#include "platform/gstreamer/libav.h"
#include "platform/gstreamer/libav_samples.h"
#include "platform/gstreamer/tag_texts.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <span>
#include <utility>

namespace larkspin {

namespace {

constexpr double leastSeconds = 0.2; // of sound in each portion
constexpr int portion = 32 * 1024;   // of the file, read at once
constexpr double beforeAll = -1e9;   // seconds
constexpr int mostHoles = 1000;      // in a song; one of an Ogg file is up to 64 KB

// How the libraries call a kind of file. There are no playlists among them, nor what leads to other
// files.
const char* formatOf(SongKind kind) {
    switch (kind) {
    case SongKind::asf:
        return "asf";
    case SongKind::packedWav:
        return "wav";
    case SongKind::flac:
        return "flac";
    case SongKind::ogg:
        return "ogg";
    case SongKind::mp4:
        return "mov";
    case SongKind::adts:
        return "aac";
    case SongKind::ape:
        return "ape";
    case SongKind::wavpack:
        return "wv";
    case SongKind::musepack7:
        return "mpc";
    case SongKind::musepack8:
        return "mpc8";
    case SongKind::aiff:
        return "aiff";
    default:
        return nullptr;
    }
}

constexpr AVCodecID codecs[] = {
    AV_CODEC_ID_WMAV1,         AV_CODEC_ID_WMAV2,     AV_CODEC_ID_WMAPRO,
    AV_CODEC_ID_WMALOSSLESS,   AV_CODEC_ID_WMAVOICE,  AV_CODEC_ID_ADPCM_MS,
    AV_CODEC_ID_ADPCM_IMA_WAV, AV_CODEC_ID_FLAC,      AV_CODEC_ID_VORBIS,
    AV_CODEC_ID_OPUS,          AV_CODEC_ID_AAC,       AV_CODEC_ID_ALAC,
    AV_CODEC_ID_APE,           AV_CODEC_ID_WAVPACK,   AV_CODEC_ID_MUSEPACK7,
    AV_CODEC_ID_MUSEPACK8,     AV_CODEC_ID_PCM_S8,    AV_CODEC_ID_PCM_S16BE,
    AV_CODEC_ID_PCM_S16LE,     AV_CODEC_ID_PCM_S24BE, AV_CODEC_ID_PCM_S24LE,
    AV_CODEC_ID_PCM_S32BE,     AV_CODEC_ID_PCM_S32LE, AV_CODEC_ID_PCM_F32BE,
    AV_CODEC_ID_PCM_F64BE,     AV_CODEC_ID_PCM_ALAW,  AV_CODEC_ID_PCM_MULAW};

// Without memory for what it needs, the process ends.
class LibavReader : public SoundReader {
public:
    LibavReader(const Libav& libav, const SongPart& part) : libav_(libav), part_(part) {}

    // The first frame is decoded at once: it alone tells for sure what the sound is like, since
    // some files name half of its rate, or none.
    bool open(const char* type) {
        const AVInputFormat* const format = libav_.findFormat(type);
        if (!format)
            return fail(SongFault::noDecoder);
        if (!openInput(format) || !openStream() || !readFrame())
            return false;
        isHeld_ = true;
        format_ = formatOfFrame();
        if (frame_->best_effort_timestamp != AV_NOPTS_VALUE)
            origin_ = secondsOf(frame_->best_effort_timestamp);
        if (format_.channels > mostChannels)
            return fail(SongFault::noDecoder);
        return format_.rate > 0 && format_.channels > 0;
    }
    SongFault fault() const { return fault_; } // why it couldn't be opened

    // Some kinds of files say it of themselves, others of the stream in them; AIFF has an author.
    SongTags tags() const {
        SongTags tags;
        for (const AVDictionary* const dictionary : {file_->metadata, stream_->metadata})
            for (const auto& [name, tag] : {std::pair("title", &tags.title),
                                            {"artist", &tags.artist},
                                            {"author", &tags.artist},
                                            {"album", &tags.album}})
                if (const auto* const entry = libav_.findEntry(dictionary, name, nullptr, 0))
                    fillIn(*tag, entry->value);
        return tags;
    }

    SoundFormat format() const override { return format_; }
    double duration() const override {
        return std::max(secondsOf(stream_->duration), 0.0); // what stands for unknown is below 0
    }

    void read(std::vector<float>& samples) override {
        while (samples.size() < leastSamples() && (isHeld_ || readFrame())) {
            isHeld_ = true;
            if (const SoundFormat now = formatOfFrame(); now != format_) {
                if (!samples.empty())
                    return;
                format_ = now;
            }
            append(samples);
            isHeld_ = false;
        }
    }

    void seek(double seconds) override {
        const double from = std::max(seconds - runUp, 0.0) + origin_;
        const auto time = static_cast<std::int64_t>(from / av_q2d(stream_->time_base));
        libav_.seek(file_.get(), stream_->index, time, AVSEEK_FLAG_BACKWARD);
        libav_.flush(decoder_.get());
        isHeld_ = ended_ = false;
        skipTo_ = seconds;
    }

private:
    static constexpr int mostChannels = 8;

    bool fail(SongFault fault) {
        fault_ = fault;
        return false;
    }

    double secondsOf(std::int64_t time) const {
        return static_cast<double>(time) * av_q2d(stream_->time_base);
    }
    std::size_t leastSamples() const {
        return static_cast<std::size_t>(leastSeconds * format_.rate) *
               static_cast<std::size_t>(format_.channels);
    }

    // The library opens no file itself: it reads the song through an input of our own.
    bool openInput(const AVInputFormat* format) {
        input_.reset(libav_.makeInput(static_cast<unsigned char*>(libav_.memory(portion)), portion,
                                      0, this, readSong, nullptr, moveInSong));
        AVFormatContext* file = libav_.makeFormat();
        file->pb = input_.get();
        const bool isOpen = libav_.open(&file, "", format, nullptr) == 0;
        file_.reset(file);
        return isOpen;
    }

    static int readSong(void* self, std::uint8_t* bytes, int size) {
        auto& reader = *static_cast<LibavReader*>(self);
        const auto left = reader.part_.size - static_cast<std::uint64_t>(reader.place_);
        const std::size_t wanted = std::min(static_cast<std::uint64_t>(size), left);
        const std::size_t count =
            reader.part_.file.read(reader.part_.start + static_cast<std::uint64_t>(reader.place_),
                                   {reinterpret_cast<char*>(bytes), wanted});
        reader.place_ += static_cast<std::int64_t>(count);
        return count > 0 ? static_cast<int>(count) : AVERROR_EOF;
    }

    static std::int64_t moveInSong(void* self, std::int64_t offset, int origin) {
        auto& reader = *static_cast<LibavReader*>(self);
        const auto size = static_cast<std::int64_t>(reader.part_.size);
        if (origin & AVSEEK_SIZE)
            return size;
        if ((origin & ~AVSEEK_FORCE) != SEEK_SET || offset < 0)
            return AVERROR(EINVAL);
        return reader.place_ = std::min(offset, size);
    }

    // The first stream of a known kind is the song. The packets of the others, such as pictures,
    // aren't taken.
    bool openStream() {
        const std::span streams(file_->streams, file_->nb_streams);
        const auto found = std::ranges::find_if(streams, [](const AVStream* stream) {
            return std::ranges::find(codecs, stream->codecpar->codec_id) != std::end(codecs);
        });
        if (found == streams.end())
            return fail(faultOf(streams));
        stream_ = *found;
        const AVCodec* const codec = libav_.findDecoder(stream_->codecpar->codec_id);
        if (!codec)
            return fail(SongFault::noDecoder);
        decoder_.reset(libav_.makeContext(codec));
        if (libav_.setParameters(decoder_.get(), stream_->codecpar) < 0)
            return false;
        decoder_->pkt_timebase = stream_->time_base;
        return libav_.openCodec(decoder_.get(), codec, nullptr) >= 0;
    }

    // Of streams among which there is no song.
    static SongFault faultOf(std::span<AVStream* const> streams) {
        const auto isSound = [](const AVStream* stream) {
            return stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
        };
        return streams.empty()                         ? SongFault::damaged
               : std::ranges::any_of(streams, isSound) ? SongFault::noDecoder
                                                       : SongFault::noSound;
    }

    // False at the end. Damaged packets are left out, and so is what is no packet.
    bool readFrame() {
        while (!ended_) {
            if (libav_.receive(decoder_.get(), frame_.get()) == 0)
                return true;
            const int got = libav_.read(file_.get(), packet_.get());
            if (got == AVERROR_EOF || (got < 0 && ++holes_ == mostHoles)) {
                libav_.send(decoder_.get(), nullptr);
                ended_ = true;
            } else if (got == 0) {
                if (packet_->stream_index == stream_->index)
                    libav_.send(decoder_.get(), packet_.get());
                libav_.emptyPacket(packet_.get());
            }
        }
        return libav_.receive(decoder_.get(), frame_.get()) == 0;
    }

    SoundFormat formatOfFrame() const {
        const AVChannelLayout& layout = frame_->ch_layout;
        return {frame_->sample_rate, layout.nb_channels,
                layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask : 0};
    }

    void append(std::vector<float>& samples) {
        const Sampler sampler = samplerOf(frame_->format);
        const int channels = format_.channels;
        if (!sampler || channels > mostChannels)
            return;
        // Whether the samples of each channel stand together, instead of taking turns.
        const bool planar = libav_.isPlanar(static_cast<AVSampleFormat>(frame_->format));
        for (int at = framesBeforeStart(); at < frame_->nb_samples; ++at)
            for (int channel = 0; channel < channels; ++channel)
                samples.push_back(planar
                                      ? sampler(frame_->extended_data[channel], at)
                                      : sampler(frame_->extended_data[0], at * channels + channel));
    }

    // A seek lands at a packet before the wanted place. The frames up to that place are left out.
    int framesBeforeStart() const {
        const double time = frame_->best_effort_timestamp == AV_NOPTS_VALUE
                                ? skipTo_
                                : secondsOf(frame_->best_effort_timestamp) - origin_;
        return static_cast<int>(
            std::clamp<double>(std::round((skipTo_ - time) * format_.rate), 0, frame_->nb_samples));
    }

    const Libav& libav_;
    const SongPart part_;
    std::int64_t place_ = 0; // in the part
    LibavRef<AVIOContext> input_;
    LibavRef<AVFormatContext> file_; // which reads from the input
    AVStream* stream_ = nullptr;
    LibavRef<AVCodecContext> decoder_;
    LibavRef<AVPacket> packet_{libav_.makePacket()};
    LibavRef<AVFrame> frame_{libav_.makeFrame()};
    bool isHeld_ = false; // the frame is still to be taken
    SoundFormat format_;
    double origin_ = 0; // the time that the file gives to the song's beginning
    bool ended_ = false;
    int holes_ = 0;
    double skipTo_ = beforeAll; // seconds
    SongFault fault_ = SongFault::damaged;
};

} // namespace

OpenedSong openWithLibav(const SongPart& part, SongKind kind) {
    const Libav* const libav = Libav::get();
    const char* const type = formatOf(kind);
    if (!libav || !type)
        return {nullptr, SongFault::noDecoder};
    auto reader = std::make_unique<LibavReader>(*libav, part);
    if (!reader->open(type))
        return {nullptr, reader->fault()};
    const SongTags tags = reader->tags();
    return {std::move(reader), {}, tags};
}

} // namespace larkspin
