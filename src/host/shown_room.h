// What a front end shows beside the lines, and what it lends the rooms to show things by.
#pragma once

#include "shell/event_loop.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class RowList;

// What is done to the line that the owner types, and to the window in which he does so; and what a
// room tells him beside what is said in it.
struct RoomDisplay {
    // What happens; and an answer to something that he has typed, for which a front end keeps room
    // that no flood from others can take. The conversations take both.
    std::function<void(const std::string& text)> message = [](const std::string&) {};
    std::function<void(const std::string& text)> tell = [](const std::string&) {};
    Task clearInput = [] {}, bringForward = [] {};
    Task changed = [] {}; // what `ShownRoom` tells is another, also where there is no message
};

// What a window must know of the conversation in front.
class ShownRoom {
public:
    virtual ~ShownRoom() = default;

    virtual std::string name() const = 0;
    virtual std::string ownName() const = 0;
    virtual const RowList& people() const = 0;
    virtual bool isIgnored(std::string_view name) const = 0;

    // What the room is about; blank for nothing.
    virtual std::string roomTopic() const { return {}; }

    // The signs of the ranks that there are, the highest one first; and of somebody's.
    virtual std::string rankSigns() const { return {}; }
    virtual std::string ranksOf(std::string_view) const { return {}; }
};

} // namespace larkspin
