// Another player's window, which tells the numbers of its commands.
#pragma once

#include "plain_window.h"

#include <string>

namespace larkspin::client {

class OtherPlayer {
public:
    void show(const std::string& caption); // no window without one

private:
    HWND window_ = nullptr;
};

} // namespace larkspin::client
