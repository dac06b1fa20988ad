// What a player has sounded, written into a file on the tests' disk and measured.
#pragma once

#include "support/real_player.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace larkspin {

class RecordingTest : public RealPlayer {
protected:
    static constexpr int recordedRate = 44100;

    struct Sound {
        double seconds = 0, amplitude = 0, frequency = 0;
    };

    std::string recordingSink() const {
        return "audioconvert ! audioresample ! audio/x-raw,format=S16LE,rate=44100,channels=1 ! "
               "filesink location=" +
               (disk.path() / "sound").native();
    }
    std::vector<std::int16_t> recordedSamples() const {
        const std::string bytes = disk.read("sound");
        std::vector<std::int16_t> samples(bytes.size() / 2);
        if (!samples.empty())
            std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
        return samples;
    }
    // Of a part of them, in seconds.
    static Sound measured(const std::vector<std::int16_t>& samples, double from = 0,
                          double to = 1e6) {
        const auto at = [&](double seconds) {
            return std::min(static_cast<std::size_t>(seconds * recordedRate), samples.size());
        };
        int peak = 0;
        std::vector<std::size_t> crossings;
        for (std::size_t index = at(from) + 1; index < at(to); ++index) {
            peak = std::max(peak, std::abs(int{samples[index]}));
            if (samples[index - 1] < 0 && samples[index] >= 0)
                crossings.push_back(index);
        }
        Sound sound{static_cast<double>(at(to) - at(from)) / recordedRate, peak / 32768.0, 0};
        if (crossings.size() > 1)
            sound.frequency = static_cast<double>(crossings.size() - 1) * recordedRate /
                              static_cast<double>(crossings.back() - crossings.front());
        return sound;
    }
};

} // namespace larkspin
