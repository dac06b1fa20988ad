// Certificates of servers that the owner vouches for himself: he is shown one that isn't taken, and
// takes it by a word.
#pragma once

#include "host/slash_words.h"
#include "irc/client/irc_accounts.h"
#include "shell/event_loop.h"

#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class IrcTrust {
public:
    // The task is called after each change of what is trusted.
    IrcTrust(const EventLoop& loop, IrcAccountFile& file, SlashWords::Tell tell, Task changed)
        : loop_(loop), file_(file), tell_(std::move(tell)), changed_(std::move(changed)) {}

    // A server has shown that one. The owner is asked once for each, until `forget`.
    void distrusted(const IrcServer& server, const IrcCertificate& certificate);
    void forget() { asked_ = {}; }

    bool asks() const { return !asked_.place.empty(); }
    Nanoseconds askedAt() const { return asked_.at; }

    // "", a fingerprint, or "none", about the server that was asked for last. False for anything
    // else.
    bool trust(std::string_view rest);

private:
    void keep(const std::string& place, std::string_view fingerprint, const std::string& told);

    const EventLoop& loop_;
    IrcAccountFile& file_;
    SlashWords::Tell tell_;
    Task changed_;
    struct Asked {
        std::string place{};
        IrcCertificate certificate{};
        Nanoseconds at{};
    } asked_;
};

} // namespace larkspin
