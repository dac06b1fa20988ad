// The words with a slash by which the owner gets about in the conversations, and those about his
// own room.
#pragma once

#include "host/slash_words.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversation;
class Conversations;
class EventLoop;
class IrcNetworks;
class OwnRoom;
class WindowRoom;

class ConversationWords {
public:
    // All must live on. What the words have to say is told by `tell`, a line each.
    ConversationWords(const EventLoop& loop, Conversations& conversations, OwnRoom& own,
                      IrcNetworks& networks, WindowRoom& windows, SlashWords::Tell tell)
        : loop_(loop), conversations_(conversations), own_(own), networks_(networks),
          windows_(windows), tell_(std::move(tell)) {}

    std::vector<SlashWord> words();

    // That conversation comes in front, or is told of if it is there already.
    void goTo(Conversation& conversation);

private:
    bool isMoreThanHome() const;
    bool lines(std::string_view rest);
    bool find(std::string_view text) const;
    bool room(std::string_view rest);
    void goOn(int steps);
    void enter(const std::string& wanted);
    bool enterChannel(const std::string& name);
    void tellConversations() const;

    const EventLoop& loop_;
    Conversations& conversations_;
    OwnRoom& own_;
    IrcNetworks& networks_;
    WindowRoom& windows_;
    SlashWords::Tell tell_;
};

} // namespace larkspin
