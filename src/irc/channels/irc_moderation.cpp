#include "irc/channels/irc_moderation.h"

#include "host/shown_room.h"
#include "irc/channels/irc_ignore_list.h"
#include "irc/channels/irc_masks.h"
#include "irc/channels/irc_origin.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/blanks.h"
#include "text/parts.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenSearchLooks = 20ms; // at whether the answer has come

} // namespace

People IrcModeration::listPeople() {
    return channels_.here() ? listed(channels_.here()->channel.people(), channels_.visit())
                            : People();
}

std::optional<People> IrcModeration::beginAllowing() {
    if (!channels_.here())
        return std::nullopt;
    return listed(channels_.here()->channel.ejected(), channels_.visit());
}

bool IrcModeration::ownerMayEject() {
    const auto* const place = channels_.here();
    return place && place->channel.mayEject(session_.nick(), session_.features());
}

// The room, if the person is still in it and isn't the owner himself. Null otherwise, and when he
// was listed in another room.
IrcChannel* IrcModeration::channelOf(const Person& person) const {
    IrcChannels::Place* const place = channels_.here();
    const bool isThere = place && person.list == place->visit && !session_.isSelf(person.name) &&
                         place->channel.contains(person.name, session_.features());
    return isThere ? &place->channel : nullptr;
}

bool IrcModeration::ignores(std::string_view who) const {
    return ignored_.contains(session_.features().fold(partedAt(who, '!').head)) || maskFor(who);
}

const std::string* IrcModeration::maskFor(std::string_view who) const {
    return kept_ && !kept_->masks().empty() ? kept_->find(senderOf(who), session_.features())
                                            : nullptr;
}

// With where he comes from, as far as it is known from the channels.
std::string IrcModeration::senderOf(std::string_view who) const {
    if (who.find('!') != who.npos)
        return std::string(who);
    const std::string folded = session_.features().fold(who);
    for (const auto& place : channels_.all())
        if (const IrcPresence* const presence = place.channel.presences().find(folded);
            presence && !presence->host.empty())
            return std::string(who) + '!' + presence->user + '@' + presence->host;
    return std::string(who) + "!@";
}

bool IrcModeration::hear(std::string_view name) {
    return ignored_.erase(session_.features().fold(name)) > 0;
}

Deed IrcModeration::toggleIgnored(const Person& person) {
    if (!channelOf(person))
        return notDone(person);
    bool isHeard = hear(person.name);
    if (kept_ && kept_->remove(IrcIgnoreList::maskOf(person.name)))
        isHeard = true;
    // A mask that is about others, too, isn't taken back by the name of one of them.
    if (const std::string* const mask = maskFor(person.name)) {
        shown_.tell(visibleName(person.name) + " is ignored as " + visibleName(*mask) +
                    ": /unignore takes that back");
        return Deed::undone;
    }
    if (!isHeard)
        ignored_.insert(session_.features().fold(person.name));
    shown_.tell(visibleName(person.name) + (isHeard ? " is heard again" : " is ignored"));
    shown_.changed();
    return Deed::done;
}

void IrcModeration::forgetPeople() {
    ignored_.clear();
    private_.clear();
    channels_.forgetNamesOfBans();
}

void IrcModeration::take(const IrcMessage& message) {
    const std::string& command = message.command;
    for (const auto& search : searches_)
        search->isOver |= ends(*search, message);
    if (command == "NICK")
        rename(message.nick(), message.parameter(0));
    if (command == numeric::endOfNames)
        makePrivate(message.parameter(1));
    // With the names it is known whether the owner may put others out; a MODE may change that.
    if (command == numeric::endOfNames || command == "MODE")
        askForBans();
}

// Somebody who is ignored stays so under his next name. Another person may take the old one, and is
// heard.
void IrcModeration::rename(std::string_view from, std::string_view to) {
    const IrcFeatures& features = session_.features();
    if (ignored_.erase(features.fold(from)) > 0)
        ignored_.insert(features.fold(to));
    for (const auto& search : searches_)
        if (session_.isSame(search->nick, from))
            search->nick = to;
}

// Whether the server could tell nothing more of somebody that a ban may be about.
bool IrcModeration::isKnown(const IrcChannel& channel, std::string_view nick) const {
    const IrcFeatures& features = session_.features();
    const IrcPresence* const presence = channel.presences().find(features.fold(nick));
    if (!presence || presence->host.empty())
        return false;
    const bool asksAccount = features.tellsAccounts && !features.accountMask.empty();
    return !asksAccount || (!presence->account.empty() && session_.holds("account-notify"));
}

// The server has told of him, or won't.
bool IrcModeration::ends(const Search& search, const IrcMessage& message) const {
    const std::string& command = message.command;
    if (command == numeric::tryLater || command == numeric::unknownCommand)
        return message.parameter(1) == "WHO";
    if (command == numeric::endOfWho)
        return session_.isSame(message.parameter(1), search.asked);
    const auto told = numeric::isNumeric(command) ? originIn(message) : std::nullopt;
    return told && session_.isSame(told->nick, search.nick);
}

// Asks where he comes from. Waits, and tells what he is called then: another name doesn't help him.
std::string IrcModeration::find(const Person& person) {
    const Nanoseconds latest = loop_.now() + longestWithItsTurn;
    const auto search = std::make_shared<Search>(Search{person.name, person.name, latest});
    std::vector<std::string> asked{person.name};
    if (session_.features().tellsAccounts)
        asked.push_back(whoFields);
    const bool isAsked =
        session_.send(IrcOutgoing::Kind::protocol, ircLine("WHO", asked), [this, search, latest] {
            search->end = std::min(loop_.now() + longestSearch, latest);
            return std::string();
        });
    if (!isAsked)
        return person.name;
    searches_.push_back(search);
    while (!search->isOver && person.list == channels_.visit() && loop_.now() < search->end)
        loop_.waitUntil(std::min(loop_.now() + betweenSearchLooks, search->end));
    std::erase(searches_, search);
    return search->nick;
}

Deed IrcModeration::eject(const Person& person) {
    const IrcChannel* const listed = channelOf(person);
    if (!listed || !ownerMayEject())
        return notDone(person);
    const std::string nick = isKnown(*listed, person.name) ? person.name : find(person);
    IrcChannel* const channel = channelOf({nick, person.row, person.list});
    if (!channel || !ownerMayEject())
        return notDone(person);
    const IrcFeatures& features = session_.features();
    const auto masks = ircMasksOf(nick, session_.nick(), channel->presences(), features);
    for (const std::string& mask : masks)
        channel->bans().call(mask, nick, features);
    // The ban comes first, or he could come back before it. Nothing comes between the two.
    std::string lines;
    for (const std::string& line : ircBanLines(channel->name(), '+', masks, features))
        lines += line;
    lines += ircLine("KICK", {channel->name(), nick});
    return session_.send(IrcOutgoing::Kind::protocol, lines) ? Deed::done : Deed::undone;
}

Deed IrcModeration::allow(const Person& person) {
    if (person.list != channels_.visit() || !ownerMayEject())
        return notDone(person);
    const IrcChannel& channel = channels_.here()->channel;
    Deed deed = Deed::undone; // somebody else may have let him in already
    for (std::string& line :
         ircBanLines(channel.name(), '-', channel.masksOf(person.name), session_.features()))
        if (session_.send(IrcOutgoing::Kind::protocol, std::move(line)))
            deed = Deed::done;
    return deed;
}

// A room's name may have been given without its sign.
void IrcModeration::keepPrivate(const std::string& room) {
    const std::string name(withoutBlanks(room));
    if (private_.size() < IrcChannels::most)
        private_.insert(
            session_.features().fold(session_.features().isChannel(name) ? name : '#' + name));
}

// To be called once it is known who is there.
void IrcModeration::makePrivate(std::string_view name) {
    const IrcFeatures& features = session_.features();
    const auto* const place = channels_.find(name, features);
    if (place && private_.contains(features.fold(name)) && place->channel.people().count() == 1 &&
        place->channel.mayEject(session_.nick(), features))
        session_.request("MODE", {place->channel.name(), "+si"});
}

void IrcModeration::askForBans() {
    if (!ownerMayEject() || channels_.here()->wereBansAsked)
        return;
    const std::string& name = channels_.here()->channel.name();
    channels_.here()->wereBansAsked = session_.request("MODE", {name, "b"});
}

} // namespace larkspin
