// A connection to a message bus, by sd-bus: for asking others within a bound, and for being asked
// while an event loop serves it. Where there is no bus, or when it goes away, nothing happens and
// everything answers at once. Nothing throws.
//
// Callbacks, of `ask` and of what is added to `raw`, run inside the library, which can't be entered
// again. So they must neither wait nor end the connection, but post what does such things.
#pragma once

#include "platform/posix/watching_loop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>

namespace larkspin {

// Where the buses of the session and the system are; empty for none.
std::string sessionBusAddress();
std::string systemBusAddress();

struct ReleaseMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using BusMessage = std::unique_ptr<sd_bus_message, ReleaseMessage>;

struct BusMethod {
    const char *destination, *path, *interface, *member;
};

class Bus {
public:
    using Moment = std::chrono::steady_clock::time_point;
    using Answered = std::function<void(sd_bus_message*)>;

    Bus() = default; // none
    // Doesn't wait for the connection: what is sent meanwhile goes out once it stands.
    explicit Bus(const std::string& address);
    ~Bus() { close(); }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    bool isOpen() const { return bus_ != nullptr; }
    sd_bus* raw() const { return bus_; } // null for none

    // A call to be filled in; nothing without a bus.
    BusMessage methodCall(const BusMethod& method) const;

    // Sends a call without wanting an answer.
    bool tell(const BusMessage& call);

    // Sends a call. The answer comes while the connection is served; it is null when it is an error
    // or takes longer than the bound of all calls (`answerBound` in bus.cpp).
    bool ask(const BusMessage& call, Answered answered);

    // Serves the connection here and now, until the condition holds, the moment has come, or the
    // bus is gone. Returns whether the condition holds.
    bool serveUntil(const std::function<bool()>& condition, Moment latest);

    // The same until all that was sent is on its way.
    bool flush(Moment latest);

    // From now on the loop serves the connection, until it ends. The loop must outlive it.
    void attach(WatchingLoop& loop);

    // Lets the loop know of what was sent through `raw`.
    void settle();

private:
    void close();
    bool process(); // false when there is nothing more to do now
    void serve();
    bool hasToWrite() const;
    void follow();
    void unwatch();

    sd_bus* bus_ = nullptr;
    WatchingLoop* loop_ = nullptr;
    int descriptor_ = -1;    // watched
    bool isBlocked_ = false; // watched for taking bytes again
    TimerId timer_ = TimerId::none;
};

} // namespace larkspin
