// Where the sound goes: a sound device, found once and used for all songs, or silence in real
// time where there is none.
#pragma once

#include "platform/gstreamer/player_link.h"

#include <chrono>
#include <string>

namespace larkspin {

class AudioOutput {
public:
    explicit AudioOutput(std::string description);

    // Gives the pipeline an output, unless it has a good one.
    void attach(GstElement* pipeline);

    // It broke; the next `attach` looks anew.
    void lose();

    bool isSilent() const { return silent_; }

    // Whether an error's text says that it came from an output.
    static bool isNamedIn(const char* errorText);

private:
    GstElement* openOutput() const;
    GstElement* silence();

    std::string description_; // of a sink to use instead of a device
    bool attached_ = false;
    bool lost_ = false; // at least once
    bool silent_ = false;
    std::chrono::steady_clock::time_point triedAt_;
};

} // namespace larkspin
