// The two sliders, tempo and volume: the one place where these values live. The player is
// only told.
#pragma once

#include <string>

namespace larkspin {

struct AppState;
class MediaControl;
class Reply;

class Sliders {
public:
    Sliders(AppState& state, MediaControl& player, Reply& reply)
        : state_(state), player_(player), reply_(reply) {}

    // The commands.
    void tempo(const std::string& value);
    void volume(const std::string& value);

    // Both sliders from stored texts, told to the player even where nothing changes. What is
    // not numeric or out of range counts as 100 for the tempo and 50 for the volume.
    void restore(const std::string& tempo, const std::string& volume);

    // Apply a slider. Every start of a song sends the volume again.
    void HScroll2_Change(); // volume
    void HScroll3_Change(); // tempo

private:
    AppState& state_;
    MediaControl& player_;
    Reply& reply_;
};

} // namespace larkspin
