// The secrets that services were told lately. Some say them back ("the password has been changed to
// ..."), where they are no more to be read than as they were told.
#pragma once

#include "shell/event_loop.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace larkspin {

class IrcSession;

class IrcToldSecrets {
public:
    // Both must live on.
    IrcToldSecrets(const EventLoop& loop, const IrcSession& session)
        : loop_(loop), session_(session) {}

    // No more are remembered, and none for longer, since they stand in memory meanwhile.
    static constexpr std::size_t most = 10;
    static constexpr std::chrono::minutes span{1};

    // What somebody is told, and the same as it is shown.
    void add(std::string_view to, std::string_view text, std::string_view shown);

    // What somebody says, without what he was told in secret.
    std::string without(std::string_view nick, std::string_view text);

private:
    void forgetOld();

    struct Told {
        std::string to, secret;
        Nanoseconds until;
    };

    const EventLoop& loop_;
    const IrcSession& session_;
    std::deque<Told> told_;
};

} // namespace larkspin
