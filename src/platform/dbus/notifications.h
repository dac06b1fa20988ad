// Notifications on the desktop (org.freedesktop.Notifications), by the session bus: text alone, and
// one at a time. Where there is no bus, or nobody who shows them, nothing happens.
#pragma once

#include "platform/dbus/bus.h"
#include "shell/event_loop.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace larkspin {

class Notifications {
public:
    // Connects when there is something to show. The loop must not run any more once this is gone.
    Notifications(WatchingLoop& loop, std::string busAddress)
        : loop_(loop), address_(std::move(busAddress)) {}

    // In place of the one before. The task is called, in an event of its own, when the owner
    // chooses it.
    void show(const std::string& title, const std::string& text, Task chosen);

    // It has become needless.
    void withdraw();

private:
    struct Text {
        std::string title, body;
    };

    bool connect();
    void sendNext();
    void askWhetherMarkupIsRead();
    void answered(std::uint32_t id);
    static int takeAction(sd_bus_message* signal, void* self, sd_bus_error* error);

    WatchingLoop& loop_;
    std::string address_;
    std::unique_ptr<Bus> bus_;
    Task chosen_ = [] {};
    std::uint32_t id_ = 0;     // of the one that was shown last; 0 for none
    bool isOnItsWay_ = false;  // its id isn't known yet, or whoever shows them is being asked
    bool isWithdrawn_ = false; // meanwhile
    std::optional<Text> next_; // which waits for that
    std::optional<bool> isMarkupRead_; // by whoever shows them; nothing until he was asked
};

} // namespace larkspin
