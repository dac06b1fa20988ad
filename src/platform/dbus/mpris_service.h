// The player on the session bus, for media keys and the player controls of a desktop: the two
// interfaces org.mpris.MediaPlayer2 and org.mpris.MediaPlayer2.Player, without lists of songs.
//
// What is asked for is answered at once and done in a later event. What has changed is announced
// before the thread sleeps, all of it in one signal. Without a bus, or when it goes away, nothing
// happens.
#pragma once

#include "platform/dbus/bus.h"
#include "playback/remote_control.h"
#include "shell/event_loop.h"

#include <chrono>
#include <optional>
#include <string>

namespace larkspin {

class MprisService {
public:
    // What else a desktop can ask for: the window in front, if there is one to bring there, and the
    // end of the program.
    struct Wishes {
        Task raise, quit;
    };

    // On the bus of that address. The loop must not run after the end of this.
    MprisService(WatchingLoop& loop, const std::string& busAddress, RemoteControl& remote,
                 Wishes wishes);

private:
    struct Table; // what the two interfaces hold

    // A look at the song's position, from which a later one can be told.
    struct Look {
        std::chrono::microseconds position{};
        Nanoseconds at{};
    };

    void take(const std::string& method, sd_bus_message* call);
    void takeSetPosition(sd_bus_message* call);
    void takeProperty(const std::string& property, sd_bus_message* value);
    int tell(const std::string& property, sd_bus_message* answer);
    int tellMetadata(sd_bus_message* answer) const;
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
    unsigned songs_ = 0; // in hand so far; each has a name of its own on the bus
};

} // namespace larkspin
