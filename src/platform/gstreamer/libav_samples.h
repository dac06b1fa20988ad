// The samples of a decoded frame as numbers from -1 to 1.
#pragma once

#include <cstdint>

namespace larkspin {

// Of a list of samples that begins there. Null for a kind (AVSampleFormat) that isn't known.
using Sampler = float (*)(const std::uint8_t* data, int index);
Sampler samplerOf(int format);

} // namespace larkspin
