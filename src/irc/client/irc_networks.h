// All networks: those that the owner has asked for, each with a connection of its own, and the one
// that he asks for next, for which he may have given things already.
#pragma once

#include "host/conversations.h"
#include "irc/client/irc_network.h"

#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class IrcNetworks {
public:
    using MakeConnection = std::function<std::unique_ptr<IrcConnection>()>;

    IrcNetworks(IrcNetwork::Shared shared, MakeConnection makeConnection, IrcAccounts& accounts,
                IrcOnConnect::Words words);
    ~IrcNetworks() { shared_.loop.cancel(following_); }
    IrcNetworks(const IrcNetworks&) = delete;
    IrcNetworks& operator=(const IrcNetworks&) = delete;

    using All = std::vector<std::unique_ptr<IrcNetwork>>;
    const All& all() const { return all_; } // the next one is the last

    // The one that a conversation belongs to; null for one at home.
    IrcNetwork* of(const Conversation& conversation) const;

    // The one that the owner means where he names none: that of the conversation in front; at home
    // the one that he is on, of several the one where he was last, or has connected to since;
    // without one, the next one.
    IrcNetwork& atHand() const;

    // The one that he has connected to last; the next one if there was none.
    IrcNetwork& last() const;

    IrcNetwork* named(std::string_view name) const; // null for none
    bool isOnAny() const;

    // Whose certificate the owner was shown last and hasn't taken; null for none.
    IrcNetwork* lastToAskForTrust() const;
    bool areSeveral() const { return all_.size() > 2; }

    // Goes there, beside those where he is already. False for too many networks.
    bool connect(const IrcWish& wish);

    // Goes to one again that he was on before.
    void connectAgain(IrcNetwork& network);

    // To be called as a run begins. Those that the last run was on are connected to again. Returns
    // at once.
    void takeUpAgain();

    // One that he isn't on is known no more, with all that was kept of it.
    void forget(IrcNetwork& network);

    // What makes a drive path of what the owner types as one.
    void readPathsBy(const IrcAccess::ReadPath& readPath);

    void limitSaid(int linesPerMinute);

    // To be called as the process ends.
    void finish();

private:
    IrcNetwork& add(IrcAccountFile& file);
    void takeWhatWasGiven(IrcNetwork& network);
    void changed();
    void follow();

    IrcNetwork::Shared shared_;
    Task shownChanged_;
    MakeConnection makeConnection_;
    IrcAccounts& accounts_;
    IrcOnConnect::Words words_;
    IrcAccess::ReadPath readPath_ = [](std::string_view typed) { return std::string(typed); };
    All all_;
    std::vector<std::pair<std::unique_ptr<IrcAccountFile>, All::value_type>> forgotten_;
    IrcNetwork* last_ = nullptr;
    int wasIn_ = Conversations::noNetwork; // the network of what was in front last
    TimerId following_ = TimerId::none;
};

} // namespace larkspin
