// Looks at an X display from outside, as its owner does, until a window shows something.
#pragma once

#include <chrono>
#include <memory>
#include <string>

struct xcb_connection_t;

namespace larkspin {

class FirstPaint {
public:
    // The display must be black still.
    explicit FirstPaint(const std::string& display);

    // False when it takes too long, or when the display can't be looked at.
    bool comes(std::chrono::milliseconds within);

private:
    using Moment = std::chrono::steady_clock::time_point;
    bool isMapped(Moment until);
    bool isBlack();

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection_;
};

} // namespace larkspin
