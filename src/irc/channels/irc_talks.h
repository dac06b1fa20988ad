// The private talks on a network, each a conversation with one person.
#pragma once

#include "host/conversations.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspin {

class IrcSession;

class IrcTalks {
public:
    // Both must live on.
    IrcTalks(Conversations& conversations, const IrcSession& session)
        : conversations_(conversations), session_(session) {}

    // Strangers begin talks, so that no more are kept; the one that was silent longest goes, but
    // for the one in front, and of those in which the owner has spoken only when there are no
    // others.
    static constexpr std::size_t most = 100;

    // From now on talks are those of this network.
    void beginOn(int network) { network_ = network; }

    Conversation* find(std::string_view nick) const;
    Conversation& findOrBegin(std::string_view nick);

    // Talks go on under the next name of a person, and where there is one of that name, in that.
    void rename(std::string_view from, std::string_view to);

    // Whether something can be said in them: while there is a connection.
    void open(bool isOpen);

private:
    void makeRoom();
    bool isTalk(const Conversation& conversation) const {
        return conversation.network() == network_ &&
               conversation.kind() == Conversation::Kind::person;
    }

    Conversations& conversations_;
    const IrcSession& session_;
    int network_ = Conversations::noNetwork;
};

} // namespace larkspin
