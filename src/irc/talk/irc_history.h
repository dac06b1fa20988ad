// What was said in a room while the owner wasn't there: it is asked for as he comes in, where the
// server keeps it (CHATHISTORY). What comes is kept like all that is old.
#pragma once

#include <cstddef>
#include <string_view>

namespace larkspin {

class Conversation;
class IrcChannels;
class IrcSession;
struct IrcMessage;

class IrcHistory {
public:
    // Both must live on.
    IrcHistory(IrcSession& session, IrcChannels& channels)
        : session_(session), channels_(channels) {}

    // No more lines are asked for: in a room where he has been before, since the last one that is
    // kept of it, and in a new one.
    static constexpr std::size_t mostSince = 100, mostOfNew = 50;

    // To be called once the channel has been added.
    void cameIn(std::string_view channel);

    // Whether the message refuses what was asked for here, which isn't news for the owner.
    static bool isRefusal(const IrcMessage& message);

private:
    IrcSession& session_;
    IrcChannels& channels_;
};

} // namespace larkspin
