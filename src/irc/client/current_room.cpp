#include "irc/client/current_room.h"

namespace larkspin {

HostClient& CurrentRoom::here() {
    const Conversation& conversation = conversations_.here();
    if (conversation.isAtHome())
        return own_;
    if (windows_.owns(conversation))
        return windows_;
    IrcNetwork* const network = networks_.of(conversation);
    return network ? static_cast<HostClient&>(network->client) : nowhere_;
}

ClientErrands& CurrentRoom::errands() {
    const Conversation& conversation = conversations_.here();
    if (windows_.owns(conversation))
        return windows_.errands();
    IrcNetwork* const here = networks_.of(conversation);
    IrcNetwork& network = here ? *here : networks_.atHand();
    if (network.client.isOn())
        return network.client;
    return windows_.isUp() ? windows_.errands() : own_;
}

const ShownRoom& CurrentRoom::shown() const {
    if (windows_.owns(conversations_.front()))
        return windows_;
    const IrcNetwork* const network = networks_.of(conversations_.front());
    return network ? static_cast<const ShownRoom&>(network->client) : own_;
}

void CurrentRoom::say(const std::string& line, bool isOnScreen) {
    if (conversations_.isFrontClosed())
        conversations_.enter(conversations_.home());
    if (windows_.owns(conversations_.front()))
        return windows_.say(line, isOnScreen);
    if (IrcNetwork* const network = networks_.of(conversations_.front()))
        return network->client.voice().say(line, isOnScreen);
    for (const auto& each : networks_.all())
        each->client.lineTypedAtHome();
    own_.say(line, isOnScreen);
}

} // namespace larkspin
