// Who is in a room, and what its owner may do about them, in a room that is no window of a
// client's. People are known by their names alone. How names are compared is the room's affair; it
// keeps them apart, so that no two of a list are the same person.
#pragma once

#include <string>

namespace larkspin {

class RowList;

class RoomPeople {
public:
    virtual ~RoomPeople() = default;

    // The names, good until the next event. The owner's own is among the first.
    virtual const RowList& people() const = 0;
    virtual const RowList& ejected() const = 0;
    virtual bool ownerMayEject() const = 0;

    // About the owner himself, or somebody who isn't in the list that it is about any more, nothing
    // happens.
    virtual void toggleIgnored(const std::string& name) = 0;
    virtual void eject(const std::string& name) = 0;
    virtual void allow(const std::string& name) = 0;
};

} // namespace larkspin
