// Going from room to room: which ones are asked for, which one is to be the room, and what is to be
// joined again when a lost connection is back.
#pragma once

#include "irc/channels/irc_channels.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class IrcSession;

class IrcJoining {
public:
    struct Events {
        std::function<void(const std::string& text)> tell;
        std::function<void()> newRoom; // another one is the room, or none
    };

    IrcJoining(IrcSession& session, IrcChannels& channels, Events events)
        : session_(session), channels_(channels), events_(std::move(events)) {}

    // For a new connection: the room to begin with, if any.
    void beginWith(const std::string& name);

    // The connection is there, or lost: then the rooms are those that it is to be in again.
    void welcomed();
    void lost();

    // The first room that is joined is the room; another one waits to be entered. A room may have a
    // key, without which nobody comes in; it holds for as long as this connection is made again.
    void join(const std::string& name, const std::string& key) { join(name, key, false); }
    void joinAndEnter(const std::string& name) { join(name, {}, true); }
    void enter(int number);
    void leave(const std::string& farewell);

    // Where the owner would be on this network: a room that he was put out of he still wants. Blank
    // for nowhere.
    const std::string& wantedRoom() const { return wantedRoom_; }

    // To be told of what the owner does, by the server: before the channels are told of a JOIN, and
    // after that of all else.
    void cameIn(const std::string& channel);
    void take(const IrcMessage& message);

private:
    void join(const std::string& name, const std::string& key, bool enters);
    void enter(const IrcChannels::Place& place);
    void left(std::string_view channel);
    void refused(std::string_view channel);
    std::string keyOf(std::string_view channel) const;
    std::optional<std::string> channelNamed(std::string_view given) const;
    bool want(const std::string& channel);
    void wantNoMore(std::string_view channel);
    void request(const std::vector<std::string>& channels);

    IrcSession& session_;
    IrcChannels& channels_;
    Events events_;
    std::vector<std::string> wanted_;                       // asked for, or to be asked for
    std::vector<std::pair<std::string, std::string>> keys_; // of channels, by name
    std::string wantedRoom_;
    std::string entering_; // is the room once it is joined
};

// The server would take a name with such a byte in it for another, or for several.
bool endsIrcName(char byte);

// The names with commas between them, no more in each than a line holds.
std::vector<std::string> ircLists(const std::vector<std::string>& names);

} // namespace larkspin
