// The notice that tells how long the owner has been on the network, as the chat client would show
// it: a window with a text and a button that closes it.
#pragma once

#include "host/host_client.h"

#include <ctime>
#include <string>

namespace larkspin {

class IrcClock {
public:
    void open(const std::tm& timeOfDay, std::chrono::minutes online);
    void close() { text_.clear(); }

    HostHandle window() const { return text_.empty() ? noHandle : windowHandle; }
    HostHandle textOf(HostHandle window) const {
        return window == windowHandle ? textHandle : noHandle;
    }
    HostHandle buttonOf(HostHandle window) const {
        return window == windowHandle ? buttonHandle : noHandle;
    }
    std::string textIn(HostHandle control) const { return control == textHandle ? text_ : ""; }
    void press(HostHandle button) {
        if (button == buttonHandle)
            close();
    }

private:
    // Others than those of a room's people and buttons.
    enum Handle : HostHandle { windowHandle = 100, textHandle, buttonHandle };

    std::string text_;
};

} // namespace larkspin
