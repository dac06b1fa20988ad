// What is known of the servers that the owner has asked for, from former connections and from him:
// whether one is reached by TLS alone, which certificate of its is trusted, which one it is shown.
#pragma once

#include "host/slash_words.h"
#include "irc/client/irc_accounts.h"
#include "shell/event_loop.h"
#include "shell/files.h"

#include <chrono>
#include <string>
#include <utility>

namespace larkspin {

class IrcKnownServers {
public:
    IrcKnownServers(EventLoop& loop, IrcAccountFile& file, Files& disk, SlashWords::Tell tell)
        : loop_(loop), file_(file), disk_(disk), tell_(std::move(tell)) {}

    // A server that has said that it is reached by TLS alone is never gone to without.
    IrcServer safe(const IrcServer& server) const;

    // That has been told, for so long from now on; 0 for no longer.
    void secured(const IrcServer& server, std::chrono::seconds span);

    // Reads the owner's certificate for that server, if it has one. The disk may take its time.
    void loadCertificate(const IrcServer& server);
    bool hasCertificate() const { return !certificate_.empty(); }

    // The text of a file with a certificate and its key; blank, and told why, if it is none.
    std::string readCertificate(const std::string& path) const;

    // With the certificate that was loaded last, and the one of the server's that is pinned.
    IrcServer completed(IrcServer server) const;

private:
    EventLoop& loop_;
    IrcAccountFile& file_;
    Files& disk_;
    SlashWords::Tell tell_;
    std::string certificate_;
};

} // namespace larkspin
