// The words with a slash by which the owner gets to networks and to rooms there.
#pragma once

#include "host/slash_words.h"
#include "irc/client/conversation_words.h"
#include "irc/client/irc_networks.h"
#include "irc/client/irc_order_words.h"
#include "irc/client/irc_talk_words.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class IrcIgnoreList;
class OwnRoom;
class WindowRoom;

class IrcWords {
public:
    // All must live on. What the words have to say is told by `tell`, a line each.
    IrcWords(EventLoop& loop, Conversations& conversations, OwnRoom& own, IrcNetworks& networks,
             WindowRoom& windows, IrcAccounts& accounts, IrcIgnoreList& ignored,
             SlashWords::Tell tell)
        : loop_(loop), conversations_(conversations), own_(own), networks_(networks),
          windows_(windows), accounts_(accounts), ignored_(ignored), tell_(std::move(tell)) {}

    // All of them, also those about the owner's own room.
    std::vector<SlashWord> words();

    // Those about what goes on on a network, which it gives when it is asked for.
    using Network = std::function<IrcClient&()>;
    std::vector<SlashWord> wordsOn(const Network& network);

    ConversationWords& aboutConversations() { return aboutConversations_; }

    // To be called as he ends the program by a word that leaves a network elsewhere.
    void quits() const;

    // Whether what is typed after this line is a password.
    static bool asksPassword(std::string_view line) { return IrcAccess::asksPassword(line); }

private:
    std::vector<SlashWord> wordsOfNetworks();
    bool connect(std::string_view rest);
    bool disconnect(std::string_view rest);
    bool tellNetworks(std::string_view rest);
    bool reconnect(std::string_view rest);
    bool limit(std::string_view rest);

    EventLoop& loop_;
    Conversations& conversations_;
    OwnRoom& own_;
    IrcNetworks& networks_;
    WindowRoom& windows_;
    IrcAccounts& accounts_;
    IrcIgnoreList& ignored_;
    SlashWords::Tell tell_;
    ConversationWords aboutConversations_{loop_, conversations_, own_, networks_, windows_, tell_};
};

} // namespace larkspin
