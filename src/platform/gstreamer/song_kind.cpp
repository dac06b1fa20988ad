#include "platform/gstreamer/song_kind.h"

#include "platform/gstreamer/midi_file.h"

#include <string_view>

namespace larkspin {

namespace {

using namespace std::string_view_literals;

constexpr auto asfHead = "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
constexpr auto adpcm = "\x02\x00"sv, imaAdpcm = "\x11\x00"sv; // kinds of samples in a WAV file

constexpr std::size_t lengthOfHead = 22;
constexpr int mostTags = 10; // one after the other

struct Magic {
    std::string_view bytes;
    SongKind kind;
};

// Of files that may begin with a tag.
constexpr Magic tagged[] = {{"fLaC"sv, SongKind::flac},
                            {"MAC "sv, SongKind::ape},
                            {"wvpk"sv, SongKind::wavpack},
                            {"MP+"sv, SongKind::musepack7},
                            {"MPCK"sv, SongKind::musepack8}};

std::string headAt(const SongFile& file, std::uint64_t place) {
    std::string head(lengthOfHead, '\0');
    file.read(place, head);
    return head;
}

bool isPackedWav(std::string_view head) {
    return head.starts_with("RIFF") && head.substr(8, 8) == "WAVEfmt " &&
           (head.substr(20, 2) == adpcm || head.substr(20, 2) == imaAdpcm);
}

bool isAiff(std::string_view head) {
    const auto form = head.substr(8, 4);
    return head.starts_with("FORM") && (form == "AIFF" || form == "AIFC");
}

// Twelve bits of one; the two bits after the next one, which are the layer of MP3, are none here.
bool isAdts(std::string_view head) {
    return head[0] == '\xFF' && (head[1] & 0xF6) == 0xF0;
}

// The length of an ID3v2 tag, of which each byte of four holds seven bits; 0 when it is none.
std::uint64_t tagLength(std::string_view head) {
    constexpr std::uint64_t headerLength = 10;
    constexpr int hasFooter = 0x10;
    if (!head.starts_with("ID3"))
        return 0;
    std::uint64_t length = 0;
    for (const char byte : head.substr(6, 4))
        length = length << 7 | (static_cast<unsigned char>(byte) & 0x7F);
    return length + headerLength + ((head[5] & hasFooter) != 0 ? headerLength : 0);
}

} // namespace

std::uint64_t afterTags(const SongFile& file) {
    std::uint64_t place = 0;
    for (int tags = 0; tags < mostTags; ++tags) {
        const std::uint64_t length = tagLength(headAt(file, place));
        if (length == 0)
            break;
        place += length;
    }
    return place;
}

SongKind kindOf(const SongFile& file) {
    const std::string first = headAt(file, 0);
    if (isMidi(first))
        return SongKind::midi;
    if (first.starts_with(asfHead))
        return SongKind::asf;
    if (isPackedWav(first))
        return SongKind::packedWav;
    if (isAiff(first))
        return SongKind::aiff;
    if (first.starts_with("OggS"))
        return SongKind::ogg;
    if (first.substr(4, 4) == "ftyp")
        return SongKind::mp4;
    const std::string own = headAt(file, afterTags(file));
    for (const Magic& magic : tagged)
        if (own.starts_with(magic.bytes))
            return magic.kind;
    return isAdts(own) ? SongKind::adts : SongKind::other;
}

} // namespace larkspin
