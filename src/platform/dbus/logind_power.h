// The machine's power by logind, which asks nobody for a password and refuses where the owner's
// session may not.
#pragma once

#include "outside/power.h"
#include "platform/dbus/bus.h"

#include <memory>
#include <string>

namespace larkspin {

class LogindPower : public Power {
public:
    explicit LogindPower(std::string busAddress) : busAddress_(std::move(busAddress)) {}

    void restart() override { order("Reboot"); }
    void shutDown() override { order("PowerOff"); }

private:
    void order(const char* what);

    std::string busAddress_;
    // The connection of the last order. It is kept open, because logind looks up its sender by it
    // before it obeys.
    std::unique_ptr<Bus> bus_;
};

} // namespace larkspin
