// What the owner does about others: whom he ignores, in all rooms, and whom he puts out of the room
// or lets back in.
#pragma once

#include "irc/channels/irc_channels.h"

#include <set>
#include <string>
#include <string_view>

namespace larkspin {

class IrcSession;

class IrcModeration {
public:
    explicit IrcModeration(IrcSession& session) : session_(session) {}

    bool ignores(std::string_view name) const;

    // True when he is ignored then.
    bool toggleIgnored(std::string_view name);

    // Whoever is ignored is so under his next name, too. Others may take the last one.
    void rename(std::string_view from, std::string_view to);
    void ignoreNobody() { ignored_.clear(); }

    bool ownerMayEject(const IrcChannels::Place& place) const;
    void eject(const IrcChannel& channel, std::string_view name);
    void allow(const IrcChannel& channel, std::string_view ejectedRow);

    // The list of the bans, once, and not before the owner could do something about them.
    void askForBans(IrcChannels::Place& place);

private:
    IrcSession& session_;
    std::set<std::string, std::less<>> ignored_; // folded names
};

} // namespace larkspin
