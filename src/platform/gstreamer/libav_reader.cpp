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
#include <span>
#include <utility>

namespace larkspin {

namespace {

constexpr double leastSeconds = 0.2; // of sound in each portion
constexpr int portion = 32 * 1024;   // of the file, read at once
constexpr double beforeAll = -1e9;   // seconds
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
        isWhole_ &= found != nullptr;
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
    using Planar = decltype(av_sample_fmt_is_planar);
    Planar* const isPlanar = find<Planar>(basics_, "av_sample_fmt_is_planar");
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

// What the libraries have made, and how it is let go.
struct LibavRelease {
    const Libav* libav = Libav::get();

    void operator()(AVFormatContext* file) const { libav->close(&file); }
    void operator()(AVIOContext* input) const {
        libav->freeMemory(&input->buffer);
        libav->freeInput(&input);
    }
    void operator()(AVCodecContext* decoder) const { libav->freeContext(&decoder); }
    void operator()(AVPacket* packet) const { libav->freePacket(&packet); }
    void operator()(AVFrame* frame) const { libav->freeFrame(&frame); }
};
template <typename Object> using LibavRef = std::unique_ptr<Object, LibavRelease>;

// Without memory for what it needs, the process ends.
class LibavReader : public SoundReader {
public:
    LibavReader(const Libav& libav, const SongFile& song) : libav_(libav), song_(song) {}

    // The library opens no file itself: it reads the song through an input of our own.
    bool open() {
        const char* const type = song_.begin(4) == "RIFF" ? "wav" : "asf"; // and no playlist
        const AVInputFormat* const format = libav_.findFormat(type);
        if (!format)
            return false;
        input_.reset(libav_.makeInput(static_cast<unsigned char*>(libav_.memory(portion)), portion,
                                      0, this, readSong, nullptr, moveInSong));
        AVFormatContext* file = libav_.makeFormat();
        file->pb = input_.get();
        const bool isOpen = libav_.open(&file, "", format, nullptr) == 0;
        file_.reset(file);
        return isOpen && openStream();
    }

    SoundFormat format() const override { return format_; }
    double duration() const override {
        // What stands for an unknown one is below 0.
        return std::max(static_cast<double>(stream_->duration) * av_q2d(stream_->time_base), 0.0);
    }

    void read(std::vector<float>& samples) override {
        const auto least = static_cast<std::size_t>(leastSeconds * format_.rate) *
                           static_cast<std::size_t>(format_.channels);
        while (samples.size() < least && readFrame())
            append(samples);
    }

    void seek(double seconds) override {
        const auto time = static_cast<std::int64_t>(seconds / av_q2d(stream_->time_base));
        libav_.seek(file_.get(), stream_->index, time, AVSEEK_FLAG_BACKWARD);
        libav_.flush(decoder_.get());
        ended_ = false;
        skipTo_ = seconds;
    }

private:
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
        if ((origin & ~AVSEEK_FORCE) != SEEK_SET || offset < 0)
            return AVERROR(EINVAL);
        return reader.place_ = offset;
    }

    // The first stream of a known kind is the song.
    bool openStream() {
        const std::span streams(file_->streams, file_->nb_streams);
        const auto found = std::ranges::find_if(streams, [](const AVStream* stream) {
            return std::ranges::find(codecs, stream->codecpar->codec_id) != std::end(codecs);
        });
        if (found == streams.end())
            return false;
        stream_ = *found;
        const AVCodec* const codec = libav_.findDecoder(stream_->codecpar->codec_id);
        decoder_.reset(libav_.makeContext(codec));
        if (!codec || libav_.setParameters(decoder_.get(), stream_->codecpar) < 0 ||
            libav_.openCodec(decoder_.get(), codec, nullptr) < 0)
            return false;
        const AVChannelLayout& layout = decoder_->ch_layout;
        format_ = {decoder_->sample_rate, layout.nb_channels,
                   layout.order == AV_CHANNEL_ORDER_NATIVE ? layout.u.mask : 0};
        return format_.rate > 0 && format_.channels > 0 && format_.channels <= 8;
    }

    // False at the end. Damaged packets are left out.
    bool readFrame() {
        while (!ended_) {
            if (libav_.receive(decoder_.get(), frame_.get()) == 0)
                return true;
            if (libav_.read(file_.get(), packet_.get()) < 0) {
                libav_.send(decoder_.get(), nullptr);
                ended_ = true;
            } else {
                if (packet_->stream_index == stream_->index)
                    libav_.send(decoder_.get(), packet_.get());
                libav_.emptyPacket(packet_.get());
            }
        }
        return libav_.receive(decoder_.get(), frame_.get()) == 0;
    }

    void append(std::vector<float>& samples) {
        const Sampler sampler = samplerOf(frame_->format);
        const int channels = format_.channels;
        if (!sampler || frame_->ch_layout.nb_channels != channels)
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
        const double time =
            frame_->best_effort_timestamp == AV_NOPTS_VALUE
                ? skipTo_
                : static_cast<double>(frame_->best_effort_timestamp) * av_q2d(stream_->time_base);
        return static_cast<int>(
            std::clamp<double>((skipTo_ - time) * format_.rate, 0, frame_->nb_samples));
    }

    const Libav& libav_;
    const SongFile& song_;
    std::int64_t place_ = 0; // in the song's file
    LibavRef<AVIOContext> input_;
    LibavRef<AVFormatContext> file_; // which reads from the input
    AVStream* stream_ = nullptr;
    LibavRef<AVCodecContext> decoder_;
    LibavRef<AVPacket> packet_{libav_.makePacket()};
    LibavRef<AVFrame> frame_{libav_.makeFrame()};
    SoundFormat format_;
    bool ended_ = false;
    double skipTo_ = beforeAll; // seconds
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
