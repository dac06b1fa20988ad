#include "platform/dbus/logind_power.h"

namespace larkspin {

namespace {

constexpr auto sendBound = std::chrono::milliseconds(250); // for a bus that hangs
// logind isn't to ask the owner for a password.
constexpr int interactive = 0;

} // namespace

void LogindPower::order(const char* what) {
    bus_ = std::make_unique<Bus>(busAddress_);
    const BusMessage call = bus_->methodCall({"org.freedesktop.login1", "/org/freedesktop/login1",
                                              "org.freedesktop.login1.Manager", what});
    // The order is sent, and its answer isn't waited for.
    if (call && sd_bus_message_append(call.get(), "b", interactive) >= 0 && bus_->tell(call))
        bus_->flush(std::chrono::steady_clock::now() + sendBound);
}

} // namespace larkspin
