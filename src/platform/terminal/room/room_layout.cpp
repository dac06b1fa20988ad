#include "platform/terminal/room/room_layout.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr int leastSaid = 60;                    // columns, beside a list
constexpr int leastSaidRows = 8;                 // above the first steps
constexpr int rowsForSong = 4, rowsForTitle = 7; // of the screen
constexpr int leastRooms = 16, mostRooms = 26;   // columns, as those below
constexpr int leastPeople = 14, mostPeople = 24;
constexpr int border = 1;

} // namespace

RoomLayout layOutRoom(int rows, int columns, const RoomParts& parts) {
    RoomLayout layout;
    int top = 0, bottom = std::max(rows, 0), left = 0, right = std::max(columns, 0);
    const auto atFoot = [&](int height) {
        bottom -= height;
        return Area{bottom, 0, height, right};
    };
    if (bottom > 0)
        layout.line = atFoot(1);
    if (rows >= rowsForSong)
        layout.song = atFoot(1);
    if (rows >= rowsForTitle)
        layout.title = {top++, 0, 1, right};
    const int roomsWidth = std::clamp(columns / 7, leastRooms, mostRooms);
    if (parts.hasRooms && right - roomsWidth - border >= leastSaid) {
        layout.rooms = {top, 0, bottom - top, roomsWidth};
        left = roomsWidth + border;
    }
    const int peopleWidth = std::clamp(columns / 8, leastPeople, mostPeople);
    if (parts.hasPeople && right - left - peopleWidth - border >= leastSaid) {
        layout.people = {top, right - peopleWidth, bottom - top, peopleWidth};
        right -= peopleWidth + border;
    }
    if (parts.hintRows > 0 && bottom - top - parts.hintRows >= leastSaidRows) {
        bottom -= parts.hintRows;
        layout.hint = {bottom, left, parts.hintRows, right - left};
    }
    layout.said = {top, left, std::max(bottom - top, 0), std::max(right - left, 0)};
    return layout;
}

} // namespace larkspin
