#include "support/private_bus.h"

#include "support/patience.h"

#include <gtest/gtest.h>

namespace larkspin {

PrivateBus::PrivateBus() {
    disk_.write("config",
                "<busconfig><listen>" + address() +
                    "</listen><auth>EXTERNAL</auth><policy context='default'>"
                    "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/>"
                    "</policy></busconfig>");
    disk_.write("start", "#!/bin/sh\nexec dbus-daemon --nofork --nosyslog --print-address "
                         "--config-file=" +
                             (disk_.path() / "config").native() + " 2>/dev/null\n");
    std::filesystem::permissions(disk_.path() / "start", std::filesystem::perms::owner_all);
    daemon_ = Child::start((disk_.path() / "start").native(), {});
    EXPECT_TRUE(daemon_->says("unix:path=", patience));
}

void PrivateBus::signal(int number) const {
    ::kill(daemon_->id(), number);
}

bool comesQuickly(const std::function<bool()>& task) {
    using Clock = std::chrono::steady_clock;
    const auto until = Clock::now() + patience;
    for (auto begin = Clock::now(); begin < until; begin = Clock::now())
        if (task() && Clock::now() - begin < std::chrono::milliseconds(450))
            return true;
    return false;
}

PretendService::PretendService(const std::string& address, const std::string& name,
                               const std::string& path, Called called)
    : bus_(std::make_unique<Bus>(address)), called_(std::move(called)) {
    EXPECT_GE(sd_bus_request_name(bus_->raw(), name.c_str(), 0), 0) << name;
    EXPECT_GE(sd_bus_add_object(bus_->raw(), nullptr, path.c_str(), take, this), 0);
    thread_ = std::thread([this] {
        bool ends = false;
        loop_.watch(end_.out(), [&] { ends = true; });
        bus_->attach(loop_);
        loop_.waitFor([&] { return ends; }, Nanoseconds::max());
        bus_.reset();
    });
}

PretendService::~PretendService() {
    end_.closeIn();
    thread_.join();
}

int PretendService::take(sd_bus_message* call, void* service, sd_bus_error*) {
    auto& self = *static_cast<PretendService*>(service);
    if (self.called_(call) == Then::leaves)
        self.loop_.post([&self] { self.bus_.reset(); });
    return 1;
}

} // namespace larkspin
