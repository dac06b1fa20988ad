#include "irc/channels/irc_moderation.h"

#include "irc/connection/irc_session.h"

namespace larkspin {

namespace {

// What would make a ban of somebody one of others, too.
constexpr std::string_view wildcards = "*?@";

} // namespace

bool IrcModeration::ignores(std::string_view name) const {
    return ignored_.contains(session_.features().fold(name));
}

bool IrcModeration::toggleIgnored(std::string_view name) {
    const std::string folded = session_.features().fold(name);
    if (ignored_.erase(folded) > 0)
        return false;
    ignored_.insert(folded);
    return true;
}

void IrcModeration::rename(std::string_view from, std::string_view to) {
    const IrcFeatures& features = session_.features();
    if (ignored_.erase(features.fold(from)) > 0)
        ignored_.insert(features.fold(to));
}

bool IrcModeration::ownerMayEject(const IrcChannels::Place& place) const {
    return place.channel.mayEject(session_.nick(), session_.features());
}

void IrcModeration::eject(const IrcChannel& channel, std::string_view name) {
    const std::string nick(name);
    if (nick.find_first_of(wildcards) != std::string::npos)
        return;
    session_.request("MODE", {channel.name(), "+b", nick + "!*@*"});
    session_.request("KICK", {channel.name(), nick});
}

void IrcModeration::allow(const IrcChannel& channel, std::string_view ejectedRow) {
    for (const std::string& mask : channel.masksOf(ejectedRow))
        session_.request("MODE", {channel.name(), "-b", mask});
}

void IrcModeration::askForBans(IrcChannels::Place& place) {
    if (!place.wereBansAsked && ownerMayEject(place))
        place.wereBansAsked = session_.request("MODE", {place.channel.name(), "b"});
}

} // namespace larkspin
