// Where the random picks get their numbers from.
#pragma once

#include "shell/event_loop.h"

#include <cstdint>
#include <random>

namespace larkspin {

class Chance {
public:
    explicit Chance(std::uint64_t seed) : generator_(seed) {}

    // Another course in every run.
    static Chance byClock(const EventLoop& loop) {
        return Chance(static_cast<std::uint64_t>(loop.now().count()));
    }

    // One of 0 to count - 1, each as likely as the other; the count is at least 1.
    int below(int count) { return std::uniform_int_distribution(0, count - 1)(generator_); }

private:
    std::mt19937_64 generator_;
};

} // namespace larkspin
