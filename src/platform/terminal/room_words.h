// The terminal's words about the room and who is in it.
#pragma once

#include <string_view>

namespace larkspin {

class OwnRoom;
class RowList;
class TerminalScreen;

class RoomWords {
public:
    RoomWords(TerminalScreen& screen, OwnRoom& room) : screen_(screen), room_(room) {}

    // How many of those who are there, or kept out, are named.
    static constexpr int mostNamed = 200;

    // Each takes what stands behind its word, and is false when it makes no sense of that.
    bool now(std::string_view rest);
    bool as(std::string_view rest);
    bool bye(std::string_view rest);
    bool whisper(std::string_view rest);
    bool room(std::string_view rest);

private:
    void tellRoom();
    void name(const RowList& people, std::string_view mark);

    TerminalScreen& screen_;
    OwnRoom& room_;
};

} // namespace larkspin
