#include "platform/player/player_messages.h"

#include <climits>
#include <cmath>
#include <cstring>

namespace larkspin {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t wishesForm = 0x6C6B5701, reportForm = 0x6C6B5201;
constexpr double longestTime = 1e9; // seconds

// Both ends are of one build on one machine: the bytes are those in memory.
struct WishesHead {
    std::uint32_t form = wishesForm;
    std::uint32_t song = 0, seek = 0;
    std::uint8_t playing = 0, mute = 0;
    std::uint16_t unused = 0;
    double rate = 0, volume = 0, seekTo = 0;
};
static_assert(sizeof(WishesHead) + PATH_MAX <= longestMessage);

struct ReportBytes {
    std::uint32_t form = reportForm;
    std::uint32_t song = 0, seek = 0;
    std::uint8_t phase = 0, moving = 0, advancing = 0, withoutDevice = 0;
    double duration = 0, position = 0, rate = 0;
    std::int64_t at = 0;
};

template <typename Bytes> std::string bytesOf(const Bytes& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

bool isWithin(double value, double least, double most) {
    return value >= least && value <= most; // no for what is no number
}

bool isRate(double value) {
    return isWithin(value, lowestRate, highestRate);
}

bool isTime(double value) {
    return isWithin(value, 0, longestTime);
}

} // namespace

std::string encoded(const PlayerWishes& wishes) {
    WishesHead head;
    head.song = wishes.song;
    head.seek = wishes.seek;
    head.playing = wishes.playing;
    head.mute = wishes.mute;
    head.rate = wishes.rate;
    head.volume = wishes.volume;
    head.seekTo = wishes.seekTo;
    return bytesOf(head) + wishes.path.substr(0, PATH_MAX);
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
    return bytesOf(bytes);
}

std::optional<PlayerWishes> decodedWishes(std::string_view bytes) {
    WishesHead head;
    if (bytes.size() < sizeof head || bytes.size() > sizeof head + PATH_MAX)
        return std::nullopt;
    std::memcpy(&head, bytes.data(), sizeof head);
    if (head.form != wishesForm)
        return std::nullopt;
    return PlayerWishes{head.song,         std::string(bytes.substr(sizeof head)),
                        head.playing != 0, head.rate,
                        head.volume,       head.mute != 0,
                        head.seek,         head.seekTo};
}

std::optional<PlayerReport> decodedReport(std::string_view bytes) {
    ReportBytes head;
    if (bytes.size() != sizeof head)
        return std::nullopt;
    std::memcpy(&head, bytes.data(), sizeof head);
    const Clock::time_point at{std::chrono::nanoseconds(head.at)};
    if (head.form != reportForm || head.phase > static_cast<std::uint8_t>(SongPhase::failed) ||
        !isTime(head.duration) || !isTime(head.position) || !isRate(head.rate) || at > Clock::now())
        return std::nullopt;
    return PlayerReport{head.song,
                        head.seek,
                        static_cast<SongPhase>(head.phase),
                        head.moving != 0,
                        head.advancing != 0,
                        head.withoutDevice != 0,
                        head.duration,
                        head.position,
                        head.rate,
                        at};
}

} // namespace larkspin
