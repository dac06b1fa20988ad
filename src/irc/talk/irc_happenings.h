// What happens in channels, and to the owner: it is told where it belongs.
#pragma once

#include "irc/talk/irc_splits.h"

#include <string>
#include <string_view>

namespace larkspin {

class Conversations;
class EventLoop;
class IrcChannels;
class IrcSession;
struct IrcMessage;
struct RoomDisplay;

class IrcHappenings {
public:
    // All must live on.
    IrcHappenings(const EventLoop& loop, Conversations& conversations, const RoomDisplay& shown,
                  const IrcSession& session, IrcChannels& channels)
        : loop_(loop), conversations_(conversations), shown_(shown), session_(session),
          channels_(channels), splits_(conversations, session) {}

    // To be called while the channels still know who was where.
    void tell(const IrcMessage& message);

    // Whoever reads on in a room later sees there where something may be missing.
    void connectionLost();
    void cameIn(std::string_view channel);

private:
    bool tellTopic(const IrcMessage& message);

    const EventLoop& loop_;
    Conversations& conversations_;
    const RoomDisplay& shown_;
    const IrcSession& session_;
    IrcChannels& channels_;
    IrcSplits splits_;
    std::string newTopicAt_; // the place whose topic has just been told
};

} // namespace larkspin
