// Ignoring people in the room and, where it is the owner's, putting them out and letting them back
// in: the program selects a person in the client's list and presses the client's button, one person
// after the other.
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
    using List = HostHandle (HostClient::*)();
    struct Mode {
        List list;               // from which the names are read
        HostHandle read;         // the one that they were read from
        std::string_view button; // that is pressed for each person
        std::string_view ending; // of what is said of him
    };

    HostHandle readNames(List list);
    void ignore(const std::string& fragment, std::string_view ending);
    void eject(const std::string& fragment);
    void letBackIn(const std::string& fragment);
    bool refusedToOthers();

    // Does it to everybody in `roomScratch`, and empties that.
    void pass(const std::string& fragment, const Mode& mode);
    enum class Outcome { nobodyMatched, done, ended };
    Outcome walk(const std::string& fragment, const Mode& mode);
    bool treat(int row, const Mode& mode);
    bool act(int row, const Mode& mode);

    Core core_;
    HostClient& client_;
    InTurn inTurn_;
};

} // namespace larkspin
