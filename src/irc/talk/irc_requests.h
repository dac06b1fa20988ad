// What other people's programs ask of this one beside what is said (CTCP): what it is, what time it
// is here, whether it is there. It answers few of them, and only while it has nothing else to say,
// so that strangers can neither keep it busy nor make it speak a lot.
#pragma once

#include "host/shown_room.h"
#include "shell/event_loop.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcSession;
struct IrcMessage;

class IrcRequests {
public:
    // All must live on.
    IrcRequests(EventLoop& loop, IrcSession& session, const RoomDisplay& shown)
        : loop_(loop), session_(session), shown_(shown) {}

    // So many requests of all people together are told and answered in such a span; all others are
    // passed over.
    static constexpr std::size_t most = 3;
    static constexpr std::chrono::seconds span{10};

    // Any message of somebody who isn't ignored. Those that ask nothing are passed over, and so are
    // answers of others, and what is told again of former times.
    void take(const IrcMessage& message);

private:
    bool isMeant(const IrcMessage& message) const;
    bool isTooMuch();
    std::optional<std::string> answerTo(const std::string& request, std::string_view text) const;

    EventLoop& loop_;
    IrcSession& session_;
    const RoomDisplay& shown_;
    std::deque<Nanoseconds> takenAt_;
};

} // namespace larkspin
