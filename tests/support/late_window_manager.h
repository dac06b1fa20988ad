// A window manager that comes to nothing at first: it takes all windows upon itself, but shows none
// before it is told to catch up. Then it does so in the order in which that was asked for, whether
// it has been taken back since or not.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <xcb/xcb.h>

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

    void catchUp() {
        while (xcb_generic_event_t* const event = xcb_poll_for_event(connection_)) {
            if ((event->response_type & 0x7F) == XCB_MAP_REQUEST)
                xcb_map_window(connection_,
                               reinterpret_cast<xcb_map_request_event_t*>(event)->window);
            std::free(event);
        }
        xcb_flush(connection_);
    }

private:
    xcb_connection_t* connection_;
};

} // namespace larkspin
