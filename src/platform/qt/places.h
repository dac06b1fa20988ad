// Places on the screen, in pixels.
#pragma once

#include <QPoint>
#include <QRect>

namespace larkspin {

// Where a window stands whole within the area, nearest to where it is; its top and left edge win
// where it doesn't fit.
QPoint cornerWithin(const QRect& area, const QRect& window);

} // namespace larkspin
