// What the windows on an X display are called: which one has the keyboard, and which one the mouse
// points at.
#pragma once

#include <cstdlib>
#include <string>
#include <xcb/xcb.h>

namespace larkspin {

inline std::string nameOf(xcb_connection_t* connection, xcb_window_t window) {
    xcb_get_property_reply_t* const name = xcb_get_property_reply(
        connection,
        xcb_get_property(connection, false, window, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 99),
        nullptr);
    if (!name)
        return "";
    const std::string text(static_cast<const char*>(xcb_get_property_value(name)),
                           static_cast<std::size_t>(xcb_get_property_value_length(name)));
    std::free(name);
    return text;
}

inline std::string nameWithKeyboard(const std::string& display) {
    xcb_connection_t* const connection = xcb_connect(display.c_str(), nullptr);
    xcb_get_input_focus_reply_t* const focus =
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr);
    const std::string name = focus ? nameOf(connection, focus->focus) : "";
    std::free(focus);
    xcb_disconnect(connection);
    return name;
}

// The window manager's frame has no name, and the window lies in it.
inline std::string nameUnderMouse(const std::string& display) {
    xcb_connection_t* const connection = xcb_connect(display.c_str(), nullptr);
    xcb_window_t window = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    std::string name;
    while (window != XCB_WINDOW_NONE) {
        const std::string own = nameOf(connection, window);
        name = own.empty() ? name : own;
        xcb_query_pointer_reply_t* const pointer =
            xcb_query_pointer_reply(connection, xcb_query_pointer(connection, window), nullptr);
        window = pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
        std::free(pointer);
    }
    xcb_disconnect(connection);
    return name;
}

} // namespace larkspin
