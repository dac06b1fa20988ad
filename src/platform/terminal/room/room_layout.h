// Where the parts of the room stand on a screen of whatever size. What is said has the most room;
// the lists beside it, the title and the bar stand where there is enough left. An area is empty
// where its part has no room.
#pragma once

#include "platform/terminal/screen/cells.h"

namespace larkspin {

struct RoomParts {
    bool hasRooms = false, hasPeople = false; // there is something to show in these lists
    int hintRows = 0;                         // of the first steps
};

struct RoomLayout {
    Area title{}, rooms{}, said{}, people{}, hint{}, song{}, line{};
};

RoomLayout layOutRoom(int rows, int columns, const RoomParts& parts);

} // namespace larkspin
