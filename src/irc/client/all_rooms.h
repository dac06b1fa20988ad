// All rooms that a front end offers, put together: the owner's own, those on a network and those of
// a chat client that is a tree of windows, the words by which he gets about, and what is kept of
// it.
#pragma once

#include "host/conversation_log.h"
#include "host/preferences.h"
#include "host/slash_words.h"
#include "host/window_room/window_room.h"
#include "irc/channels/irc_ignore_list.h"
#include "irc/client/current_room.h"
#include "irc/client/irc_networks.h"
#include "irc/client/irc_words.h"
#include "irc/client/window_words.h"
#include "shell/data_directory.h"
#include "shell/settings.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class AllRooms {
public:
    // All must live on. Lines said in the rooms come in through `lines`.
    // Of the display, what windows are told and do is the front end's.
    AllRooms(EventLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
             PasswordPrompt& prompt, KeptFiles& files, const DataDirectory& directory,
             const std::string& screenName, const RoomDisplay& shown);

    // What Tab makes of a line: of a word with a slash, of what a program completes, or of a name.
    using Complete = std::function<Completion(std::string_view typed)>;
    Completion completionOf(std::string_view typed, const SlashWords& words,
                            const Complete& others) const;

    // That one comes in front, as the owner wants. By the place of a conversation; one that has
    // gone is passed over.
    void goTo(const std::string& place);

    // A line that the owner has typed, and where he has begun it, as it may be shown again and
    // kept.
    std::string withoutSecrets(std::string_view typed, const Conversations::Begun& begun) const;

    // To be called before such a line is taken, to be where he has begun it. False if it mustn't be
    // taken: it tells a service a secret, which can't be told any more, and no other place may
    // hear.
    bool goBackFor(std::string_view typed, const Conversations::Begun& begun);

    // The words with a slash about all of it.
    std::vector<SlashWord> slashWords();

    // To be called as a run begins: where the owner was in the last one, he comes to again. Returns
    // at once.
    void takeUpAgain();

    // To be called as the process ends.
    void finish() {
        networks.finish();
        windows.finish();
        preferences.keep();
        log.write();
    }

private:
    RoomDisplay told(RoomDisplay shown);
    Settings settings_;
    IrcAccounts accounts_;
    IrcIgnoreList ignored_;

public:
    Conversations conversations;
    ConversationLog log;
    Preferences preferences;
    OwnRoom own;
    IrcNetworks networks;
    WindowRoom windows;
    CurrentRoom room{conversations, own, networks, windows}; // the one that the owner is in
    IrcWords words;

private:
    WindowWords wordsOnWindows_;
};

} // namespace larkspin
