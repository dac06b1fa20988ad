// The two sliders, tempo and volume: the one place where these values live. The player is
// only told.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class MediaControl;

class Sliders {
public:
    Sliders(const Core& core, MediaControl& player)
        : state_(core.state), reply_(core.reply), player_(player) {}

    // The commands.
    void tempo(const std::string& value);
    void volume(const std::string& value);

    // Both sliders from stored texts, told to the player even where nothing changes. What is
    // not numeric or out of range counts as 100 for the tempo and 50 for the volume.
    void restore(const std::string& tempo, const std::string& volume);

    // Move the window's sliders to a value from 0 to the most. Nothing happens if the slider stands
    // there already.
    static constexpr int mostTempo = 200, mostVolume = 100;
    void moveTempo(int value);
    void moveVolume(int value);

    // Apply a slider. Every start of a song sends the volume again.
    void HScroll2_Change(); // volume
    void HScroll3_Change(); // tempo

private:
    AppState& state_;
    Reply& reply_;
    MediaControl& player_;
};

} // namespace larkspin
