#include "platform/player/player_messages.h"

#include <algorithm>
#include <cstring>

namespace larkspin {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t wishesForm = 0x6C6B5701, reportForm = 0x6C6B5201;

// Both ends come from the same build and run on the same machine, so the bytes are sent as they are
// in memory.
struct WishesBytes {
    std::uint32_t form = wishesForm;
    std::uint32_t song = 0, seek = 0;
    std::uint8_t hasFile = 0, playing = 0, mute = 0, unused = 0;
    double rate = 0, volume = 0, seekTo = 0;
};
static_assert(sizeof(WishesBytes) + longestTitle <= longestMessage);

struct ReportBytes {
    std::uint32_t form = reportForm;
    std::uint32_t song = 0, seek = 0;
    std::uint8_t phase = 0, moving = 0, advancing = 0, withoutDevice = 0;
    double duration = 0, position = 0, rate = 0;
    std::int64_t at = 0;
    std::uint8_t start = 0, confined = 0, fault = 0, unused[5] = {};
};
static_assert(sizeof(ReportBytes) + 3 * longestTag + 2 <= longestMessage);

template <typename Bytes> std::string bytesOf(const Bytes& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

template <typename Bytes> std::optional<Bytes> messageIn(std::string_view bytes) {
    Bytes message;
    if (bytes.size() != sizeof message)
        return std::nullopt;
    std::memcpy(&message, bytes.data(), sizeof message);
    return message;
}

// Cut where a character ends, and without the zeros that stand between tags.
std::string sentTag(std::string tag) {
    std::erase(tag, '\0');
    std::size_t length = std::min(tag.size(), longestTag);
    constexpr int leadBits = 0xC0, within = 0x80; // a character
    while (length > 0 && length < tag.size() && (tag[length] & leadBits) == within)
        --length;
    return tag.substr(0, length);
}

std::string textOf(const SongTags& tags) {
    return sentTag(tags.title) + '\0' + sentTag(tags.artist) + '\0' + sentTag(tags.album);
}

std::optional<SongTags> tagsIn(std::string_view text) {
    const auto first = std::min(text.find('\0'), text.size()), second = text.find('\0', first + 1);
    if (second == text.npos || text.find('\0', second + 1) != text.npos)
        return std::nullopt;
    const std::string_view title = text.substr(0, first),
                           artist = text.substr(first + 1, second - first - 1),
                           album = text.substr(second + 1);
    if (std::max({title.size(), artist.size(), album.size()}) > longestTag)
        return std::nullopt;
    return SongTags{std::string(title), std::string(artist), std::string(album)};
}

bool isWithin(double value, double least, double most) {
    return value >= least && value <= most; // false for NaN
}

bool isRate(double value) {
    return isWithin(value, lowestRate, highestRate);
}

bool isTime(double value) {
    return isWithin(value, 0, longestTime);
}

bool isPhase(std::uint8_t value) {
    return value <= static_cast<std::uint8_t>(SongPhase::failed);
}

bool isFault(std::uint8_t value) {
    return value <= static_cast<std::uint8_t>(SongFault::damaged);
}

// Whether the moment isn't in the future, so that the time since then can be reckoned.
bool isPast(std::int64_t at) {
    return at >= 0 && at <= std::chrono::nanoseconds(Clock::now().time_since_epoch()).count();
}

} // namespace

std::string encoded(const PlayerWishes& wishes) {
    WishesBytes bytes;
    bytes.song = wishes.song;
    bytes.seek = wishes.seek;
    bytes.hasFile = wishes.hasFile;
    bytes.playing = wishes.playing;
    bytes.mute = wishes.mute;
    bytes.rate = wishes.rate;
    bytes.volume = wishes.volume;
    bytes.seekTo = wishes.seekTo;
    return bytesOf(bytes) + wishes.title.substr(0, longestTitle);
}

std::string encoded(const PlayerReport& report) {
    ReportBytes bytes;
    bytes.song = report.song;
    bytes.seek = report.seek;
    bytes.phase = static_cast<std::uint8_t>(report.phase);
    bytes.moving = report.moving;
    bytes.advancing = report.advancing;
    bytes.withoutDevice = report.withoutDevice;
    bytes.duration = report.duration;
    bytes.position = report.position;
    bytes.rate = report.rate;
    bytes.at = std::chrono::nanoseconds(report.at.time_since_epoch()).count();
    bytes.start = report.start;
    bytes.confined = report.confined;
    bytes.fault = static_cast<std::uint8_t>(report.fault);
    return bytesOf(bytes) + textOf(report.tags);
}

std::optional<PlayerWishes> decodedWishes(std::string_view bytes) {
    const auto said = messageIn<WishesBytes>(bytes.substr(0, sizeof(WishesBytes)));
    if (!said || said->form != wishesForm)
        return std::nullopt;
    return PlayerWishes{.song = said->song,
                        .hasFile = said->hasFile != 0,
                        .playing = said->playing != 0,
                        .rate = said->rate,
                        .volume = said->volume,
                        .mute = said->mute != 0,
                        .seek = said->seek,
                        .seekTo = said->seekTo,
                        .title = std::string(bytes.substr(sizeof(WishesBytes)))};
}

// Every value is checked, since the player's process may be under the control of a hostile file.
std::optional<PlayerReport> decodedReport(std::string_view bytes) {
    const auto said = messageIn<ReportBytes>(bytes.substr(0, sizeof(ReportBytes)));
    const auto tags = tagsIn(bytes.substr(std::min(bytes.size(), sizeof(ReportBytes))));
    if (!said || !tags || said->form != reportForm || !isPhase(said->phase) ||
        !isFault(said->fault) || !isTime(said->duration) || !isTime(said->position) ||
        !isRate(said->rate) || !isPast(said->at))
        return std::nullopt;
    return PlayerReport{.song = said->song,
                        .seek = said->seek,
                        .start = said->start,
                        .phase = static_cast<SongPhase>(said->phase),
                        .fault = static_cast<SongFault>(said->fault),
                        .confined = said->confined != 0,
                        .moving = said->moving != 0,
                        .advancing = said->advancing != 0,
                        .withoutDevice = said->withoutDevice != 0,
                        .duration = said->duration,
                        .position = said->position,
                        .rate = said->rate,
                        .at = Clock::time_point(std::chrono::nanoseconds(said->at)),
                        .tags = *tags};
}

} // namespace larkspin
