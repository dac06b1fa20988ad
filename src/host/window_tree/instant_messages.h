// The way a private message takes through the client's windows: an address opens a message window,
// which is filled in and sent, and what the client has to say about it is answered.
//
// One message goes out at a time. While it waits for its windows another one may be asked for: that
// one goes out after it, so that neither writes into the other's window. Nor is a message window
// touched that was open before.
#pragma once

#include "host/window_tree/window_calls.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace larkspin {

class EventLoop;
class HostWindows;

class InstantMessages {
public:
    // Opens an address of the client's. False when it has nowhere to enter one.
    using Open = std::function<bool(const std::string& address)>;

    InstantMessages(WindowCalls& calls, const HostWindows& windows, EventLoop& loop, Open open)
        : calls_(calls), windows_(windows), loop_(loop), open_(std::move(open)) {}

    // Returns when the message is out or given up; at once when another one is on its way.
    void send(const std::string& addressee, const std::string& body);

private:
    struct Message {
        std::string addressee, body;
    };
    using Handles = std::vector<HostHandle>;
    static constexpr std::size_t mostWaiting = 16; // what is asked for beyond isn't sent

    void sendFirst();
    Handles openWindows() const;
    HostHandle waitForWindow(const Handles& others) const;
    void fillIn(HostHandle window, const std::string& body) const;
    void answerClient(HostHandle window) const;
    HostHandle sendButton(HostHandle window) const;

    WindowCalls& calls_;
    const HostWindows& windows_;
    EventLoop& loop_;
    Open open_;
    std::deque<Message> messages_; // the first of them is on its way
};

} // namespace larkspin
