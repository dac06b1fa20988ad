// A message bus of a test's own, which knows nothing of the real ones, and services that pretend to
// be somebody on it.
#pragma once

#include "platform/dbus/bus.h"
#include "platform/posix/poll_loop.h"
#include "support/child.h"
#include "support/pipe.h"
#include "support/temp_directory.h"

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>

namespace larkspin {

class PrivateBus {
public:
    PrivateBus() {
        const std::string config = disk_.path() / "config", script = disk_.path() / "start";
        disk_.write("config",
                    "<busconfig><listen>" + address() +
                        "</listen><auth>EXTERNAL</auth><policy context='default'>"
                        "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/>"
                        "</policy></busconfig>");
        disk_.write("start", "#!/bin/sh\nexec dbus-daemon --nofork --nosyslog --print-address "
                             "--config-file=" +
                                 config + " 2>/dev/null\n");
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
        daemon_ = Child::start(script, {});
        EXPECT_TRUE(daemon_->says("unix:path=", patience));
    }
    ~PrivateBus() { signal(SIGKILL); }

    std::string address() const { return "unix:path=" + (disk_.path() / "bus").native(); }
    void signal(int number) const { ::kill(daemon_->id(), number); } // to stop it, say

private:
    TempDirectory disk_;
    std::unique_ptr<Child> daemon_;
};

// Whether it comes about, waiting for others no longer than the quarter of a second that they are
// given. A busy machine may hold up many tries; what waits longer is late in each.
inline bool comesQuickly(const std::function<bool()>& task) {
    using Clock = std::chrono::steady_clock;
    const auto until = Clock::now() + patience;
    for (auto begin = Clock::now(); begin < until; begin = Clock::now())
        if (task() && Clock::now() - begin < std::chrono::milliseconds(450))
            return true;
    return false;
}

// Has a name on the bus and gets all calls to an object, in a thread of its own.
class PretendService {
public:
    enum class Then { stays, leaves };
    using Called = std::function<Then(sd_bus_message* call)>;

    PretendService(const std::string& address, const std::string& name, const std::string& path,
                   Called called)
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
    ~PretendService() {
        end_.closeIn();
        thread_.join();
    }

private:
    static int take(sd_bus_message* call, void* service, sd_bus_error*) {
        auto& self = *static_cast<PretendService*>(service);
        if (self.called_(call) == Then::leaves)
            self.loop_.post([&self] { self.bus_.reset(); });
        return 1;
    }

    PollLoop loop_;
    std::unique_ptr<Bus> bus_;
    Called called_;
    Pipe end_;
    std::thread thread_;
};

} // namespace larkspin
