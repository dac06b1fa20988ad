#include "irc/channels/irc_channels.h"

#include <cassert>

namespace larkspin {

IrcChannels::Place* IrcChannels::find(std::string_view name, const IrcFeatures& features) {
    const std::string folded = features.fold(name);
    for (Place& place : places_)
        if (features.fold(place.channel.name()) == folded)
            return &place;
    return nullptr;
}

IrcChannels::Place* IrcChannels::add(const std::string& name, const IrcFeatures& features) {
    Place* place = find(name, features);
    if (place)
        keepNamesOfBans(*place);
    else if (places_.size() == most)
        return nullptr;
    else
        place = &places_.emplace_back(Place{.channel = IrcChannel(name)});
    *place = {.channel = IrcChannel(name)};
    if (const auto names = namesOfBans_.extract(name))
        place->channel.bans().takeNames(names.mapped());
    return place;
}

void IrcChannels::keepNamesOfBans(const Place& place) {
    if (const auto& names = place.channel.bans().names(); !names.empty())
        namesOfBans_[place.channel.name()] = names;
}

void IrcChannels::remove(const Place& place) {
    const auto index = static_cast<std::size_t>(&place - places_.data());
    keepNamesOfBans(place);
    places_.erase(places_.begin() + static_cast<std::ptrdiff_t>(index));
    if (index == current_)
        current_ = places_.empty() ? 0 : places_.size() - 1;
    else if (index < current_)
        --current_;
    assert(places_.empty() || current_ < places_.size());
    if (here())
        here()->unseen = 0;
}

void IrcChannels::clear() {
    for (const Place& place : places_)
        keepNamesOfBans(place);
    places_.clear();
    current_ = 0;
}

void IrcChannels::enter(const Place& place) {
    current_ = static_cast<std::size_t>(&place - places_.data());
    assert(current_ < places_.size());
    here()->unseen = 0;
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
