// The lines that the owner types in a window, on their way to the words with a slash, or to the
// room that he is in.
#pragma once

#include "host/conversations.h"

#include <string>
#include <vector>

namespace larkspin {

class AllRooms;
class SlashWords;

class OwnersLines {
public:
    // All must live on.
    OwnersLines(EventLoop& loop, AllRooms& rooms, const SlashWords& words)
        : loop_(loop), rooms_(rooms), words_(words) {}

    // From now on lines are taken, also those that have been typed before.
    void open();

    // One that he has typed, and where he has begun it.
    void take(const std::string& line, const Conversations::Begun& begun);

    // The same as if it had been typed where he is; and in an event of its own.
    void act(const std::string& line);
    void does(const std::string& line);

private:
    EventLoop& loop_;
    AllRooms& rooms_;
    const SlashWords& words_;
    bool isOpen_ = false;
    std::vector<std::string> early_;
};

} // namespace larkspin
