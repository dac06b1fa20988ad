// What a front end shows of a room, and what it lends the room to show things by: the same for the
// owner's own room and for rooms on a network.
#pragma once

#include "chat/scanner.h"
#include "shell/event_loop.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class RowList;

// How the owner is shown a line, and what happens beside the lines: somebody came or went. And what
// is done to the line that he types, and to the window in which he does so.
struct RoomDisplay {
    std::function<void(const ChatLine& line)> line;
    std::function<void(const std::string& text)> message;
    // Shows an answer to something that the owner has typed. If it is empty, `message` shows
    // answers too.
    std::function<void(const std::string& text)> answer = {};
    Task clearInput = [] {}, bringForward = [] {};
    Task changed = [] {}; // what `ShownRoom` tells is another, also where there is no message

    void tell(const std::string& text) const { (answer ? answer : message)(text); }
};

// What a window must know of a room.
class ShownRoom {
public:
    virtual ~ShownRoom() = default;

    virtual std::string name() const = 0;
    virtual std::string ownName() const = 0;
    virtual const RowList& people() const = 0;
    virtual bool isIgnored(std::string_view name) const = 0;
};

} // namespace larkspin
