// The room in the chat client that is a tree of windows, as one of the owner's rooms: what is said
// in it is read out of its running text and kept in a conversation, and comes to the program as any
// room's lines do. One conversation belongs to each room of the client that is seen.
//
// The client may come, go, hang and come back; so may what reaches its windows.
#pragma once

#include "host/conversations.h"
#include "host/host_client.h"
#include "host/shown_room.h"
#include "host/window_room/room_speech.h"
#include "host/window_room/running_text.h"
#include "host/window_tree/window_session.h"
#include "host/window_tree/window_tree_host.h"
#include "text/row_list.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class ChatLines;

class WindowRoom : public HostClient, public ShownRoom {
public:
    // By which the owner asks for it.
    static constexpr const char* word = "windows";

    WindowRoom(EventLoop& loop, ChatLines& lines, Conversations& conversations, RoomDisplay shown);
    ~WindowRoom() override;
    WindowRoom(const WindowRoom&) = delete;
    WindowRoom& operator=(const WindowRoom&) = delete;

    // Without it no windows can be reached. It must live on.
    void reachBy(WindowSession& session);

    // The owner asks for the client, or has enough of it. They tell their outcome themselves.
    void connect();
    void disconnect();

    // Asks for it as a run begins: what the owner has gone to meanwhile stays in front. Who hears
    // whether he wants it, for that.
    void comeBack();
    void keepBy(std::function<void(bool isWanted)> keeper) { keeper_ = std::move(keeper); }
    bool isOn() const { return isWanted_; } // from connect to disconnect
    bool isUp() const;                      // the client's windows can be reached
    void finish();                          // as the process ends

    bool owns(const Conversation& conversation) const {
        return network_ != Conversations::noNetwork && conversation.network() == network_;
    }
    // One of its conversations comes in front, as the owner wants; or goes, once it is closed.
    void enter(Conversation& conversation);
    void leave();

    // A line that the owner has typed here, in the conversation in front.
    void say(const std::string& line, bool isOnScreen);

    std::string name() const override;
    std::string ownName() const override { return ownName_; } // as he was called last
    const RowList& people() const override { return people_; }
    bool isIgnored(std::string_view) const override { return false; } // only the client knows

    std::string currentScreenName() override;
    void sendChatLine(const std::string& line) override;
    bool tellOwner(const std::string& text) override;
    void clearChatInput() override;
    void bringHostForward() override;
    RoomPeople& roomPeople() override;
    ClientErrands& errands() override;
    ClientNotices& notices() override;

private:
    // How soon it is tried again when what reaches the windows has ended by itself, and how often
    // from then on.
    static constexpr std::chrono::seconds tryAgainAfter{5}, tryAgainEach{60};
    static constexpr std::size_t mostOld = 50;   // lines of before, which are shown
    static constexpr std::size_t mostRooms = 50; // of this client; the first closed one goes

    // How soon the people are read again when somebody speaks: one may have come for another.
    static constexpr std::chrono::seconds peopleLast{10};

    void begin();
    void sessionChanged(const std::string& why);
    void see(const WatchedText& now);
    void openRoom(const WatchedText& now);
    void closeRoom(const std::string& why);
    void takeText(const WatchedText& now);
    void hear(const RunningLine& line, const std::string& place);
    void keepOld(const RunningLine& line);
    void readPeople(HostHandle list);
    bool send(const std::string& line, const std::string& place);
    void reachedNoMore(const std::string& why);
    void tellNoRoom();
    void tell(const std::string& text) const; // what happens
    void answer(const std::string& text) const;
    Conversation* room() const;
    Conversation& roomCalled(const std::string& name);
    bool isHere() const; // the event at work is about the room that the client shows

    EventLoop& loop_;
    ChatLines& lines_;
    Conversations& conversations_;
    RoomDisplay shown_;
    WindowSession* session_ = nullptr;
    std::optional<WindowTreeHost> host_; // while there is a session

    bool isWanted_ = false, wasUp_ = false, isAsked_ = false; // to come in front
    bool hasTold_ = false;                                    // that it is reached no more
    int network_ = Conversations::noNetwork;
    std::string place_; // of the room that the client shows; blank for none
    WatchedText seen_;  // the last one, but for the text
    RunningText text_;
    RoomSpeech speech_{
        loop_, conversations_,
        [this](const std::string& line, const std::string& place) { return send(line, place); },
        [this](const std::string& text) { answer(text); }};
    std::string ownName_;
    std::optional<std::string> askedName_; // until events are served
    RowList people_;
    Nanoseconds peopleRead_{};
    std::function<void(bool isWanted)> keeper_ = [](bool) {};
    TimerId again_ = TimerId::none;
};

} // namespace larkspin
