#include "platform/qt/attention.h"

#include <QApplication>
#include <xcb/xcb.h>

namespace larkspin {

// What Qt has for X would lie in a buffer as long as the window is minimized.
void askForAttention(QWidget& window) {
    QApplication::alert(&window);
    const auto* const x = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x && x->connection())
        xcb_flush(x->connection());
}

} // namespace larkspin
