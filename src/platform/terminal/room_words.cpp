#include "platform/terminal/room_words.h"

#include "host/own_room.h"
#include "platform/terminal/terminal_screen.h"
#include "platform/terminal/typed_words.h"
#include "text/blanks.h"

#include <algorithm>

namespace larkspin {

bool RoomWords::now(std::string_view rest) {
    if (rest.empty())
        return false;
    room_.say(textBehind(rest));
    return true;
}

bool RoomWords::as(std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty())
        return false;
    if (rest.empty())
        room_.comeIn(name);
    else
        room_.sayAs({name, textBehind(rest)});
    return true;
}

bool RoomWords::bye(std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty() || !takeWord(rest).empty())
        return false;
    room_.leave(name);
    return true;
}

bool RoomWords::whisper(std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty() || rest.empty())
        return false;
    room_.whisper(name, textBehind(rest));
    return true;
}

bool RoomWords::room(std::string_view rest) {
    if (withoutBlanks(rest).empty())
        tellRoom();
    else
        room_.enterRoom(std::string(rest));
    return true;
}

void RoomWords::tellRoom() {
    const int count = room_.people().count();
    screen_.showRoom(room_.roomName() + ", " + std::to_string(count) +
                     (count == 1 ? " person" : " people"));
    name(room_.people(), "");
    name(room_.ejected(), " (kept out)");
}

void RoomWords::name(const RowList& people, std::string_view mark) {
    const int named = std::min(people.count(), mostNamed);
    for (int row = 0; row < named; ++row) {
        std::string line = "  " + std::string(people.row(row));
        if (room_.ignores(people.row(row)))
            line += " (ignored)";
        screen_.showRoom(line.append(mark));
    }
    if (people.count() > named)
        screen_.showRoom("  and " + std::to_string(people.count() - named) + " more" +
                         std::string(mark));
}

} // namespace larkspin
