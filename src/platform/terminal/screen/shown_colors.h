// The colours that a terminal can show, by their numbers there.
#pragma once

#include "platform/terminal/screen/cells.h"

namespace larkspin {

// The number of the nearest one. Of 256 colours, the first 16 are left alone, since each owner has
// his own idea of them; with fewer there is nothing else.
int nearestColor(Rgb color, int colors);

// How different two colours look to an eye.
int colorDifference(Rgb one, Rgb other);

} // namespace larkspin
