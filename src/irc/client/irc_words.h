// The words with a slash by which the owner gets to networks, to rooms and about in them.
#pragma once

#include "host/slash_words.h"
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

class IrcWords {
public:
    // All must live on. What the words have to say is told by `tell`, a line each.
    IrcWords(EventLoop& loop, Conversations& conversations, OwnRoom& own, IrcNetworks& networks,
             IrcAccounts& accounts, IrcIgnoreList& ignored, SlashWords::Tell tell)
        : loop_(loop), conversations_(conversations), own_(own), networks_(networks),
          accounts_(accounts), ignored_(ignored), tell_(std::move(tell)) {}

    // All of them, also those about the owner's own room.
    std::vector<SlashWord> words();

    // Those about what goes on on a network, which it gives when it is asked for.
    using Network = std::function<IrcClient&()>;
    std::vector<SlashWord> wordsOn(const Network& network);

    // That conversation comes in front, or is told of if it is there already.
    void goTo(Conversation& conversation);

    // To be called as he ends the program by a word that leaves a network elsewhere.
    void quits() const;

    // Whether what is typed after this line is a password.
    static bool asksPassword(std::string_view line) { return IrcAccess::asksPassword(line); }

private:
    std::vector<SlashWord> wordsOfOwnRoom();
    std::vector<SlashWord> wordsOfNetworks();
    bool connect(std::string_view rest);
    bool disconnect(std::string_view rest);
    bool tellNetworks(std::string_view rest);
    bool reconnect(std::string_view rest);
    bool room(std::string_view rest);
    bool lines(std::string_view rest);
    void goOn(int steps);
    bool limit(std::string_view rest);
    void enter(const std::string& wanted);
    bool enterChannel(const std::string& name);
    void tellConversations() const;
    bool isMoreThanHome() const;

    EventLoop& loop_;
    Conversations& conversations_;
    OwnRoom& own_;
    IrcNetworks& networks_;
    IrcAccounts& accounts_;
    IrcIgnoreList& ignored_;
    SlashWords::Tell tell_;
};

} // namespace larkspin
