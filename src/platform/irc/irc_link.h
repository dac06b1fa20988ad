// Connections over the network by GIO: sockets, names and TLS are the library's. Certificates are
// checked: one must be vouched for, or be the one that is pinned. Of what comes in at most 64 kB
// are held, and the next isn't read before they are handled, so that a flood waits at the server.
//
// Whether a silent server is still there is for the protocol to find out.
#pragma once

#include "irc/connection/irc_connection.h"

#include <memory>

namespace larkspin {

class GlibGuest;
class WatchingLoop;

struct IrcLinkTerms {
    std::string trusted; // a file of certificates, in place of those that the system trusts
    Nanoseconds openWithin = std::chrono::seconds(30); // names, sockets and TLS together
};

class IrcLink : public IrcConnection {
public:
    explicit IrcLink(WatchingLoop& loop, IrcLinkTerms terms = {}); // the loop outlives it
    ~IrcLink() override;

    void open(const IrcServer& server, Events events) override;
    void send(std::string_view bytes) override;
    std::size_t unsent() const override;
    void close() override;
    void finish(Nanoseconds atMost) override;

private:
    class Session;

    WatchingLoop& loop_;
    IrcLinkTerms terms_;
    std::unique_ptr<GlibGuest> guest_; // made when it is wanted
    std::shared_ptr<Session> session_;
};

} // namespace larkspin
