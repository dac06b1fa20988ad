// What a player has sounded, written into a file on the tests' disk and measured.
#pragma once

#include "support/real_player.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <utility>

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
    // Of a part of them, in seconds. The frequency is that of most periods.
    static Sound measured(std::span<const std::int16_t> samples, double from = 0, double to = 1e6) {
        const auto place = [&](double seconds) {
            return std::min(static_cast<std::size_t>(seconds * recordedRate), samples.size());
        };
        samples = samples.subspan(place(from), place(to) - place(from));
        int peak = 0;
        for (const std::int16_t sample : samples)
            peak = std::max(peak, std::abs(int{sample}));
        std::vector<std::size_t> periods; // from one rise to the next
        std::size_t last = 0;
        bool isBelow = false;
        for (std::size_t at = 0; at < samples.size(); ++at) {
            isBelow |= samples[at] < -peak / 4;
            if (samples[at] > peak / 4 && std::exchange(isBelow, false))
                periods.push_back(at - std::exchange(last, at));
        }
        std::ranges::sort(periods);
        Sound sound{static_cast<double>(samples.size()) / recordedRate, peak / 32768.0, 0};
        if (!periods.empty())
            sound.frequency = recordedRate / static_cast<double>(periods[periods.size() / 2]);
        return sound;
    }
    Sound recordedSound() const { return measured(recordedSamples()); }
    Sound recordSong(PlayerControl& player, const std::string& path) {
        player.Open(path);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        return recordedSound();
    }
};

} // namespace larkspin
