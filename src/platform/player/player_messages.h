// What the program and its player process say to each other: all that is wished, and how far
// things are. Each message stands for itself, so that only the latest one counts; the open file of
// a song comes along with the first one about it. Times are seconds of the song, whatever its rate.
#pragma once

#include "platform/player/song_fault.h"
#include "playback/song_tags.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

struct PlayerWishes {
    std::uint32_t song = 0; // counted up for each song, and for none
    bool hasFile = false;   // else there is no song
    bool playing = true;
    double rate = 1;
    double volume = 1; // amplitude
    bool mute = false;
    std::uint32_t seek = 0; // counted up for each seek in this song
    double seekTo = 0;
    std::string title = {}; // of the song, for a mixer to show; cut when it is long
};

enum class SongPhase : std::uint8_t { opening, open, ended, failed };

inline constexpr std::uint8_t startSteps = 3;

struct PlayerReport {
    std::uint32_t song = 0; // the song of the wishes that it is about
    std::uint32_t seek = 0; // the last seek that was done
    std::uint8_t start = 0; // steps of the process's own start that are done
    SongPhase phase = SongPhase::opening;
    SongFault fault = SongFault::unknown; // of a failed song
    bool confined = false;                // it has given up its rights to all that it doesn't need
    bool moving = false;                  // a seek or a change of rate is on its way
    bool advancing = false;               // the position grows by itself, by `rate` a second
    bool withoutDevice = false;           // it plays into silence
    double duration = 0;                  // 0 while unknown
    double position = 0;
    double rate = 1;
    // The moment of the position on the machine's steady clock, which all processes share.
    std::chrono::steady_clock::time_point at{};
    SongTags tags = {}; // each cut when it is long; bytes of any kind

    bool operator==(const PlayerReport&) const = default;
};

inline constexpr double lowestRate = 0.001, highestRate = 100;
inline constexpr double longestTime = 1e9;                         // seconds
inline constexpr std::size_t longestTitle = 200, longestTag = 200; // bytes
inline constexpr std::size_t longestMessage =
    64 + 3 * longestTag + 2; // of a report, which is longer

std::string encoded(const PlayerWishes& wishes);
std::string encoded(const PlayerReport& report);

// Nothing when the bytes are no such message, or say what can't be.
std::optional<PlayerWishes> decodedWishes(std::string_view bytes);
std::optional<PlayerReport> decodedReport(std::string_view bytes);

} // namespace larkspin
