// Connections over the network by GIO: sockets, names and TLS are the library's.
#pragma once

#include "platform/irc/irc_connection.h"

#include <memory>

namespace larkspin {

class WatchingLoop;

class IrcLink : public IrcConnection {
public:
    explicit IrcLink(WatchingLoop& loop);
    ~IrcLink() override;

    void open(const IrcServer& server, Events events) override;
    void send(std::string_view bytes) override;
    std::size_t unsent() const override;
    void close() override;
    void finish(Nanoseconds atMost) override;

private:
    class Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace larkspin
