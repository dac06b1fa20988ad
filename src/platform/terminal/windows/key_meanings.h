// What single keys mean in all windows.
#pragma once

#include "platform/terminal/screen/strokes.h"

namespace larkspin {

inline bool isTypedText(const KeyStroke& key) {
    return key.kind == KeyStroke::Kind::character && !key.alt && !key.ctrl;
}

inline bool isTypedSpace(const KeyStroke& key) {
    return isTypedText(key) && key.character == U' ';
}

inline bool isMenuKey(const KeyStroke& key) {
    return key.kind == KeyStroke::Kind::function && key.number == 10 && key.shift;
}

// By which the arrows lead from control to control.
inline int wayOf(KeyStroke::Kind key) {
    if (key == KeyStroke::Kind::up || key == KeyStroke::Kind::left)
        return -1;
    return key == KeyStroke::Kind::down || key == KeyStroke::Kind::right ? 1 : 0;
}

} // namespace larkspin
