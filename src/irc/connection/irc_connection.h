// A connection to an IRC server as the protocol sees it: bytes there and back.
#pragma once

#include "shell/event_loop.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

struct IrcServer {
    std::string host;
    std::uint16_t port = 6697;
    bool encrypted = true; // by TLS, with the server's certificate checked

    // The SHA-256 fingerprint, in small hexadecimal digits, of the one certificate that is taken
    // from the server, whoever vouches for it. Blank for any that is vouched for.
    std::string pinned = {};

    // The owner's own certificate with its key (PEM), which is shown to the server. Blank for none.
    std::string ownCertificate = {};

    bool operator==(const IrcServer&) const = default;
};

// A server's certificate that wasn't taken.
struct IrcCertificate {
    std::string fingerprint;
    bool isVouchedFor = false; // and so it would be taken if no other one were pinned
};

class IrcConnection {
public:
    virtual ~IrcConnection() = default;

    // Each comes in an event of its own. `received` must not wait. After `ended`, which tells the
    // owner why, nothing comes any more; it also comes when a server can't be reached.
    struct Events {
        Task opened;
        std::function<void(std::string_view bytes)> received;
        std::function<void(const std::string& why)> ended;

        // The server's certificate isn't taken. `ended` follows in the same event.
        std::function<void(const IrcCertificate&)> distrusted = {};
    };

    // Closes the last one first. Returns at once, as everything here does but `finish`.
    virtual void open(const IrcServer& server, Events events) = 0;

    // Does nothing without a connection. Bytes that the server doesn't take yet are kept and sent
    // later, in order.
    virtual void send(std::string_view bytes) = 0;

    // The number of bytes that are kept.
    virtual std::size_t unsent() const = 0;

    // Ends without a word. No event comes after this.
    virtual void close() = 0;

    // To be called as the process ends: sends the kept bytes for at most this time, and closes. No
    // events run meanwhile.
    virtual void finish(Nanoseconds atMost) = 0;
};

} // namespace larkspin
