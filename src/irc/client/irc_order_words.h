// The words with a slash by which the owner asks a server for people and rooms, and orders about
// them; and whom he ignores.
#pragma once

#include "host/slash_words.h"
#include "shell/event_loop.h"

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class IrcClient;
class IrcIgnoreList;

class IrcOrderWords {
public:
    // The network that is meant; asked for at each use.
    using Network = std::function<IrcClient&()>;

    IrcOrderWords(EventLoop& loop, Conversations& conversations, IrcIgnoreList& ignored,
                  Network network, SlashWords::Tell tell)
        : loop_(loop), conversations_(conversations), ignored_(ignored),
          network_(std::move(network)), tell_(std::move(tell)) {}

    std::vector<SlashWord> words() const; // which need this no more

private:
    using Run = std::function<bool(std::string_view rest)>;

    std::vector<SlashWord> wordsAboutRooms() const;
    std::vector<SlashWord> wordsAboutPeople() const;
    std::vector<SlashWord> wordsAboutNetwork() const;
    Run by(bool (IrcOrderWords::*work)(std::string_view) const) const;
    Run ranks(char sign, char letter) const;

    bool whois(std::string_view rest) const;
    bool list(std::string_view rest) const;
    bool invite(std::string_view rest) const;
    bool kick(std::string_view rest) const;
    bool ban(std::string_view rest) const;
    bool unban(std::string_view rest) const;
    bool ignore(std::string_view rest) const;
    bool unignore(std::string_view rest) const;
    void tellIgnored() const;

    EventLoop& loop_;
    Conversations& conversations_;
    IrcIgnoreList& ignored_;
    Network network_;
    SlashWords::Tell tell_;
};

} // namespace larkspin
