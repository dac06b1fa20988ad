// Who is heard. Others' lines are kept in their conversations and heard as theirs. The owner's are
// those that this connection has said; whatever else comes under his name is shown at most.
#pragma once

#include "chat/chat_lines.h"
#include "host/shown_room.h"
#include "irc/channels/irc_channels.h"
#include "irc/channels/irc_talks.h"
#include "irc/talk/irc_speech.h"
#include "irc/talk/irc_told_secrets.h"

#include <ctime>
#include <string>
#include <string_view>

namespace larkspin {

class IrcModeration;
class IrcSession;
struct IrcMessage;

class IrcHearing {
public:
    // All must outlive it, and what is said by the owner.
    IrcHearing(EventLoop& loop, ChatLines& lines, Conversations& conversations,
               const RoomDisplay& shown, IrcSession& session, IrcChannels& channels,
               IrcTalks& talks, const IrcModeration& moderation)
        : loop_(loop), lines_(lines), conversations_(conversations), shown_(shown),
          session_(session), channels_(channels), talks_(talks), moderation_(moderation) {}

    // A PRIVMSG or NOTICE.
    void take(const IrcMessage& message, IrcSpeech& speech);

    // A line that this connection has said, and how it came back from the server, if it did. If it
    // commands something, that runs within this call when `atOnce` is true, and otherwise in an
    // event of its own, since a command may wait.
    void reached(const IrcSaid& said, bool atOnce, const IrcMessage* cameBack);

    // Whether private messages are shown, or refused.
    void takeMessages(bool takes) { takesMessages_ = takes; }

private:
    Conversation* conversationOf(const IrcSaid& said);
    void hearOwner(const std::string& place, const std::string& text);
    void hearIn(Conversation& conversation, const IrcMessage& message);
    void hearAmongRanks(const IrcMessage& message);
    IrcMessage withoutToldSecrets(IrcMessage message);
    void hearPrivately(const IrcMessage& message);
    void hearFromElsewhere(const IrcMessage& message);
    bool isOld(const IrcMessage& message) const;
    std::time_t timeOf(const IrcMessage& message) const;
    bool isAboutOwner(const Conversation& conversation, const std::string& markup) const;

    EventLoop& loop_;
    ChatLines& lines_;
    Conversations& conversations_;
    const RoomDisplay& shown_;
    IrcSession& session_;
    IrcChannels& channels_;
    IrcTalks& talks_;
    const IrcModeration& moderation_;
    IrcToldSecrets toldSecrets_{loop_, session_};
    bool takesMessages_ = true;
};

} // namespace larkspin
