// Ignoring people in the room and, where it is the owner's, putting them out and letting them back
// in: the program selects a person in the client's list and presses the client's button, one person
// after the other.
#pragma once

#include "chat/core.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

class HostClient;

class Moderation {
public:
    Moderation(const Core& core, HostClient& client) : core_(core), client_(client) {}

    // The commands. Each takes everybody whose name holds the fragment, without regard to case, but
    // never the owner.
    void x(const std::string& fragment);
    void unx(const std::string& fragment);
    void ban(const std::string& fragment);
    void unban(const std::string& fragment);

private:
    [[maybe_unused]] Core core_;
    [[maybe_unused]] HostClient& client_;
};

} // namespace larkspin
