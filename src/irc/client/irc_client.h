// Rooms on an IRC network, one of which is the room that the program works in. The people who speak
// there are others. The owner is known by the name that the server gives this connection, and only
// what this connection has said is his.
//
// Everything that it has to tell goes to `RoomDisplay`. Nothing here waits but `sendChatLine`
// and what is done about people.
#pragma once

#include "chat/chat_lines.h"
#include "host/host_client.h"
#include "host/shown_room.h"
#include "irc/channels/irc_channels.h"
#include "irc/channels/irc_joining.h"
#include "irc/channels/irc_moderation.h"
#include "irc/connection/irc_session.h"
#include "irc/talk/irc_hearing.h"
#include "irc/talk/irc_pacing.h"
#include "irc/talk/irc_speech.h"
#include "text/row_list.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class IrcClient : public HostClient, public ClientErrands, public ShownRoom {
public:
    IrcClient(EventLoop& loop, ChatLines& lines, IrcConnection& connection, RoomDisplay shown);
    IrcClient(const IrcClient&) = delete;
    IrcClient& operator=(const IrcClient&) = delete;

    // `connecting` also holds while the client waits to try again; `connected` means that it is in
    // no room. After signing off there is no connection, and none is made until the owner asks for
    // one.
    enum class State { disconnected, connecting, connected, joined, signedOff };
    State state() const;
    bool isOn() const { return state() != State::disconnected; } // from connect to disconnect

    // Who keeps what is known of servers, and what he does after each welcome, before the rooms are
    // joined by the task that he gets.
    void keepBy(IrcKeeper keeper, std::function<void(const Task& join)> welcomed) {
        session_.keepBy(std::move(keeper));
        welcomed_ = std::move(welcomed);
    }

    // Connects, and stays so: a connection that is lost is made again, with the rooms. Without a
    // channel sign a room's name gets one; blank for no room.
    void connect(const IrcServer& server, const IrcIdentity& identity, const std::string& channel);
    void disconnect();
    void identify(const IrcIdentity& identity) { session_.identify(identity); }

    // To be called as the process ends: leaves with a farewell, within 300 milliseconds.
    void finish();

    static constexpr std::size_t mostRooms = IrcChannels::most;

    // Joined rooms have numbers, from 1. The first one is the room; others wait until they are
    // entered. Whoever leaves the room is in the last one of those that are left.
    struct Joined {
        std::string name;
        bool isHere;
        int unseen; // lines
    };
    void join(const std::string& channel, const std::string& key = {}) {
        joining_.join(channel, key);
    }
    void leave();
    std::vector<Joined> rooms() const;
    void enterRoom(int number) { joining_.enter(number); }
    void enterRoom(const std::string& name) { joining_.enter(name); }

    // These tell their outcome themselves. `topic` asks for the topic, or sets it.
    void changeNick(const std::string& nick);
    const std::string& wantedNick() const { return session_.identity().nick; } // at each connection
    const std::string& wantedRoom() const { return joining_.wantedRoom(); }    // at the next one
    void message(const std::string& name, const std::string& text);
    void quote(std::string_view line); // one of the protocol
    void topic(const std::optional<std::string>& text);
    void names();

    // Limits what the program says to so many lines a minute; 0 for no limit.
    void limitSaid(int linesPerMinute);

    // A line that the owner says himself. These are to be called from an event of its own each.
    void say(const std::string& line);
    void sayShown(const std::string& line); // one that he sees already

    std::string name() const override;    // of the room; of the server while in none
    std::string ownName() const override; // also while not joined
    bool isIgnored(std::string_view name) const override;

    const RowList& people() const override;
    const RowList& ejected() const;

    std::string currentScreenName() override; // blank while in no room
    void sendChatLine(const std::string& line) override;
    bool tellOwner(const std::string& text) override {
        shown_.message(text);
        return true;
    }
    void dropUnsaid() override { session_.outgoing().drop(IrcOutgoing::Kind::said); }
    void clearChatInput() override { shown_.clearInput(); }
    void bringHostForward() override { shown_.bringForward(); }

    RoomPeople& roomPeople() override { return moderation_; }

    ClientErrands& errands() override { return *this; }
    void gotoKeyword(const std::string& keyword) override; // the name of a channel
    void enterPrivateRoom(const std::string& name) override {
        moderation_.keepPrivate(name);
        joining_.joinAndEnter(name);
    }
    void signOff() override;
    void closeHost() override { disconnect(); }
    void takePrivateMessages(bool areTaken) override { hearing_.takeMessages(areTaken); }
    std::optional<std::string> timeOnline() override;
    std::string messengerAccount() override { return session_.identity().account; }

private:
    using Place = IrcChannels::Place;

    const IrcChannel* here() const;
    void tell(const std::string& text) const { shown_.tell(text); }
    // True when there is none.
    bool tellWithoutServer() const;
    bool tellWithoutRoom() const;

    void take(const IrcMessage& message);
    void lost();
    void endSession();
    void sendFarewell();
    void forgetRooms();
    void newRoom();
    void speak(std::string channel, const std::string& line, bool isShown);

    EventLoop& loop_;
    ChatLines& lines_;
    RoomDisplay shown_;
    IrcSession session_;
    IrcChannels channels_;
    IrcJoining joining_;
    IrcModeration moderation_{loop_, session_, channels_, shown_};
    IrcHearing hearing_;
    IrcSpeech speech_;
    IrcPacing pacing_;
    std::function<void(const Task& join)> welcomed_;
    bool isOn_ = false;
    RowList nobody_;
};

} // namespace larkspin
