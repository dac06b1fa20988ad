// The channels that the owner is in, one of which is the room. They have numbers, from 1, in the
// order in which he came in.
#pragma once

#include "irc/channels/irc_channel.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class IrcChannels {
public:
    static constexpr std::size_t most = 100;

    struct Place {
        IrcChannel channel;
        int unseen = 0;             // lines, while another one was the room
        bool isBeingLeft = false;   // the owner has asked for it, and the server not answered
        bool wereBansAsked = false; // for the whole list; changes are told unasked
    };

    // The room; none while the owner is in no channel.
    Place* here() { return places_.empty() ? nullptr : &places_[current_]; }
    const Place* here() const { return places_.empty() ? nullptr : &places_[current_]; }
    bool isHere(const Place* place) const { return place && place == here(); }

    Place* find(std::string_view name, const IrcFeatures& features);
    const std::vector<Place>& all() const { return places_; }
    int numberOf(const Place& place) const { return static_cast<int>(&place - places_.data()) + 1; }

    // Adds a channel that the owner has come into; the first one is the room. Null when there are
    // too many. Coming in once more makes the channel anew, under its number.
    Place* add(const std::string& name, const IrcFeatures& features);

    // Removes a channel that he has left. If it was the room, the last one of the others becomes
    // it.
    void remove(const Place& place);
    void clear();

    // Those who were put out of rooms are called by their names there for as long as the program
    // stays on a network.
    void forgetNamesOfBans() { namesOfBans_.clear(); }

    void enter(const Place& place);

    // The channel that the owner leaves next. That is the room, or, if the room is being left
    // already, the channel that becomes the room after it; none if all are being left.
    Place* nextToLeave();

    // Everything that is told of channels and people.
    void take(const IrcMessage& message, const IrcFeatures& features);

private:
    void keepNamesOfBans(const Place& place);

    std::vector<Place> places_;
    std::size_t current_ = 0;
    std::map<std::string, std::vector<IrcBans::Called>> namesOfBans_; // in rooms left, by room
};

} // namespace larkspin
