#include "irc/client/current_room.h"

namespace larkspin {

HostClient& CurrentRoom::here() {
    const Conversation& conversation = conversations_.here();
    if (conversation.isAtHome())
        return own_;
    IrcNetwork* const network = networks_.of(conversation);
    return network ? static_cast<HostClient&>(network->client) : nowhere_;
}

ClientErrands& CurrentRoom::errands() {
    IrcNetwork* const here = networks_.of(conversations_.here());
    IrcNetwork& network = here ? *here : networks_.atHand();
    return network.client.isOn() ? static_cast<ClientErrands&>(network.client) : own_;
}

const ShownRoom& CurrentRoom::shown() const {
    const IrcNetwork* const network = networks_.of(conversations_.front());
    return network ? static_cast<const ShownRoom&>(network->client) : own_;
}

void CurrentRoom::say(const std::string& line, bool isOnScreen) {
    if (conversations_.isFrontClosed())
        conversations_.enter(conversations_.home());
    if (IrcNetwork* const network = networks_.of(conversations_.front()))
        return network->client.voice().say(line, isOnScreen);
    for (const auto& each : networks_.all())
        each->client.lineTypedAtHome();
    own_.say(line, isOnScreen);
}

} // namespace larkspin
