// Places on the screen, in pixels.
#pragma once

#include <QPoint>
#include <QRect>

namespace larkspin {

// The corner at which the window lies wholly within the area, as near as possible to where it is.
// If it doesn't fit, its top and left edges are within.
QPoint cornerWithin(const QRect& area, const QRect& window);

} // namespace larkspin
