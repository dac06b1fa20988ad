// The colours and styles of everything in the room on a terminal. The program's own are on black;
// the others leave the terminal's own colours, which are taken to be light or dark.
#pragma once

#include "host/preferences.h"
#include "platform/terminal/screen/cells.h"
#include "shell/window.h"

namespace larkspin {

struct RoomStyles {
    Rgb front = 0, ground = 0;                // those of the terminal, as far as they can be known
    CellStyle plain{}, dim{}, name{}, call{}; // what is said
    Rgb lit = 0;                              // the ground of a line that calls the owner
    CellStyle border{}, strip{}, stripName{}, stripDim{}, stripCall{}; // beside it
    CellStyle chosen{}, chosenDim{}, chosenCall{};                     // what is in front
    CellStyle marked{};                                                // the same, on a strip

    // With the client's colour, as it can be read.
    CellStyle colored(const CellStyle& style, Rgb color) const;
};

// As described windows have it.
Color asColor(Rgb color);

RoomStyles stylesIn(RoomColors colors);

} // namespace larkspin
