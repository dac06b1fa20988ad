#include "first_paint.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <poll.h>
#include <thread>
#include <xcb/xcb.h>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

// Each look keeps the display busy for a while, so the looks don't follow each other at once.
constexpr auto betweenLooks = 1ms;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Type> using Reply = std::unique_ptr<Type, Free>;

const xcb_screen_t& screenOf(xcb_connection_t* connection) {
    return *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

} // namespace

FirstPaint::FirstPaint(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr), xcb_disconnect) {
    xcb_connection_t* const connection = connection_.get();
    if (xcb_connection_has_error(connection))
        return;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, screenOf(connection).root, XCB_CW_EVENT_MASK, &mask);
    isBlack(); // waits until the display has taken note
}

bool FirstPaint::comes(std::chrono::milliseconds within) {
    const Moment until = std::chrono::steady_clock::now() + within;
    if (xcb_connection_has_error(connection_.get()) || !isMapped(until))
        return false;
    while (isBlack()) {
        if (std::chrono::steady_clock::now() > until)
            return false;
        std::this_thread::sleep_for(betweenLooks);
    }
    return true;
}

bool FirstPaint::isMapped(Moment until) {
    xcb_connection_t* const connection = connection_.get();
    while (std::chrono::steady_clock::now() < until && !xcb_connection_has_error(connection)) {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)})
            if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY)
                return true;
        pollfd readable{xcb_get_file_descriptor(connection), POLLIN, 0};
        ::poll(&readable, 1, 100);
    }
    return false;
}

bool FirstPaint::isBlack() {
    xcb_connection_t* const connection = connection_.get();
    const xcb_screen_t& screen = screenOf(connection);
    const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection,
        xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root, 0, 0,
                      screen.width_in_pixels, screen.height_in_pixels, 0xffffff),
        nullptr));
    if (!image)
        return true;
    const std::uint8_t* const bytes = xcb_get_image_data(image.get());
    return std::all_of(bytes, bytes + xcb_get_image_data_length(image.get()),
                       [](std::uint8_t byte) { return byte == 0; });
}

} // namespace larkspin
