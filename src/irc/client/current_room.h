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

    // What neither room has isn't here.
    std::string currentScreenName() override { return here().currentScreenName(); }
    void sendChatLine(const std::string& line) override { here().sendChatLine(line); }
    void dropUnsaid() override { here().dropUnsaid(); }
    void clearChatInput() override { here().clearChatInput(); }
    void bringHostForward() override { here().bringHostForward(); }
    HostHandle findChatRoom() override { return here().findChatRoom(); }
    HostHandle peopleList() override { return here().peopleList(); }
    HostHandle ejectedList() override { return here().ejectedList(); }
    void readHostList(HostHandle list, RowList& names, bool includeSelf) override {
        here().readHostList(list, names, includeSelf);
    }
    void selectHostRow(HostHandle list, int row) override { here().selectHostRow(list, row); }
    HostHandle findRoomIcon(const std::string& pattern) override {
        return here().findRoomIcon(pattern);
    }
    bool iconVisible(HostHandle icon) override { return here().iconVisible(icon); }
    void holdIcon(HostHandle icon) override { here().holdIcon(icon); }
    void releaseIcon(HostHandle icon) override { here().releaseIcon(icon); }
    std::string controlText(HostHandle control) override { return here().controlText(control); }
    void gotoKeyword(const std::string& keyword) override { here().gotoKeyword(keyword); }
    void sendInstantMessage(const std::string& addressee, const std::string& body) override {
        here().sendInstantMessage(addressee, body);
    }
    void closeHost() override { here().closeHost(); }
    void sendHostKeys(const std::string& keys) override { here().sendHostKeys(keys); }
    HostHandle waitForClockNotice() override { return here().waitForClockNotice(); }
    Statics statics(HostHandle window) override { return here().statics(window); }
    HostHandle firstIcon(HostHandle window) override { return here().firstIcon(window); }
    void pressByKey(HostHandle icon) override { here().pressByKey(icon); }
    std::string messengerAccount() override { return here().messengerAccount(); }

private:
    HostClient& here() { return isOnNetwork() ? static_cast<HostClient&>(irc_) : own_; }
    const ShownRoom& shown() const {
        return isOnNetwork() ? static_cast<const ShownRoom&>(irc_) : own_;
    }

    OwnRoom& own_;
    IrcClient& irc_;
};

} // namespace larkspin
