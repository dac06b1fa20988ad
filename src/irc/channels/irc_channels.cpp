#include "irc/channels/irc_channels.h"

#include <algorithm>
#include <utility>

namespace larkspin {

IrcChannels::Place* IrcChannels::here() {
    const auto found = std::ranges::find(places_, &conversations_.here(), &Place::conversation);
    return found == places_.end() ? nullptr : &*found;
}

IrcChannels::Place* IrcChannels::find(std::string_view name, const IrcFeatures& features) {
    const std::string folded = features.fold(name);
    for (Place& place : places_)
        if (features.fold(place.channel.name()) == folded)
            return &place;
    return nullptr;
}

// The one in which the owner has been before, or a new one.
Conversation& IrcChannels::conversationOf(const std::string& name, const IrcFeatures& features) {
    for (const auto& each : conversations_.all())
        if (each->network() == network_ && each->kind() == Conversation::Kind::room &&
            features.fold(each->name()) == features.fold(name))
            return *each;
    makeRoom();
    return conversations_.add({Conversation::Kind::room, network_, name});
}

// What was said in rooms that he has left stays for as long as there aren't too many of those.
void IrcChannels::makeRoom() {
    std::vector<const Conversation*> left;
    for (const Conversation* each : conversations_.ofNetwork(network_))
        if (each->kind() == Conversation::Kind::room && !each->isOpen &&
            each != &conversations_.front())
            left.push_back(each);
    if (left.size() >= most)
        conversations_.remove(*left.front());
}

IrcChannels::Place* IrcChannels::add(const std::string& name, const IrcFeatures& features) {
    Place* place = find(name, features);
    if (place)
        keepNamesOfBans(*place);
    else if (places_.size() == most)
        return nullptr;
    Conversation& conversation = conversationOf(name, features);
    conversation.isOpen = true;
    if (conversation.name() != name) // in other letters than before
        conversations_.rename(conversation, name);
    Place fresh{IrcChannel(name), &conversation, ++lastVisit_};
    if (place)
        *place = std::move(fresh);
    else
        place = &places_.emplace_back(std::move(fresh));
    if (const auto names = namesOfBans_.extract(name))
        place->channel.bans().takeNames(names.mapped());
    return place;
}

void IrcChannels::keepNamesOfBans(const Place& place) {
    if (const auto& names = place.channel.bans().names(); !names.empty())
        namesOfBans_[place.channel.name()] = names;
}

void IrcChannels::remove(const Place& place) {
    keepNamesOfBans(place);
    place.conversation->isOpen = false;
    places_.erase(places_.begin() + (&place - places_.data()));
}

void IrcChannels::clear() {
    for (const Place& place : places_) {
        keepNamesOfBans(place);
        place.conversation->isOpen = false;
    }
    places_.clear();
}

IrcChannels::Place* IrcChannels::nextToLeave() {
    if (here() && !here()->isBeingLeft)
        return here();
    for (auto place = places_.rbegin(); place != places_.rend(); ++place)
        if (!place->isBeingLeft)
            return &*place;
    return nullptr;
}

void IrcChannels::take(const IrcMessage& message, const IrcFeatures& features) {
    for (Place& place : places_)
        place.channel.take(message, features);
}

} // namespace larkspin
