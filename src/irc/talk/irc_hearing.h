// Who is heard. Others' lines in the room are shown and heard as theirs. The owner's are those that
// this connection has said; whatever else comes under his name is shown at most.
#pragma once

#include "chat/chat_lines.h"
#include "host/shown_room.h"
#include "irc/channels/irc_channels.h"
#include "irc/talk/irc_speech.h"

#include <string>
#include <string_view>

namespace larkspin {

class IrcModeration;
class IrcSession;
struct IrcMessage;

class IrcHearing {
public:
    // All must outlive it, and what is said by the owner.
    IrcHearing(EventLoop& loop, ChatLines& lines, const RoomDisplay& shown, IrcSession& session,
               IrcChannels& channels, const IrcModeration& moderation)
        : loop_(loop), lines_(lines), shown_(shown), session_(session), channels_(channels),
          moderation_(moderation) {}

    // A PRIVMSG or NOTICE.
    void take(const IrcMessage& message, IrcSpeech& speech);

    // A line that this connection has said. If it commands something, that runs within this call
    // when `atOnce` is true, and otherwise in an event of its own, since a command may wait.
    void reached(const IrcSaid& said, bool atOnce);

    // Whether private messages are shown, or refused.
    void takeMessages(bool takes) { takesMessages_ = takes; }

private:
    void hearOwner(const std::string& channel, const std::string& text);
    void hearInRoom(const IrcMessage& message, bool isSelf);
    void hearAmongRanks(const IrcMessage& message);
    void hearPrivately(const IrcMessage& message);
    bool isHere(std::string_view channel);

    EventLoop& loop_;
    ChatLines& lines_;
    const RoomDisplay& shown_;
    IrcSession& session_;
    IrcChannels& channels_;
    const IrcModeration& moderation_;
    bool takesMessages_ = true;
};

} // namespace larkspin
