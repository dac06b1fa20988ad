#include "platform/qt/task_bar.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <string_view>
#include <xcb/xcb.h>

namespace larkspin {

namespace {

xcb_atom_t namedAtom(xcb_connection_t* connection, std::string_view name) {
    xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, false, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    std::free(reply);
    return atom;
}

} // namespace

// Qt leaves what it doesn't know of in this property.
void keepOffTaskBar(QWindow& window) {
    const auto* const x = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x || !x->connection())
        return;
    xcb_connection_t* const connection = x->connection();
    static const xcb_atom_t state = namedAtom(connection, "_NET_WM_STATE");
    static const xcb_atom_t skip = namedAtom(connection, "_NET_WM_STATE_SKIP_TASKBAR");
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window.winId()), state, XCB_ATOM_ATOM, 32, 1,
                        &skip);
}

void belongTo(const QWidget* main, QWidget& window) {
    if (!main || !main->windowHandle() || !main->isVisible() || main->isMinimized())
        return;
    window.winId(); // by which it is made
    window.windowHandle()->setTransientParent(main->windowHandle());
    keepOffTaskBar(*window.windowHandle());
}

} // namespace larkspin
