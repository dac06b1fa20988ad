#include "irc/channels/irc_moderation.h"

#include "host/shown_room.h"
#include "irc/connection/irc_session.h"
#include "text/visible.h"

namespace larkspin {

namespace {

// Signs that would make a ban of one person a ban of others as well.
constexpr std::string_view wildcards = "*?@";

} // namespace

People IrcModeration::listPeople() {
    return channels_.here() ? listed(channels_.here()->channel.people(), visit_) : People();
}

std::optional<People> IrcModeration::beginAllowing() {
    if (!channels_.here())
        return std::nullopt;
    return listed(channels_.here()->channel.ejected(), visit_);
}

bool IrcModeration::ownerMayEject() {
    const auto* const place = channels_.here();
    return place && place->channel.mayEject(session_.nick(), session_.features());
}

// The room, if the person is still in it and isn't the owner himself. Null otherwise, and when he
// was listed in another room.
const IrcChannel* IrcModeration::channelOf(const Person& person) const {
    const IrcChannels::Place* const place = channels_.here();
    const bool isThere = place && person.list == visit_ && !session_.isSelf(person.name) &&
                         place->channel.contains(person.name, session_.features());
    return isThere ? &place->channel : nullptr;
}

bool IrcModeration::ignores(std::string_view name) const {
    return ignored_.contains(session_.features().fold(name));
}

Deed IrcModeration::toggleIgnored(const Person& person) {
    if (!channelOf(person))
        return notDone(person);
    const std::string folded = session_.features().fold(person.name);
    const bool isIgnored = ignored_.erase(folded) == 0;
    if (isIgnored)
        ignored_.insert(folded);
    shown_.tell(visibleName(person.name) + (isIgnored ? " is ignored" : " is heard again"));
    shown_.changed();
    return Deed::done;
}

void IrcModeration::rename(std::string_view from, std::string_view to) {
    const IrcFeatures& features = session_.features();
    if (ignored_.erase(features.fold(from)) > 0)
        ignored_.insert(features.fold(to));
}

Deed IrcModeration::eject(const Person& person) {
    const IrcChannel* const channel = channelOf(person);
    if (!channel || !ownerMayEject() || person.name.find_first_of(wildcards) != std::string::npos)
        return notDone(person);
    // The ban comes first, or he could come back before it.
    session_.request("MODE", {channel->name(), "+b", person.name + "!*@*"});
    return session_.request("KICK", {channel->name(), person.name}) ? Deed::done : Deed::undone;
}

Deed IrcModeration::allow(const Person& person) {
    if (person.list != visit_ || !ownerMayEject())
        return notDone(person);
    Deed deed = Deed::undone; // somebody else may have let him in already
    for (const std::string& mask : channels_.here()->channel.masksOf(person.name))
        if (session_.request("MODE", {channels_.here()->channel.name(), "-b", mask}))
            deed = Deed::done;
    return deed;
}

void IrcModeration::askForBans() {
    if (!ownerMayEject() || channels_.here()->wereBansAsked)
        return;
    const std::string& name = channels_.here()->channel.name();
    channels_.here()->wereBansAsked = session_.request("MODE", {name, "b"});
}

} // namespace larkspin
