#include "platform/dbus/bus.h"

#include "platform/posix/percent_escapes.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Microseconds = std::chrono::duration<std::uint64_t, std::micro>;

// The time that sd-bus itself waits by default.
constexpr Microseconds answerBound = 25s;
constexpr int messagesInATurn = 64; // before the loop gets to its other events

std::string variable(const char* name) {
    const char* const value = ::secure_getenv(name);
    return value ? value : "";
}

// The function that takes an answer belongs to the library, which has it dropped after the answer,
// or when the connection ends.
int takeAnswer(sd_bus_message* message, void* answered, sd_bus_error*) {
    const bool refused = sd_bus_message_is_method_error(message, nullptr) != 0;
    (*static_cast<Bus::Answered*>(answered))(refused ? nullptr : message);
    return 0;
}
void dropAnswered(void* answered) {
    delete static_cast<Bus::Answered*>(answered);
}

// How long until the library wants to be served, whatever comes in meanwhile.
Nanoseconds timeLeft(sd_bus* bus) {
    std::uint64_t moment = 0;
    if (sd_bus_get_timeout(bus, &moment) < 0 || moment == UINT64_MAX)
        return Nanoseconds::max();
    const auto now = std::chrono::duration_cast<Microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
    return Microseconds(moment - std::min(moment, now.count()));
}

} // namespace

std::string sessionBusAddress() {
    if (std::string address = variable("DBUS_SESSION_BUS_ADDRESS"); !address.empty())
        return address;
    const std::string directory = variable("XDG_RUNTIME_DIR"), socket = directory + "/bus";
    const bool isThere = !directory.empty() && ::access(socket.c_str(), W_OK) == 0;
    return isThere ? "unix:path=" + percentEscaped(socket, "/\\*") : "";
}

std::string systemBusAddress() {
    const std::string address = variable("DBUS_SYSTEM_BUS_ADDRESS");
    return address.empty() ? "unix:path=/run/dbus/system_bus_socket" : address;
}

Bus::Bus(const std::string& address) {
    if (address.empty() || sd_bus_new(&bus_) < 0)
        return;
    if (sd_bus_set_address(bus_, address.c_str()) < 0 || sd_bus_set_bus_client(bus_, 1) < 0 ||
        sd_bus_set_method_call_timeout(bus_, answerBound.count()) < 0 || sd_bus_start(bus_) < 0)
        close();
}

void Bus::close() {
    if (loop_) {
        unwatch();
        loop_->cancel(timer_);
    }
    bus_ = sd_bus_close_unref(bus_);
}

BusMessage Bus::methodCall(const BusMethod& method) const {
    sd_bus_message* message = nullptr;
    if (bus_)
        sd_bus_message_new_method_call(bus_, &message, method.destination, method.path,
                                       method.interface, method.member);
    return BusMessage(message);
}

bool Bus::tell(const BusMessage& call) {
    const bool sent = bus_ && call && sd_bus_message_set_expect_reply(call.get(), 0) >= 0 &&
                      sd_bus_send(bus_, call.get(), nullptr) >= 0;
    settle();
    return sent;
}

bool Bus::ask(const BusMessage& call, Answered answered) {
    if (!bus_ || !call)
        return false;
    auto kept = std::make_unique<Answered>(std::move(answered));
    sd_bus_slot* slot = nullptr;
    if (sd_bus_call_async(bus_, &slot, call.get(), takeAnswer, kept.get(), 0) < 0)
        return false;
    sd_bus_slot_set_destroy_callback(slot, dropAnswered);
    sd_bus_slot_set_floating(slot, 1); // it belongs to the connection
    sd_bus_slot_unref(slot);
    static_cast<void>(kept.release()); // `dropAnswered` has it now
    settle();
    return true;
}

bool Bus::process() {
    const int done = bus_ ? sd_bus_process(bus_, nullptr) : 0;
    // EBUSY: this was called from inside the library, and the connection is alive.
    if (done < 0 && done != -EBUSY)
        close();
    return done > 0;
}

bool Bus::serveUntil(const std::function<bool()>& condition, Moment latest) {
    while (bus_ && !condition()) {
        const auto left =
            std::chrono::ceil<std::chrono::microseconds>(latest - std::chrono::steady_clock::now());
        if (left <= 0us)
            break;
        if (!process() && bus_)
            sd_bus_wait(bus_, static_cast<std::uint64_t>(left.count()));
    }
    settle();
    return condition();
}

bool Bus::hasToWrite() const {
    return bus_ && (sd_bus_get_events(bus_) & POLLOUT) != 0;
}

bool Bus::flush(Moment latest) {
    // Until the connection has been accepted, everything that was sent is held back.
    return serveUntil([this] { return bus_ && sd_bus_is_ready(bus_) > 0 && !hasToWrite(); },
                      latest);
}

void Bus::attach(WatchingLoop& loop) {
    if (!bus_)
        return;
    loop_ = &loop;
    settle();
}

// An address may name several places. Each one that is tried has a descriptor of its own, until one
// answers.
void Bus::follow() {
    const int now = sd_bus_get_fd(bus_);
    if (now == descriptor_)
        return;
    unwatch();
    descriptor_ = now;
    if (descriptor_ >= 0)
        loop_->watch(descriptor_, [this] { serve(); });
}

void Bus::unwatch() {
    if (descriptor_ < 0)
        return;
    loop_->unwatch(descriptor_);
    loop_->unwatchWritable(descriptor_);
    descriptor_ = -1;
    isBlocked_ = false;
}

void Bus::serve() {
    for (int messages = 0; messages < messagesInATurn && process(); ++messages)
        continue;
    settle();
}

// Has the loop watch what the library waits for now: its descriptor, room for bytes that it
// couldn't write, and its next timeout. To be called after everything that may change one of these.
void Bus::settle() {
    if (!loop_ || !bus_)
        return;
    follow();
    if (descriptor_ < 0)
        return close();
    const bool wasBlocked = std::exchange(isBlocked_, hasToWrite());
    if (isBlocked_ && !wasBlocked)
        loop_->watchWritable(descriptor_, [this] { serve(); });
    else if (!isBlocked_ && wasBlocked)
        loop_->unwatchWritable(descriptor_);
    loop_->cancel(timer_);
    const Nanoseconds left = timeLeft(bus_);
    timer_ = left == Nanoseconds::max() ? TimerId::none : loop_->once(left, [this] { serve(); });
}

} // namespace larkspin
