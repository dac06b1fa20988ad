// The room that the program works in, and that windows show: one on a network from connect to
// disconnect, else the owner's own.
#pragma once

#include "host/own_room.h"
#include "irc/client/irc_client.h"

#include <string>
#include <string_view>

namespace larkspin {

class CurrentRoom : public HostClient, public ShownRoom {
public:
    CurrentRoom(OwnRoom& own, IrcClient& irc) : own_(own), irc_(irc) {}

    bool isOnNetwork() const { return irc_.isOn(); }

    // A line that the owner says himself, as for either room.
    void say(const std::string& line) { isOnNetwork() ? irc_.say(line) : own_.say(line); }
    void sayShown(const std::string& line) {
        isOnNetwork() ? irc_.sayShown(line) : own_.sayShown(line);
    }

    std::string name() const override { return shown().name(); }
    std::string ownName() const override { return shown().ownName(); }
    const RowList& people() const override { return shown().people(); }
    bool isIgnored(std::string_view name) const override { return shown().isIgnored(name); }

    std::string currentScreenName() override { return here().currentScreenName(); }
    void sendChatLine(const std::string& line) override { here().sendChatLine(line); }
    bool tellOwner(const std::string& text) override { return here().tellOwner(text); }
    void dropUnsaid() override { here().dropUnsaid(); }
    void clearChatInput() override { here().clearChatInput(); }
    void bringHostForward() override { here().bringHostForward(); }
    RoomPeople& roomPeople() override { return here().roomPeople(); }
    ClientErrands& errands() override { return here().errands(); }

private:
    HostClient& here() { return isOnNetwork() ? static_cast<HostClient&>(irc_) : own_; }
    const ShownRoom& shown() const {
        return isOnNetwork() ? static_cast<const ShownRoom&>(irc_) : own_;
    }

    OwnRoom& own_;
    IrcClient& irc_;
};

} // namespace larkspin
