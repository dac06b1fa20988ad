// A standard MIDI file as one row of events in the order of time. The bytes are a stranger's:
// all lengths are checked against what is there, and what is damaged is left out.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct MidiEvent {
    double seconds = 0; // from the song's begin
    // A status byte from 0x80 to 0xEF with its one or two data bytes, or 0xF0 alone: then
    // `longText` of the song holds what is between 0xF0 and 0xF7.
    std::array<std::uint8_t, 3> bytes{};
    std::uint32_t longText = 0;
};

struct MidiSong {
    std::vector<MidiEvent> events;
    std::vector<std::string> longTexts; // system exclusive messages
    double duration = 0;                // seconds, with the silence after the last note
};

bool isMidi(std::string_view firstBytes); // four of them are enough

// Nothing when it holds no note, is of a kind that isn't one song, or lasts more than a day.
std::optional<MidiSong> readMidi(std::string_view file);

} // namespace larkspin
