#include "platform/gstreamer/libav_samples.h"

extern "C" {
#include <libavutil/samplefmt.h>
}

#include <cstring>
#include <limits>
#include <type_traits>

namespace larkspin {

namespace {

template <typename Sample> float asFloat(const std::uint8_t* data, int index) {
    Sample sample;
    std::memcpy(&sample, data + static_cast<std::size_t>(index) * sizeof sample, sizeof sample);
    if constexpr (std::is_same_v<Sample, std::uint8_t>)
        return static_cast<float>(sample - 128) / 128;
    else if constexpr (std::is_integral_v<Sample>)
        return static_cast<float>(sample /
                                  -static_cast<double>(std::numeric_limits<Sample>::min()));
    else
        return static_cast<float>(sample);
}

} // namespace

Sampler samplerOf(int format) {
    switch (format) {
    case AV_SAMPLE_FMT_U8:
    case AV_SAMPLE_FMT_U8P:
        return asFloat<std::uint8_t>;
    case AV_SAMPLE_FMT_S16:
    case AV_SAMPLE_FMT_S16P:
        return asFloat<std::int16_t>;
    case AV_SAMPLE_FMT_S32:
    case AV_SAMPLE_FMT_S32P:
        return asFloat<std::int32_t>;
    case AV_SAMPLE_FMT_FLT:
    case AV_SAMPLE_FMT_FLTP:
        return asFloat<float>;
    case AV_SAMPLE_FMT_DBL:
    case AV_SAMPLE_FMT_DBLP:
        return asFloat<double>;
    default:
        return nullptr;
    }
}

} // namespace larkspin
