// How long a test waits for what must come: only a test that fails takes that long.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace larkspin {

inline constexpr std::chrono::seconds patience(20);
inline constexpr int patienceInMilliseconds = 20'000;

// Whether it comes about, looked at now and then.
inline bool comes(const std::function<bool()>& condition) {
    const auto until = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > until)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
}

} // namespace larkspin
