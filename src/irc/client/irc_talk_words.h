// The words with a slash by which the owner says something in another way than by typing it.
#pragma once

#include "host/slash_words.h"

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class IrcClient;
class OwnRoom;

class IrcTalkWords {
public:
    // The network that is meant; asked for at each use.
    using Network = std::function<IrcClient&()>;

    IrcTalkWords(Conversations& conversations, OwnRoom& own, Network network, SlashWords::Tell tell)
        : conversations_(conversations), own_(own), network_(std::move(network)),
          tell_(std::move(tell)) {}

    std::vector<SlashWord> words() const; // which need this no more

private:
    bool me(std::string_view rest) const;
    bool notice(std::string_view rest) const;
    bool again(std::string_view rest) const;

    Conversations& conversations_;
    OwnRoom& own_;
    Network network_;
    SlashWords::Tell tell_;
};

} // namespace larkspin
