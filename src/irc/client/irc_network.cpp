#include "irc/client/irc_network.h"

namespace larkspin {

RoomDisplay IrcNetwork::shown(const Shared& shared) {
    RoomDisplay display = shared.shown;
    display.changed = [this, changed = display.changed] {
        wasOn_ = wasOn_ || client.isOn();
        changed();
    };
    return display;
}

void IrcNetwork::follow() {
    const bool isOn = client.isOn();
    // If there was no network before and there is none now, there is nothing new to keep.
    if (!std::exchange(wasOn_, isOn) && !isOn)
        return;
    IrcAccount account = file.account();
    const std::string &room = client.wantedRoom(), &nick = client.wantedNick();
    if (room.empty() || canBeIrcWord(room))
        account.room = room;
    if (canBeIrcNick(nick))
        account.nick = nick;
    account.isWanted = isOn;
    if (account != file.account())
        file.keep(std::move(account));
}

} // namespace larkspin
