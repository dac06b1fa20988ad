// A line of a conversation as it stands on rows of the screen: its time, who says it, its text with
// styles and links, broken at the edge. All but the first row are set in.
#pragma once

#include "host/shown_line.h"
#include "platform/terminal/room/room_styles.h"

#include <string>
#include <vector>

namespace larkspin {

struct SaidRow {
    struct Piece {
        std::string text; // as an eye may see it
        CellStyle style;
        std::string link{}; // the address, if it is part of one
    };
    int indent = 0;
    CellStyle ground{}; // of what is blank
    std::vector<Piece> pieces;

    // What stands there, or blank.
    const std::string& linkAt(int column) const;
};

// One row at least.
std::vector<SaidRow> saidRows(const ShownLine& line, int columns, const RoomStyles& styles);

} // namespace larkspin
