#include "irc/channels/irc_joining.h"

#include "host/new_lines.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/blanks.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestChannel = 200, longestList = 400;

} // namespace

bool endsIrcName(char byte) {
    return static_cast<unsigned char>(byte) <= ' ' || byte == ',';
}

std::vector<std::string> ircLists(const std::vector<std::string>& names) {
    std::vector<std::string> lists;
    for (const std::string& name : names)
        if (lists.empty() || lists.back().size() + name.size() > longestList)
            lists.push_back(name);
        else
            lists.back().append(1, ',').append(name);
    return lists;
}

std::optional<std::string> IrcJoining::channelNamed(std::string_view given) const {
    const std::string_view trimmed = withoutBlanks(given);
    if (trimmed.empty())
        return std::nullopt;
    // A name without a channel's sign is taken for the usual kind of channel.
    std::string name(session_.features().isChannel(trimmed) ? "" : "#");
    name += trimmed;
    if (name.size() <= longestChannel && std::ranges::none_of(name, endsIrcName))
        return name;
    events_.tell("a room's name is short and has no blanks or commas");
    return std::nullopt;
}

void IrcJoining::beginWith(const std::string& given) {
    wanted_.clear();
    keys_.clear();
    leaving_.clear();
    asksAtOnce_ = false;
    wantedRoom_ = given;
    isComingBack_ = staysAway_ = false;
    entering_ = channelNamed(given).value_or("");
    if (!entering_.empty())
        want(entering_);
}

void IrcJoining::welcomed() {
    asksAtOnce_ = session_.isWelcomed();
    request(wanted_);
}

// On the next connection the owner comes back to where he is now. So the channel that he was in, or
// on his way into, is asked for before the others. One that he was leaving isn't asked for any
// more: he comes into the next one then.
void IrcJoining::lost() {
    leaving_.clear();
    asksAtOnce_ = false;
    isComingBack_ = true;
    if (entering_.empty() && channels_.isInFront())
        entering_ = roomAfterLeaving();
    staysAway_ = entering_.empty() && !channels_.all().empty();
    for (const IrcChannels::Place& place : channels_.all())
        if (!place.isBeingLeft)
            want(place.channel.name());
    std::stable_partition(wanted_.begin(), wanted_.end(), [&](const std::string& name) {
        return session_.isSame(name, entering_);
    });
}

bool IrcJoining::want(const std::string& channel) {
    wantNoMore(channel);
    if (wanted_.size() >= IrcChannels::most)
        return false;
    wanted_.push_back(channel);
    return true;
}

bool IrcJoining::wants(std::string_view channel) const {
    return std::ranges::any_of(
        wanted_, [&](const std::string& name) { return session_.isSame(name, channel); });
}

// False if it wasn't among them.
bool IrcJoining::takeOut(std::vector<std::string>& names, std::string_view channel) const {
    return std::erase_if(
               names, [&](const std::string& name) { return session_.isSame(name, channel); }) > 0;
}

// The key that was given last for the channel; empty for none.
std::string IrcJoining::keyOf(std::string_view channel) const {
    const auto found = std::ranges::find_if(
        keys_, [&](const auto& key) { return session_.isSame(key.first, channel); });
    return found == keys_.end() ? std::string() : found->second;
}

// Asks for the channels in this order, since the first one may become the room. Those without a key
// share a line.
void IrcJoining::request(const std::vector<std::string>& channels) {
    std::vector<std::string> keyless;
    const auto requestThose = [&] {
        for (const std::string& list : ircLists(std::exchange(keyless, {})))
            session_.request("JOIN", {list});
    };
    for (const std::string& channel : channels) {
        const std::string key = keyOf(channel);
        if (key.empty()) {
            keyless.push_back(channel);
            continue;
        }
        requestThose();
        session_.request("JOIN", {channel, key});
    }
    requestThose();
}

void IrcJoining::join(const std::string& given, const std::string& key, bool enters) {
    const auto name = channelNamed(given);
    if (!name)
        return;
    auto* const place = channels_.find(*name, session_.features());
    if (asksAtOnce_ || !session_.isWelcomed()) // else a line that is run on connecting wants it
        isComingBack_ = staysAway_ = false;
    if (place && !place->isBeingLeft)
        return enter(*place);
    if (!session_.isOn())
        return events_.tell("you are not connected");
    if (channels_.all().size() >= IrcChannels::most || !want(*name))
        return events_.tell("there are too many rooms");
    if (!key.empty())
        keys_.insert(keys_.begin(), {*name, key});
    if (enters)
        entering_ = *name;
    takeOut(leaving_, *name);
    // Before all that are wanted are asked for, it is only noted as one of them. One that is being
    // left is asked for when it has been left.
    if (asksAtOnce_ && !place)
        request({*name});
}

bool IrcJoining::enter(std::string_view given) {
    const auto name = channelNamed(given);
    if (!name)
        return true; // which has been told
    const auto* const place = channels_.find(*name, session_.features());
    if (place)
        enter(*place);
    return place;
}

void IrcJoining::enter(const IrcChannels::Place& place) {
    entering_.clear();
    if (!place.isBeingLeft)
        wantedRoom_ = place.channel.name();
    if (channels_.isInFront(place))
        return events_.tell(wordsOfEntering(conversations_, *place.conversation));
    conversations_.enter(*place.conversation);
    events_.newRoom();
}

void IrcJoining::leave(const std::string& farewell) {
    if (IrcChannels::Place* const place = channels_.nextToLeave())
        return leave(*place, farewell);
    // He is in none, or soon in none, so he leaves the one that would be the room. If the server
    // has been asked for it, it will still let him in.
    const std::string next = entering_.empty() && !wanted_.empty() ? wanted_.front() : entering_;
    if (session_.isWelcomed() && !next.empty())
        leaving_.push_back(next);
    wantNoMore(next);
    entering_.clear();
    wantedRoom_ = wanted_.empty() ? "" : wanted_.front();
    if (channels_.all().empty()) // else the server tells when he has left
        events_.tell("you are in no room");
}

// As a typed line, so that it comes after those that he has typed there.
void IrcJoining::leave(IrcChannels::Place& place, const std::string& farewell) {
    place.isBeingLeft =
        session_.send(IrcOutgoing::Kind::typed, ircLine("PART", {place.channel.name(), farewell}));
    wantedRoom_ = roomAfterLeaving();
}

// The room once those that he is leaving have been left; empty for none.
std::string IrcJoining::roomAfterLeaving() const {
    const auto* const place = channels_.nextToLeave();
    return place ? place->channel.name() : "";
}

void IrcJoining::cameIn(const std::string& channel) {
    if (takeOut(leaving_, channel)) {
        session_.request("PART", {channel});
        return;
    }
    wantNoMore(channel);
    const auto* const place = channels_.add(channel, session_.features());
    const bool isAtHome = conversations_.front().isAtHome() || conversations_.isFrontClosed();
    const bool isAwaited = session_.isSame(entering_, channel);
    if (isAwaited)
        entering_.clear();
    if (!place) {
        // The server has let the owner in already, so the channel has to be left again.
        events_.tell("there are too many rooms");
        session_.request("PART", {channel});
    } else if (isAwaited ? isAtHome || !isComingBack_ : isAtHome && !staysAway_) {
        enter(*place);
    } else if (!channels_.isInFront(*place)) {
        events_.tell(visibleName(channel) + " is room " +
                     std::to_string(conversations_.numberOf(*place->conversation)));
    }
}

void IrcJoining::take(const IrcMessage& message) {
    const std::string& command = message.command;
    const bool isPart = command == "PART" && session_.isSelf(message.nick());
    if (isPart || (command == "KICK" && session_.isSelf(message.parameter(1))))
        left(message.parameter(0));
    else if (numeric::isRefusal(command))
        refused(message.parameter(1));
}

void IrcJoining::refused(std::string_view channel) {
    wantNoMore(channel);
    takeOut(leaving_, channel);
    if (session_.isSame(entering_, channel))
        entering_.clear();
}

void IrcJoining::left(std::string_view channel) {
    const auto* const place = channels_.find(channel, session_.features());
    if (!place)
        return;
    const bool wasInFront = channels_.isInFront(*place), isWanted = place->isBeingLeft;
    const std::string name = place->channel.name();
    Conversation& conversation = *place->conversation;
    events_.tell("you have left " + visibleName(name));
    events_.left(name);
    channels_.remove(*place);
    if (wants(name)) // he has asked for it again meanwhile
        request({name});
    // What he types next was for the channel that he was put out of, and for no other one.
    if (wasInFront && isWanted && !channels_.all().empty())
        enter(channels_.all().back());
    else if (wasInFront)
        conversations_.enter(conversations_.home());
    // Of a channel that he was put out of he can still read what was said.
    if (isWanted)
        conversations_.remove(conversation);
    if (wasInFront)
        events_.newRoom();
}

} // namespace larkspin
