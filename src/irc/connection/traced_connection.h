// A connection whose lines are noted, to diagnose it with.
//
// No secret is: not what passwords, keys and logins go with. Nor what people say to each other:
// that isn't the program's to keep.
#pragma once

#include "irc/connection/irc_connection.h"

#include <memory>
#include <string>
#include <utility>

namespace larkspin {

class Trace;

class TracedConnection : public IrcConnection {
public:
    TracedConnection(std::unique_ptr<IrcConnection> connection, Trace& trace)
        : connection_(std::move(connection)), trace_(trace) {}

    void open(const IrcServer& server, Events events) override;
    void send(std::string_view bytes) override;
    std::size_t unsent() const override { return connection_->unsent(); }
    void close() override;
    void finish(Nanoseconds atMost) override { connection_->finish(atMost); }

private:
    void hear(std::string_view bytes);
    void note(const char* direction, std::string_view line);

    std::unique_ptr<IrcConnection> connection_;
    Trace& trace_;
    Events events_;
    std::string begun_; // of a line that hasn't come whole, its beginning
};

} // namespace larkspin
