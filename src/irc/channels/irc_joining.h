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
        std::function<void()> newRoom;                        // another one is in front, or none
        std::function<void(const std::string& channel)> left; // nothing can be said there any more
    };

    // All must live on.
    IrcJoining(IrcSession& session, IrcChannels& channels, Conversations& conversations,
               Events events)
        : session_(session), channels_(channels), conversations_(conversations),
          events_(std::move(events)) {}

    // Begins a new connection, with the room to go into, if any.
    void beginWith(const std::string& name);

    // The room comes in front only if the owner is at home by then.
    void comeBack() { isComingBack_ = true; }

    // To be called when the connection stands and what is to be done first is done, and when it is
    // lost. The rooms of a lost connection are those to be joined again.
    void welcomed();
    void lost();

    // A channel that is joined comes in front if the owner is at home. Others wait until they are
    // entered. A channel may have a key, without which nobody comes in; it is kept for as long as
    // this connection is made again.
    void join(const std::string& name, const std::string& key) { join(name, key, false); }
    void joinAndEnter(const std::string& name) { join(name, {}, true); }
    // A channel that he is in; false if he isn't in it.
    bool enter(std::string_view channel);
    void enter(const IrcChannels::Place& place);
    void leave(const std::string& farewell);
    void leave(IrcChannels::Place& place, const std::string& farewell);

    // The room in which the owner wants to be on this network, even if he was put out of it. Empty
    // for none.
    const std::string& wantedRoom() const { return wantedRoom_; }

    // To be called with what the server tells of the owner himself: `cameIn` before the channels
    // take a JOIN, `take` after they have taken anything else.
    void cameIn(const std::string& channel);
    void take(const IrcMessage& message);

private:
    void join(const std::string& name, const std::string& key, bool enters);
    void left(std::string_view channel);
    void refused(std::string_view channel);
    std::string roomAfterLeaving() const;
    std::string keyOf(std::string_view channel) const;
    std::optional<std::string> channelNamed(std::string_view given) const;
    bool want(const std::string& channel);
    bool wants(std::string_view channel) const;
    void wantNoMore(std::string_view channel) { takeOut(wanted_, channel); }
    bool takeOut(std::vector<std::string>& names, std::string_view channel) const;
    void request(const std::vector<std::string>& channels);

    IrcSession& session_;
    IrcChannels& channels_;
    Conversations& conversations_;
    Events events_;
    std::vector<std::string> wanted_;                       // asked for, or to be asked for
    std::vector<std::pair<std::string, std::string>> keys_; // of channels, by name
    std::string wantedRoom_;
    bool asksAtOnce_ = false;          // for what is wanted now: the others have been asked for
    std::string entering_;             // comes in front once it is joined
    bool isComingBack_ = false;        // to it, after a loss, unless he has gone elsewhere
    bool staysAway_ = false;           // he was elsewhere when the connection was lost
    std::vector<std::string> leaving_; // left again before the server had let him in
};

// Whether a name can't hold the byte: the server would read another name, or several.
bool endsIrcName(char byte);

// The names with commas between them, no more in each than a line holds.
std::vector<std::string> ircLists(const std::vector<std::string>& names);

} // namespace larkspin
