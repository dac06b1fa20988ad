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
#include <memory>
#include <string>
#include <thread>

namespace larkspin {

class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus() { signal(SIGKILL); }

    std::string address() const { return "unix:path=" + (disk_.path() / "bus").native(); }
    void signal(int number) const; // to stop it, say

private:
    TempDirectory disk_;
    std::unique_ptr<Child> daemon_;
};

// Whether it comes about, waiting for others no longer than the quarter of a second that they are
// given. A busy machine may hold up many tries; what waits longer is late in each.
bool comesQuickly(const std::function<bool()>& task);

// Has a name on the bus and gets all calls to an object, in a thread of its own.
class PretendService {
public:
    enum class Then { stays, leaves };
    using Called = std::function<Then(sd_bus_message* call)>;

    PretendService(const std::string& address, const std::string& name, const std::string& path,
                   Called called);
    ~PretendService();

private:
    static int take(sd_bus_message* call, void* service, sd_bus_error*);

    PollLoop loop_;
    std::unique_ptr<Bus> bus_;
    Called called_;
    Pipe end_;
    std::thread thread_;
};

} // namespace larkspin
