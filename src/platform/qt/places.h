// Places on the screen, in pixels.
#pragma once

#include <QPoint>
#include <QRect>
#include <vector>

namespace larkspin {

// The corner at which the window lies wholly within the area, as near as possible to where it is.
// If it doesn't fit, its top and left edges are within.
QPoint cornerWithin(const QRect& area, const QRect& window);

// The corner at which a window of that size comes up beside the main one, within the area: where it
// covers least of the main window's first part, then of its next ones, then of the whole and of the
// others, and near to its upper right corner, or to the lower one where nothing is covered there.
enum class Near { top, foot };
QPoint cornerBeside(const QRect& area, QSize size, const QRect& main,
                    const std::vector<QRect>& parts, const std::vector<QRect>& others, Near near);

} // namespace larkspin
