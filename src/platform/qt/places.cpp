#include "platform/qt/places.h"

#include <algorithm>

namespace larkspin {

QPoint cornerWithin(const QRect& area, const QRect& window) {
    const auto into = [](int start, int length, int first, int last) {
        return std::max(first, std::min(start, last + 1 - length));
    };
    return {into(window.left(), window.width(), area.left(), area.right()),
            into(window.top(), window.height(), area.top(), area.bottom())};
}

} // namespace larkspin
