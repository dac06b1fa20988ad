#include "platform/gstreamer/sound_reader.h"

#include "platform/gstreamer/midi_file.h"

#include <string_view>

namespace larkspin {

namespace {

using namespace std::string_view_literals;

constexpr auto asfHead = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr auto adpcm = "\x02\x00"sv, imaAdpcm = "\x11\x00"sv; // kinds of samples in a WAV file

constexpr std::size_t lengthOfHead = 22;

bool isPackedWav(std::string_view first) {
    return first.starts_with("RIFF") && first.substr(8, 8) == "WAVEfmt " &&
           (first.substr(20, 2) == adpcm || first.substr(20, 2) == imaAdpcm);
}

} // namespace

ReadBy readerOf(const SongFile& file) {
    std::string bytes = file.begin(lengthOfHead);
    bytes.resize(lengthOfHead);
    const std::string_view first(bytes);
    if (isMidi(first))
        return ReadBy::midi;
    return first.starts_with(asfHead) || isPackedWav(first) ? ReadBy::libav : ReadBy::gstreamer;
}

} // namespace larkspin
