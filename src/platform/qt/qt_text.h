// Texts and colours between the program and Qt. A text is handed to Qt as the owner is to see it.
#pragma once

#include "shell/window.h"
#include "text/stand_ins.h"

#include <QColor>
#include <QString>
#include <string>
#include <string_view>

namespace larkspin {

inline QString toQt(std::string_view text) {
    return QString::fromStdString(asSeen(text));
}

inline QColor toQt(Color color) {
    return {static_cast<int>(color & 255), static_cast<int>(color >> 8 & 255),
            static_cast<int>(color >> 16 & 255)};
}

} // namespace larkspin
