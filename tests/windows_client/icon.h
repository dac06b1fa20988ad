// A button with a caption. It is pressed by the mouse's button going down on it, or a key, and the
// space key going up.
#pragma once

#include "plain_window.h"

#include <functional>
#include <string>

namespace larkspin::client {

using Pressed = std::function<void(const std::string& caption)>;

HWND icon(HWND parent, const std::string& caption, const Place& place, Pressed pressed,
          const char* className = "_AOL_Icon");

// Several of them in a row, from this place on.
void icons(HWND parent, const std::vector<std::string>& captions, Place place, Pressed pressed);

} // namespace larkspin::client
