// What an MPRIS player tells of itself, out of the message that it is told in. Whatever isn't of
// the type that it should be is missing.
#pragma once

#include <string>
#include <systemd/sd-bus.h>

namespace larkspin {

struct MprisAnswer {
    enum class Status { playing, paused, other };

    Status status = Status::other;
    std::string title; // one line of bounded length: "artists - title", or the title alone
};

MprisAnswer readMprisAnswer(sd_bus_message* properties);

} // namespace larkspin
