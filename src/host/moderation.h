// Ignoring people in the room and, where it is the owner's, putting them out and letting them back
// in, one person after the other.
#pragma once

#include "chat/core.h"
#include "host/host_client.h"
#include "host/in_turn.h"

#include <string>
#include <string_view>

namespace larkspin {

class Moderation {
public:
    Moderation(const Core& core, HostClient& client)
        : core_(core), client_(client), inTurn_(core.state) {}

    // The commands. Each takes everybody whose name holds the fragment, without regard to case, but
    // never the owner. One that comes while another is at work runs after it.
    void x(const std::string& fragment);
    void unx(const std::string& fragment);
    void ban(const std::string& fragment);
    void unban(const std::string& fragment);

private:
    // What is done about each person, and what is said of him then.
    struct Mode {
        Deed (RoomPeople::*act)(const Person&);
        std::string_view ending;
    };

    void passRoom(const std::string& fragment, const Mode& mode);
    void letBackIn(const std::string& fragment);
    bool ownerMayEject();
    void pass(RoomPeople& room, const People& people, const std::string& fragment,
              const Mode& mode);
    bool treat(RoomPeople& room, const Person& person, const Mode& mode);

    Core core_;
    HostClient& client_;
    InTurn inTurn_;
};

} // namespace larkspin
