// The words with a slash by which the owner gets to rooms on a network and about in them, and what
// is kept of it for the next run.
#pragma once

#include "host/slash_words.h"
#include "irc/client/irc_access.h"
#include "irc/client/irc_account.h"
#include "irc/client/irc_talk_words.h"
#include "shell/event_loop.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class IrcClient;
class OwnRoom;
class PasswordPrompt;

class IrcWords {
public:
    // All must live on. What the words have to say is told by `tell`, a line each.
    IrcWords(EventLoop& loop, Conversations& conversations, OwnRoom& own, IrcClient& irc,
             PasswordPrompt& prompt, IrcAccountFile& file, Files& disk, SlashWords::Tell tell);
    ~IrcWords();
    IrcWords(const IrcWords&) = delete;
    IrcWords& operator=(const IrcWords&) = delete;

    // All of them, also those about the owner's own room.
    std::vector<SlashWord> words();

    // Whether what is typed after this line is a password.
    static bool asksPassword(std::string_view line) { return IrcAccess::asksPassword(line); }

    // What makes a drive path of what the owner types as one.
    void readPathsBy(IrcAccess::ReadPath readPath) { access_.readPathsBy(std::move(readPath)); }

    // To be called as a run begins. If the last run was on a network, connects to it again. Returns
    // at once.
    void takeUpAgain();

    // `roomChanged` is to be called after every change about rooms on a network: what the next run
    // takes up follows what the server has agreed to, within a moment. `follow` does so at once.
    void roomChanged();
    void follow();

private:
    bool message(std::string_view rest);
    bool changeNick(std::string_view rest);
    bool room(std::string_view rest);
    bool limit(std::string_view rest);
    bool query(std::string_view rest);
    void enter(const std::string& wanted);
    void tellConversations() const;
    bool isMoreThanHome() const;
    std::vector<SlashWord> wordsOfOwnRoom();
    std::vector<SlashWord> wordsInside(); // what can be done on a network

    EventLoop& loop_;
    Conversations& conversations_;
    OwnRoom& own_;
    IrcClient& irc_;
    IrcAccountFile& file_;
    SlashWords::Tell tell_;
    IrcAccess access_;
    IrcTalkWords talk_;
    TimerId following_ = TimerId::none;
    bool wasOn_ = false; // the network
};

} // namespace larkspin
