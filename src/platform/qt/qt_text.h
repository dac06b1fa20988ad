// Texts and colours between the program and Qt.
#pragma once

#include "shell/window.h"

#include <QColor>
#include <QString>
#include <string>
#include <string_view>

namespace larkspin {

inline QString toQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline QColor toQt(Color color) {
    return {static_cast<int>(color & 255), static_cast<int>(color >> 8 & 255),
            static_cast<int>(color >> 16 & 255)};
}

} // namespace larkspin
