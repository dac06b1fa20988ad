// What happens in channels, and to the owner: it is told where it belongs.
#pragma once

#include "irc/talk/irc_splits.h"

namespace larkspin {

class Conversations;
class IrcChannels;
class IrcSession;
struct IrcMessage;
struct RoomDisplay;

class IrcHappenings {
public:
    // All must live on.
    IrcHappenings(Conversations& conversations, const RoomDisplay& shown, const IrcSession& session,
                  const IrcChannels& channels)
        : conversations_(conversations), shown_(shown), session_(session), channels_(channels),
          splits_(conversations, session) {}

    // To be called while the channels still know who was where.
    void tell(const IrcMessage& message);

    void clear() { splits_.clear(); } // as a connection is lost

private:
    Conversations& conversations_;
    const RoomDisplay& shown_;
    const IrcSession& session_;
    const IrcChannels& channels_;
    IrcSplits splits_;
};

} // namespace larkspin
