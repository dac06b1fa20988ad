// An IRC network: its channels and private talks, each a conversation. The people who speak there
// are others. The owner is known by the name that the server gives this connection, and only what
// this connection has said is his.
//
// Nothing here waits but `sendChatLine` and what is done about people.
#pragma once

#include "chat/chat_lines.h"
#include "host/host_client.h"
#include "host/shown_room.h"
#include "irc/channels/irc_channels.h"
#include "irc/channels/irc_joining.h"
#include "irc/channels/irc_moderation.h"
#include "irc/channels/irc_talks.h"
#include "irc/client/irc_orders.h"
#include "irc/client/irc_voice.h"
#include "irc/connection/irc_session.h"
#include "irc/talk/irc_happenings.h"
#include "irc/talk/irc_hearing.h"
#include "irc/talk/irc_history.h"
#include "irc/talk/irc_pacing.h"
#include "irc/talk/irc_requests.h"
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
    IrcClient(EventLoop& loop, ChatLines& lines, Conversations& conversations,
              IrcConnection& connection, RoomDisplay shown);
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
    void connect(const std::string& network, const IrcServer& server, const IrcIdentity& identity,
                 const std::string& channel);
    void connect(const IrcServer& server, const IrcIdentity& identity, const std::string& channel) {
        connect(server.host, server, identity, channel);
    }
    // After a connect that a run begins with: what the owner has gone to meanwhile stays in front.
    void comeBack() { joining_.comeBack(); }
    void disconnect();
    void identify(const IrcIdentity& identity) { session_.identify(identity); }

    // To be called as the process ends: leaves with a farewell, within 300 milliseconds.
    void finish();

    void join(const std::string& channel, const std::string& key = {}) {
        joining_.join(channel, key);
    }
    // Of a channel that he is in; false if he isn't in it.
    bool enterRoom(const std::string& name) { return joining_.enter(name); }

    // A conversation of this network comes in front.
    void enter(Conversation& conversation);

    // Leaves the channel in which he is, or ends the talk that is in front. What is left of another
    // one, where nothing can be said any more, goes too. A reason is told the others there.
    void leave(const std::string& reason = {});
    void leaveRoom(const std::string& name, const std::string& reason = {});

    int network() const { return network_; } // the number of it, as conversations have it

    // Whether it is one of this network's.
    bool owns(const Conversation& conversation) const {
        return network_ != Conversations::noNetwork && conversation.network() == network_;
    }

    // These tell their outcome themselves. `topic` asks for the topic, or sets it.
    void changeNick(const std::string& nick);
    const std::string& wantedNick() const { return session_.identity().nick; } // at each connection
    const std::string& wantedRoom() const { return joining_.wantedRoom(); }    // at the next one
    void quote(std::string_view line);    // one of the protocol
    void talkTo(const std::string& name); // in a conversation of its own
    void topic(const std::optional<std::string>& text, const std::string& room = {});
    void names(const std::string& room = {});

    // What he says; and what else he asks a server for, and orders about people and rooms.
    IrcVoice& voice() { return voice_; }
    IrcOrders& orders() { return orders_; }

    // Those in this list are ignored. It must live on.
    void ignoreAlso(IrcIgnoreList& list) { moderation_.ignoreAlso(list); }
    IrcModeration& moderation() { return moderation_; }

    void peopleChanged() { shown_.changed(); }

    // Limits what the program says to so many lines a minute; 0 for no limit.
    void limitSaid(int linesPerMinute);

    // At home he is told once, with the first line that he types there, how to stop the tries to
    // get back to the network.
    void lineTypedAtHome();

    std::string name() const override;    // of what is in front; of the server else
    std::string ownName() const override; // also while not joined
    bool isIgnored(std::string_view name) const override;
    std::string roomTopic() const override;
    std::string rankSigns() const override { return session_.features().rankSigns; }
    std::string ranksOf(std::string_view name) const override;

    // Whether somebody in the room in front has a rank, by its mode letter.
    bool holdsRank(std::string_view name, char mode) const;

    const RowList& people() const override;
    const RowList& ejected() const;

    std::string currentScreenName() override; // blank where nothing can be said
    void sendChatLine(const std::string& line) override;
    bool tellOwner(const std::string& text) override;
    void dropUnsaid() override { speech_.dropAnswers(); }
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
    const IrcChannel* inFront() const;
    void tell(const std::string& text) const;
    // True when there is none.
    bool tellWithoutServer() const;

    void take(const IrcMessage& message);
    void lost();
    void endSession();
    void sendFarewell();
    void forgetRooms();
    void newRoom();
    void welcomed();
    void beginNetwork(const std::string& name);

    EventLoop& loop_;
    ChatLines& lines_;
    Conversations& conversations_;
    RoomDisplay shown_;
    IrcSession session_;
    IrcChannels channels_;
    IrcTalks talks_;
    IrcJoining joining_;
    IrcModeration moderation_{loop_, session_, channels_, shown_};
    IrcOrders orders_{loop_, session_, channels_, conversations_, moderation_, shown_};
    IrcHearing hearing_;
    IrcRequests requests_{loop_, session_, shown_};
    IrcSpeech speech_;
    IrcVoice voice_{conversations_,
                    session_,
                    channels_,
                    speech_,
                    [this](const Conversation& conversation) { return owns(conversation); },
                    [this](const std::string& text) { tell(text); }};
    IrcPacing pacing_;
    IrcHistory history_{session_, channels_};
    IrcHappenings happenings_{loop_, conversations_, shown_, session_, channels_};
    std::function<void(const Task& join)> welcomed_;
    bool isOn_ = false;
    bool hasToldHowToStop_ = false;
    int network_ = Conversations::noNetwork;
    std::string talkBefore_; // the place of the one that was in front as the connection was lost
    RowList nobody_;
};

} // namespace larkspin
