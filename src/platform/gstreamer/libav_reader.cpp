#include "platform/gstreamer/libav_reader.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <utility>

namespace larkspin {

namespace {

constexpr double leastSeconds = 0.2;                // of sound in each portion
constexpr int portion = 32 * 1024;                  // of the file, read at once
constexpr const char* fileTypes[] = {"asf", "wav"}; // no playlists among them
constexpr AVCodecID codecs[] = {
    AV_CODEC_ID_WMAV1,    AV_CODEC_ID_WMAV2,    AV_CODEC_ID_WMAPRO,       AV_CODEC_ID_WMALOSSLESS,
    AV_CODEC_ID_WMAVOICE, AV_CODEC_ID_ADPCM_MS, AV_CODEC_ID_ADPCM_IMA_WAV};

// The functions in use, from the versions of the libraries whose headers this was built with.
class Libav {
public:
    static const Libav* get() {
        static const Libav libraries;
        return libraries.isWhole_ ? &libraries : nullptr;
    }

private:
    template <typename Function> Function* find(void* library, const char* name) {
        void* const found = library ? ::dlsym(library, name) : nullptr;
        isWhole_ = isWhole_ && found;
        return reinterpret_cast<Function*>(found);
    }

    bool isWhole_ = true;
    void* const formats_ =
        ::dlopen("libavformat.so." AV_STRINGIFY(LIBAVFORMAT_VERSION_MAJOR), RTLD_NOW);
    void* const codecs_ =
        ::dlopen("libavcodec.so." AV_STRINGIFY(LIBAVCODEC_VERSION_MAJOR), RTLD_NOW);
    void* const basics_ = ::dlopen("libavutil.so." AV_STRINGIFY(LIBAVUTIL_VERSION_MAJOR), RTLD_NOW);

public:
    using Format = decltype(av_find_input_format);
    Format* const findFormat = find<Format>(formats_, "av_find_input_format");
    using Open = decltype(avformat_open_input);
    Open* const open = find<Open>(formats_, "avformat_open_input");
    using FormatContext = decltype(avformat_alloc_context);
    FormatContext* const makeFormat = find<FormatContext>(formats_, "avformat_alloc_context");
    using Input = decltype(avio_alloc_context);
    Input* const makeInput = find<Input>(formats_, "avio_alloc_context");
    using FreeInput = decltype(avio_context_free);
    FreeInput* const freeInput = find<FreeInput>(formats_, "avio_context_free");
    using Memory = decltype(av_malloc);
    Memory* const memory = find<Memory>(basics_, "av_malloc");
    using FreeMemory = decltype(av_freep);
    FreeMemory* const freeMemory = find<FreeMemory>(basics_, "av_freep");
    using Close = decltype(avformat_close_input);
    Close* const close = find<Close>(formats_, "avformat_close_input");
    using Read = decltype(av_read_frame);
    Read* const read = find<Read>(formats_, "av_read_frame");
    using Seek = decltype(av_seek_frame);
    Seek* const seek = find<Seek>(formats_, "av_seek_frame");
    using Decoder = decltype(avcodec_find_decoder);
    Decoder* const findDecoder = find<Decoder>(codecs_, "avcodec_find_decoder");
    using Context = decltype(avcodec_alloc_context3);
    Context* const makeContext = find<Context>(codecs_, "avcodec_alloc_context3");
    using FreeContext = decltype(avcodec_free_context);
    FreeContext* const freeContext = find<FreeContext>(codecs_, "avcodec_free_context");
    using Parameters = decltype(avcodec_parameters_to_context);
    Parameters* const setParameters = find<Parameters>(codecs_, "avcodec_parameters_to_context");
    using OpenCodec = decltype(avcodec_open2);
    OpenCodec* const openCodec = find<OpenCodec>(codecs_, "avcodec_open2");
    using Flush = decltype(avcodec_flush_buffers);
    Flush* const flush = find<Flush>(codecs_, "avcodec_flush_buffers");
    using Send = decltype(avcodec_send_packet);
    Send* const send = find<Send>(codecs_, "avcodec_send_packet");
    using Receive = decltype(avcodec_receive_frame);
    Receive* const receive = find<Receive>(codecs_, "avcodec_receive_frame");
    using Packet = decltype(av_packet_alloc);
    Packet* const makePacket = find<Packet>(codecs_, "av_packet_alloc");
    using FreePacket = decltype(av_packet_free);
    FreePacket* const freePacket = find<FreePacket>(codecs_, "av_packet_free");
    using EmptyPacket = decltype(av_packet_unref);
    EmptyPacket* const emptyPacket = find<EmptyPacket>(codecs_, "av_packet_unref");
    using Frame = decltype(av_frame_alloc);
    Frame* const makeFrame = find<Frame>(basics_, "av_frame_alloc");
    using FreeFrame = decltype(av_frame_free);
    FreeFrame* const freeFrame = find<FreeFrame>(basics_, "av_frame_free");
};

// A sample as a number from -1 to 1.
template <typename Sample> float asFloat(const std::uint8_t* data, int index) {
    Sample sample;
    std::memcpy(&sample, data + static_cast<std::size_t>(index) * sizeof sample, sizeof sample);
    if constexpr (std::is_integral_v<Sample>)
        return static_cast<float>(sample /
                                  -static_cast<double>(std::numeric_limits<Sample>::min()));
    else
        return sample;
}

using Sampler = float (*)(const std::uint8_t* data, int index);
Sampler samplerOf(int format) {
    switch (format) {
    case AV_SAMPLE_FMT_S16:
    case AV_SAMPLE_FMT_S16P:
        return asFloat<std::int16_t>;
    case AV_SAMPLE_FMT_S32:
    case AV_SAMPLE_FMT_S32P:
        return asFloat<std::int32_t>;
    case AV_SAMPLE_FMT_FLT:
    case AV_SAMPLE_FMT_FLTP:
        return asFloat<float>;
    default:
        return nullptr;
    }
}

// Whether the samples of each channel stand together, instead of taking turns.
bool isPlanar(int format) {
    return format >= AV_SAMPLE_FMT_U8P && format <= AV_SAMPLE_FMT_DBLP;
}

class LibavReader : public SoundReader {
public:
    LibavReader(const Libav& libav, const SongFile& song) : libav_(libav), song_(song) {}
    ~LibavReader() override {
        libav_.freeFrame(&frame_);
        libav_.freePacket(&packet_);
        libav_.freeContext(&decoder_);
        libav_.close(&file_);
        closeInput();
    }
    LibavReader(const LibavReader&) = delete;
    LibavReader& operator=(const LibavReader&) = delete;

    // One type after the other, each with the file from its beginning.
    bool open() {
        for (const char* type : fileTypes) {
            const AVInputFormat* const format = libav_.findFormat(type);
            if (format && openInput() && libav_.open(&file_, "", format, nullptr) == 0 &&
                openStream())
                return true;
            libav_.close(&file_);
            closeInput();
        }
        return false;
    }

    SoundFormat format() const override { return format_; }
    double duration() const override {
        const double own = static_cast<double>(stream_->duration) * av_q2d(stream_->time_base);
        if (stream_->duration != AV_NOPTS_VALUE && own > 0)
            return own;
        return std::max(static_cast<double>(file_->duration) / AV_TIME_BASE, 0.0);
    }

    void read(std::vector<float>& samples) override {
        const auto least = static_cast<std::size_t>(leastSeconds * format_.rate) *
                           static_cast<std::size_t>(format_.channels);
        while (samples.size() < least && readFrame())
            append(samples);
    }

    void seek(double seconds) override {
        const auto time = static_cast<std::int64_t>(seconds / av_q2d(stream_->time_base));
        libav_.seek(file_, stream_->index, time, AVSEEK_FLAG_BACKWARD);
        libav_.flush(decoder_);
        ended_ = false;
        skipTo_ = seconds;
    }

private:
    // The library opens no file itself: it reads the song through an input of our own.
    bool openInput() {
        place_ = 0;
        auto* const memory = static_cast<unsigned char*>(libav_.memory(portion));
        input_ = memory ? libav_.makeInput(memory, portion, 0, this, readSong, nullptr, moveInSong)
                        : nullptr;
        file_ = input_ ? libav_.makeFormat() : nullptr;
        if (!file_)
            return false;
        file_->pb = input_;
        return true;
    }

    void closeInput() {
        if (input_)
            libav_.freeMemory(&input_->buffer);
        libav_.freeInput(&input_);
    }

    static int readSong(void* self, std::uint8_t* bytes, int size) {
        auto& reader = *static_cast<LibavReader*>(self);
        const std::size_t count =
            reader.song_.read(static_cast<std::uint64_t>(reader.place_),
                              {reinterpret_cast<char*>(bytes), static_cast<std::size_t>(size)});
        reader.place_ += static_cast<std::int64_t>(count);
        return count > 0 ? static_cast<int>(count) : AVERROR_EOF;
    }

    static std::int64_t moveInSong(void* self, std::int64_t offset, int origin) {
        auto& reader = *static_cast<LibavReader*>(self);
        const auto size = static_cast<std::int64_t>(reader.song_.size());
        if (origin & AVSEEK_SIZE)
            return size;
        const int from = origin & ~AVSEEK_FORCE;
        const std::int64_t base = from == SEEK_CUR ? reader.place_ : from == SEEK_END ? size : 0;
        std::int64_t place = 0;
        if (__builtin_add_overflow(base, offset, &place) || place < 0)
            return AVERROR(EINVAL);
        return reader.place_ = place;
    }

    bool openStream() {
        // The first stream of a known kind is the song. The packets of the others aren't read at
        // all.
        for (unsigned at = 0; at < file_->nb_streams; ++at) {
            AVStream* const stream = file_->streams[at];
            const bool isKnown = std::find(std::begin(codecs), std::end(codecs),
                                           stream->codecpar->codec_id) != std::end(codecs);
            if (isKnown && !stream_)
                stream_ = stream;
            else
                stream->discard = AVDISCARD_ALL;
        }
        const AVCodec* const codec =
            stream_ ? libav_.findDecoder(stream_->codecpar->codec_id) : nullptr;
        decoder_ = libav_.makeContext(codec);
        packet_ = libav_.makePacket();
        frame_ = libav_.makeFrame();
        if (!codec || !decoder_ || !packet_ || !frame_ ||
            libav_.setParameters(decoder_, stream_->codecpar) < 0 ||
            libav_.openCodec(decoder_, codec, nullptr) < 0)
            return false;
        const AVChannelLayout& layout = decoder_->ch_layout;
        format_ = {decoder_->sample_rate, layout.nb_channels,
                   layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask : 0};
        return format_.rate > 0 && format_.channels > 0 && format_.channels <= 8;
    }

    // False at the end. Damaged packets are left out.
    bool readFrame() {
        while (!ended_) {
            if (libav_.receive(decoder_, frame_) == 0)
                return true;
            if (libav_.read(file_, packet_) < 0) {
                libav_.send(decoder_, nullptr);
                ended_ = true;
            } else {
                if (packet_->stream_index == stream_->index)
                    libav_.send(decoder_, packet_);
                libav_.emptyPacket(packet_);
            }
        }
        return libav_.receive(decoder_, frame_) == 0;
    }

    void append(std::vector<float>& samples) {
        const Sampler sampler = samplerOf(frame_->format);
        const int channels = format_.channels;
        if (!sampler || frame_->ch_layout.nb_channels != channels)
            return;
        const bool planar = isPlanar(frame_->format);
        for (int at = framesBeforeStart(); at < frame_->nb_samples; ++at)
            for (int channel = 0; channel < channels; ++channel)
                samples.push_back(planar
                                      ? sampler(frame_->extended_data[channel], at)
                                      : sampler(frame_->extended_data[0], at * channels + channel));
    }

    // A seek lands at a packet before the wanted place. The frames up to that place are left out.
    int framesBeforeStart() {
        if (skipTo_ <= 0)
            return 0;
        const double time =
            frame_->best_effort_timestamp == AV_NOPTS_VALUE
                ? skipTo_
                : static_cast<double>(frame_->best_effort_timestamp) * av_q2d(stream_->time_base);
        const double frames = (skipTo_ - time) * format_.rate;
        if (frames >= frame_->nb_samples)
            return frame_->nb_samples;
        skipTo_ = 0;
        return frames > 0 ? static_cast<int>(frames) : 0;
    }

    const Libav& libav_;
    const SongFile& song_;
    std::int64_t place_ = 0; // in the song's file
    AVIOContext* input_ = nullptr;
    AVFormatContext* file_ = nullptr;
    AVStream* stream_ = nullptr;
    AVCodecContext* decoder_ = nullptr;
    AVPacket* packet_ = nullptr;
    AVFrame* frame_ = nullptr;
    SoundFormat format_;
    bool ended_ = false;
    double skipTo_ = 0; // seconds
};

} // namespace

std::unique_ptr<SoundReader> openWithLibav(const SongFile& file) {
    const Libav* const libav = Libav::get();
    if (!libav)
        return nullptr;
    auto reader = std::make_unique<LibavReader>(*libav, file);
    if (!reader->open())
        return nullptr;
    return reader;
}

} // namespace larkspin
