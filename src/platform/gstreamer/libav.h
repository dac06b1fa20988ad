// FFmpeg's libraries, loaded by the first song that needs them, since they take more memory than
// all the rest.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <dlfcn.h>
#include <memory>

namespace larkspin {

// The functions in use, from the versions of the libraries whose headers this was built with.
class Libav {
public:
    static const Libav* get(); // null when they are missing

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
    using Entry = decltype(av_dict_get);
    Entry* const findEntry = find<Entry>(basics_, "av_dict_get");
    using Frame = decltype(av_frame_alloc);
    Frame* const makeFrame = find<Frame>(basics_, "av_frame_alloc");
    using FreeFrame = decltype(av_frame_free);
    FreeFrame* const freeFrame = find<FreeFrame>(basics_, "av_frame_free");
};

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

} // namespace larkspin
