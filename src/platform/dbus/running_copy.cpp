#include "platform/dbus/running_copy.h"

#include "platform/dbus/bus.h"

namespace larkspin {

namespace {

// This copy is about to end, so a bus that hangs must not hold it up for long.
constexpr std::chrono::milliseconds sendTime{250};

} // namespace

void raiseRunningCopy(const std::string& busAddress) {
    Bus bus(busAddress);
    if (const BusMessage call =
            bus.methodCall({"org.mpris.MediaPlayer2.larkspin", "/org/mpris/MediaPlayer2",
                            "org.mpris.MediaPlayer2", "Raise"});
        call && bus.tell(call))
        bus.flush(Bus::Moment::clock::now() + sendTime);
}

} // namespace larkspin
