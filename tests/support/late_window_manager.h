// A window manager that comes to nothing at first: it takes all windows upon itself, but shows none
// before it is told to catch up. Then it does so in the order in which that was asked for, whether
// it has been taken back since or not.
#pragma once

#include "support/x_windows.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace larkspin {

class LateWindowManager {
public:
    explicit LateWindowManager(const std::string& display)
        : connection_(xcb_connect(display.c_str(), nullptr)) {
        const std::uint32_t wanted = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
        const auto* const setup = xcb_get_setup(connection_);
        xcb_change_window_attributes(connection_, xcb_setup_roots_iterator(setup).data->root,
                                     XCB_CW_EVENT_MASK, &wanted);
        xcb_flush(connection_);
    }
    ~LateWindowManager() { xcb_disconnect(connection_); }
    LateWindowManager(const LateWindowManager&) = delete;
    LateWindowManager& operator=(const LateWindowManager&) = delete;

    // Whether a window of that name has been asked for.
    bool isAskedFor(const std::string& name) {
        while (xcb_generic_event_t* const event = xcb_poll_for_event(connection_)) {
            if ((event->response_type & 0x7F) == XCB_MAP_REQUEST)
                windows_.push_back(reinterpret_cast<xcb_map_request_event_t*>(event)->window);
            std::free(event);
        }
        return std::any_of(windows_.begin(), windows_.end(), [&](xcb_window_t window) {
            return nameOf(connection_, window) == name;
        });
    }

    void catchUp() {
        for (const xcb_window_t window : windows_)
            xcb_map_window(connection_, window);
        xcb_flush(connection_);
    }

private:
    xcb_connection_t* connection_;
    std::vector<xcb_window_t> windows_; // that it has been asked to show
};

} // namespace larkspin
