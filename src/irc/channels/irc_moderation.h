// What the owner does about others: whom he ignores, in all rooms, and whom he puts out of the room
// or lets back in. Nothing here waits.
#pragma once

#include "host/host_client.h"
#include "irc/channels/irc_channels.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace larkspin {

class IrcSession;
struct RoomDisplay;

class IrcModeration : public RoomPeople {
public:
    IrcModeration(IrcSession& session, IrcChannels& channels, const RoomDisplay& shown)
        : session_(session), channels_(channels), shown_(shown) {}

    People listPeople() override;
    bool ownerMayEject() override;
    Deed toggleIgnored(const Person& person) override;
    Deed eject(const Person& person) override;
    Deed allow(const Person& person) override;
    std::optional<People> beginAllowing() override;

    bool ignores(std::string_view name) const;

    // Somebody who is ignored stays so under his next name. Another person may take the old one,
    // and is heard.
    void rename(std::string_view from, std::string_view to);
    void ignoreNobody() { ignored_.clear(); }

    // The owner is in another room, or in none: whoever was listed before isn't meant any more.
    void newRoom() { ++visit_; }

    // Asks for the list of the room's bans, once, and not before the owner could do something about
    // them.
    void askForBans();

private:
    const IrcChannel* channelOf(const Person& person) const;
    Deed notDone(const Person& person) const {
        return person.list == visit_ ? Deed::undone : Deed::over;
    }

    IrcSession& session_;
    IrcChannels& channels_;
    const RoomDisplay& shown_;
    std::set<std::string, std::less<>> ignored_; // folded names
    std::uint64_t visit_ = 0;
};

} // namespace larkspin
