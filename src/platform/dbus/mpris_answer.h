// What an MPRIS player tells about itself, read from its message. A value that hasn't got the type
// that it should have counts as missing.
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
