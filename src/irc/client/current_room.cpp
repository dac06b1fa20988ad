#include "irc/client/current_room.h"

namespace larkspin {

HostClient& CurrentRoom::here() {
    const Conversation& conversation = conversations_.here();
    if (conversation.isAtHome())
        return own_;
    return irc_.owns(conversation) ? static_cast<HostClient&>(irc_) : nowhere_;
}

void CurrentRoom::say(const std::string& line, bool isOnScreen) {
    if (conversations_.isFrontClosed())
        conversations_.enter(conversations_.home());
    if (isOnNetwork())
        return irc_.say(line, isOnScreen);
    irc_.lineTypedAtHome();
    own_.say(line, isOnScreen);
}

} // namespace larkspin
