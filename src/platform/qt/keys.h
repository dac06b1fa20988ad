// Keys that go by two names.
#pragma once

#include <qnamespace.h>

namespace larkspin {

// Return, on the keypad as well.
inline bool isReturn(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace larkspin
