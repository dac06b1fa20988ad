// The player on the session bus, for media keys and the player controls of a desktop: the two
// interfaces org.mpris.MediaPlayer2 and org.mpris.MediaPlayer2.Player, without lists of songs.
//
// A call is answered at once, and what it asks for is done in a later event. Changes are announced
// before the thread sleeps, all of them in one signal. Without a bus, or when it goes away, nothing
// happens.
#pragma once

#include "platform/dbus/bus.h"
#include "playback/remote_control.h"
#include "shell/event_loop.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace larkspin {

class MprisService {
public:
    // What else a desktop can ask for: the window in front, if there is one to bring there, the end
    // of the program, and a file of this machine, by its address.
    struct Wishes {
        Task raise, quit;
        std::function<void(const std::string& address)> open;
    };

    // Connects to the bus of that address. The loop must not run any more once this is gone.
    MprisService(WatchingLoop& loop, const std::string& busAddress, RemoteControl& remote,
                 Wishes wishes);

private:
    struct Table; // what the two interfaces hold

    // The song's position at one moment, by which a later look knows what to expect.
    struct Look {
        std::chrono::microseconds position{};
        Nanoseconds at{};
    };

    void take(const std::string& method, sd_bus_message* call);
    void takeSetPosition(sd_bus_message* call);
    bool takeAddress(sd_bus_message* call);
    void takeProperty(const std::string& property, sd_bus_message* value);
    int tell(const std::string& property, sd_bus_message* answer);
    void announce();
    void announceChanges(const RemoteView& now);
    void announceJump(const RemoteView& now);
    std::string song() const;
    void later(Task task);

    WatchingLoop& loop_;
    Bus bus_;
    RemoteControl& remote_;
    Wishes wishes_;
    RemoteView shown_;
    Look look_;
    unsigned songs_ = 0; // so far; each has a name of its own on the bus
};

} // namespace larkspin
