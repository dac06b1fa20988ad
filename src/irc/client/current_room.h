// The chat client that the program works in: whichever the conversation belongs to that the event
// at work is about, or else the one in front. And what windows show of the one in front.
#pragma once

#include "host/own_room.h"
#include "host/window_room/window_room.h"
#include "irc/client/irc_networks.h"

#include <string>
#include <string_view>

namespace larkspin {

class CurrentRoom : public HostClient, public ShownRoom {
public:
    CurrentRoom(Conversations& conversations, OwnRoom& own, IrcNetworks& networks,
                WindowRoom& windows)
        : conversations_(conversations), own_(own), networks_(networks), windows_(windows) {}

    // Whether what is in front is on a network.
    bool isOnNetwork() const { return !conversations_.front().isAtHome(); }

    // A line that the owner says himself in the conversation in front. Where nothing can be said
    // any more he is at home with it. To be called from an event of its own.
    void say(const std::string& line, bool isOnScreen = false); // where he has typed it

    std::string name() const override { return shown().name(); }
    std::string ownName() const override { return shown().ownName(); }
    const RowList& people() const override { return shown().people(); }
    bool isIgnored(std::string_view name) const override { return shown().isIgnored(name); }
    std::string roomTopic() const override { return shown().roomTopic(); }
    std::string rankSigns() const override { return shown().rankSigns(); }
    std::string ranksOf(std::string_view name) const override { return shown().ranksOf(name); }

    std::string currentScreenName() override { return here().currentScreenName(); }
    void sendChatLine(const std::string& line) override { here().sendChatLine(line); }
    bool tellOwner(const std::string& text) override { return here().tellOwner(text); }
    void dropUnsaid() override { here().dropUnsaid(); }
    void clearChatInput() override { here().clearChatInput(); }
    void bringHostForward() override { here().bringHostForward(); }
    RoomPeople& roomPeople() override { return here().roomPeople(); }
    // Those of a network also at home, while he is on one; else those of the client that is a tree
    // of windows, while its windows are reached.
    ClientErrands& errands() override;
    // Wherever he is: they stand in his way.
    ClientNotices& notices() override { return windows_.notices(); }

private:
    // What belongs to a conversation that has gone.
    class Nowhere : public HostClient {
        std::string currentScreenName() override { return {}; }
        void sendChatLine(const std::string&) override {}
        void clearChatInput() override {}
    };

    HostClient& here();
    const ShownRoom& shown() const;

    Conversations& conversations_;
    OwnRoom& own_;
    IrcNetworks& networks_;
    WindowRoom& windows_;
    Nowhere nowhere_;
};

} // namespace larkspin
