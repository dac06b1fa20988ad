// The two ways in which a button of the client's is pressed. It acts on the second half of each.
#pragma once

#include "host/window_tree/window_calls.h"
#include "host/window_tree/window_names.h"

namespace larkspin {

// By the mouse, whose button goes down and isn't let go of: the key does that.
inline void holdButton(WindowCalls& calls, HostHandle button) {
    calls.send(button, window::leftButtonDown, 0, 0);
}
inline void releaseButton(WindowCalls& calls, HostHandle button) {
    calls.send(button, window::keyUp, window::spaceKey, 0);
}

// By the key alone.
inline void postKeyPress(WindowCalls& calls, HostHandle button) {
    calls.post(button, window::keyDown, window::spaceKey, 0);
    calls.post(button, window::keyUp, window::spaceKey, 0);
}

} // namespace larkspin
