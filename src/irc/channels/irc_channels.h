// The channels that the owner is in, each with its conversation.
#pragma once

#include "host/conversations.h"
#include "irc/channels/irc_channel.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class IrcChannels {
public:
    // The conversations must live on.
    explicit IrcChannels(Conversations& conversations) : conversations_(conversations) {}

    static constexpr std::size_t most = 100;

    struct Place {
        IrcChannel channel;
        Conversation* conversation; // closed once he has left
        std::uint64_t visit;        // of this one, by a number of its own
        bool isBeingLeft = false;   // the owner has asked for it, and the server not answered
        bool wereBansAsked = false; // for the whole list; changes are told unasked
    };

    // From now on channels are those of this network.
    void beginOn(int network) { network_ = network; }

    // The one to which the event at work belongs, which is the one in front if it is about none.
    // Null while that isn't a channel of this network.
    Place* here();
    const Place* here() const { return const_cast<IrcChannels*>(this)->here(); }

    // By this a list of people is known; 0 where there is none.
    std::uint64_t visit() const { return here() ? here()->visit : 0; }

    // Whether the owner looks at a conversation of this network.
    bool isInFront() const { return conversations_.front().network() == network_; }
    bool isInFront(const Place& place) const {
        return place.conversation == &conversations_.front();
    }

    Place* find(std::string_view name, const IrcFeatures& features);
    std::vector<Place>& all() { return places_; }
    const std::vector<Place>& all() const { return places_; } // in the order in which he came in

    // Adds a channel that the owner has come into. Null when there are too many. Coming in once
    // more makes the channel anew. Its conversation goes on.
    Place* add(const std::string& name, const IrcFeatures& features);

    // Removes a channel that he has left. Their conversations stay, closed, and no more than a
    // hundred of them.
    void remove(const Place& place);
    void clear();

    // Those who were put out of rooms are called by their names there for as long as the program
    // stays on a network.
    void forgetNamesOfBans() { namesOfBans_.clear(); }

    // The channel that the owner leaves next. That is the one he is in, or, if that is being left
    // already, the last one of the others; none if all are being left.
    Place* nextToLeave();

    // Everything that is told of channels and people.
    void take(const IrcMessage& message, const IrcFeatures& features);

private:
    Conversation& conversationOf(const std::string& name, const IrcFeatures& features);
    void makeRoom();
    void keepNamesOfBans(const Place& place);

    Conversations& conversations_;
    int network_ = Conversations::noNetwork;
    std::uint64_t lastVisit_ = 0;
    std::vector<Place> places_;
    std::map<std::string, std::vector<IrcBans::Called>> namesOfBans_; // in rooms left, by room
};

} // namespace larkspin
