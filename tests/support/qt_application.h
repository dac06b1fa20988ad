// Qt's application for tests in the same process, on a display of its own.
#pragma once

#include "support/x_server.h"

#include <QApplication>
#include <string>

namespace larkspin {

// Once for all tests. It isn't taken apart: its display goes first.
inline const std::string& startQt() {
    static const XServer server;
    static int count = 3;
    static char name[] = "test", option[] = "-display";
    static char* arguments[] = {name, option, const_cast<char*>(server.display().c_str()), nullptr};
    static const QApplication* const application = new QApplication(count, arguments);
    static_cast<void>(application);
    return server.display();
}

} // namespace larkspin
