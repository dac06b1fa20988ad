// What the owner does about others: whom he ignores, in all rooms, whom he puts out of the room or
// lets back in, and which rooms are for those alone whom he invites. Only `eject` waits.
#pragma once

#include "host/host_client.h"
#include "irc/channels/irc_channels.h"
#include "shell/event_loop.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class IrcIgnoreList;
class IrcSession;
struct IrcMessage;
struct RoomDisplay;

class IrcModeration : public RoomPeople {
public:
    IrcModeration(EventLoop& loop, IrcSession& session, IrcChannels& channels,
                  const RoomDisplay& shown)
        : loop_(loop), session_(session), channels_(channels), shown_(shown) {}

    // How long the server may take to tell where somebody comes from who is to be put out, once it
    // has been asked, and how long that may take, too. Without an answer the ban is about what is
    // known.
    static constexpr std::chrono::seconds longestSearch{4}, longestWithItsTurn{20};

    People listPeople() override;
    bool ownerMayEject() override;
    Deed toggleIgnored(const Person& person) override;
    Deed eject(const Person& person) override;
    Deed allow(const Person& person) override;
    std::optional<People> beginAllowing() override;

    // Those in this list are ignored as well. It must live on.
    void ignoreAlso(IrcIgnoreList& list) { kept_ = &list; }

    // Somebody by his name, or a sender, "nick!user@host".
    bool ignores(std::string_view who) const;

    // Those who are ignored by name for this run, and what hears one of them again; false if he
    // isn't among them.
    std::vector<std::string> ignoredNames() const { return {ignored_.begin(), ignored_.end()}; }
    bool hear(std::string_view name);

    // On another network people of the same names are other people.
    void forgetPeople();

    // If the owner makes a room by coming into it, nobody finds it, and only those come in whom he
    // invites: now, and whenever he has to make it anew.
    void keepPrivate(const std::string& room);

    // What the server tells, after the channels have taken it.
    void take(const IrcMessage& message);

    // Asks for the list of the room's bans, once, and not before the owner could do something about
    // them.
    void askForBans();

private:
    // Somebody whom the server has been asked about, whatever he is called by now.
    struct Search {
        std::string nick, asked;
        Nanoseconds end;
        bool isOver = false;
    };

    IrcChannel* channelOf(const Person& person) const;
    std::string senderOf(std::string_view who) const;
    const std::string* maskFor(std::string_view who) const;
    bool isKnown(const IrcChannel& channel, std::string_view nick) const;
    bool ends(const Search& search, const IrcMessage& message) const;
    std::string find(const Person& person);
    void rename(std::string_view from, std::string_view to);
    void makePrivate(std::string_view name);
    Deed notDone(const Person& person) const {
        return person.list == channels_.visit() ? Deed::undone : Deed::over;
    }

    EventLoop& loop_;
    IrcSession& session_;
    IrcChannels& channels_;
    const RoomDisplay& shown_;
    std::set<std::string, std::less<>> ignored_; // folded names
    IrcIgnoreList* kept_ = nullptr;
    std::set<std::string, std::less<>> private_; // folded names of rooms
    std::vector<std::shared_ptr<Search>> searches_;
};

} // namespace larkspin
