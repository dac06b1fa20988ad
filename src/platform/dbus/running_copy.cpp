#include "platform/dbus/running_copy.h"

#include "text/number.h"
#include "text/text_sum.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr const char *copyPath = "/org/larkspin/Copy", *copyInterface = "org.larkspin.Copy",
                     *openMethod = "Open", *pressMethod = "Press";

// This copy is about to end, so a bus that hangs must not hold it up for long.
constexpr std::chrono::milliseconds sendTime{250};
// A copy that has just been started takes a moment to appear on the bus.
constexpr std::chrono::milliseconds longestSearch = 5s, searchInterval = 20ms;

// The directory as a number, since a name on the bus holds only letters and digits.
std::string nameOn(std::string_view dataDirectory) {
    const std::uint64_t number = textSum(dataDirectory);
    std::string name = "org.larkspin.copy_";
    for (int shift = 56; shift >= 0; shift -= 8)
        name += hexPair(static_cast<std::uint8_t>(number >> shift));
    return name;
}

int ignoreAnswer(sd_bus_message*, void*, sd_bus_error*) {
    return 0; // another copy has the name, and is about to end
}

BusMessage callWith(const std::vector<std::string>& texts, const Bus& bus, const std::string& name,
                    const char* method) {
    BusMessage call = bus.methodCall({name.c_str(), copyPath, copyInterface, method});
    bool isWhole = call && sd_bus_message_set_auto_start(call.get(), 0) >= 0 &&
                   sd_bus_message_open_container(call.get(), 'a', "s") >= 0;
    for (const std::string& text : texts)
        isWhole = isWhole && sd_bus_message_append(call.get(), "s", text.c_str()) >= 0;
    isWhole = isWhole && sd_bus_message_close_container(call.get()) >= 0;
    return isWhole ? std::move(call) : BusMessage();
}

bool ask(const std::string& busAddress, const std::string& dataDirectory, const char* method,
         const std::vector<std::string>& texts) {
    bool isAnswered = false, isTaken = false;
    const std::string name = nameOn(dataDirectory);
    const auto latest = Bus::Moment::clock::now() + longestSearch;
    Bus bus(busAddress); // the last one to be made: its answers reach all that is above
    while (!isTaken && Bus::Moment::clock::now() < latest) {
        isAnswered = false;
        if (!bus.ask(callWith(texts, bus, name, method), [&](sd_bus_message* answer) {
                isAnswered = true;
                isTaken = answer != nullptr;
            }))
            break;
        bus.serveUntil([&] { return isAnswered; }, latest);
        if (isAnswered && !isTaken)
            bus.serveUntil([] { return false; }, Bus::Moment::clock::now() + searchInterval);
    }
    return isTaken;
}

} // namespace

struct RunningCopy::Table {
    template <Do Wishes::*wish> static int take(sd_bus_message* call, void* copy, sd_bus_error*) {
        RunningCopy& asked = *static_cast<RunningCopy*>(copy);
        return asked.take(call, asked.wishes_.*wish) ? sd_bus_reply_method_return(call, "")
                                                     : -EINVAL;
    }
    static const sd_bus_vtable methods[];
};

const sd_bus_vtable RunningCopy::Table::methods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD(openMethod, "as", "", take<&Wishes::open>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD(pressMethod, "as", "", take<&Wishes::press>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};

RunningCopy::RunningCopy(WatchingLoop& loop, const std::string& busAddress,
                         const std::string& dataDirectory, Wishes wishes)
    : loop_(loop), bus_(busAddress), wishes_(std::move(wishes)) {
    if (!bus_.isOpen())
        return;
    sd_bus_add_object_vtable(bus_.raw(), nullptr, copyPath, copyInterface, Table::methods, this);
    sd_bus_request_name_async(bus_.raw(), nullptr, nameOn(dataDirectory).c_str(), 0, ignoreAnswer,
                              nullptr);
    bus_.attach(loop);
}

// What the call asks for may wait, and the library can't be entered again.
bool RunningCopy::take(sd_bus_message* call, const Do& wish) {
    std::vector<std::string> texts;
    const char* text = nullptr;
    if (sd_bus_message_enter_container(call, 'a', "s") < 0)
        return false;
    while (sd_bus_message_read(call, "s", &text) > 0)
        texts.emplace_back(text);
    loop_.post([&wish, texts = std::move(texts)] { wish(texts); });
    return true;
}

bool openInRunningCopy(const std::string& busAddress, const std::string& dataDirectory,
                       const std::vector<std::string>& addresses) {
    return ask(busAddress, dataDirectory, openMethod, addresses);
}

bool pressInRunningCopy(const std::string& busAddress, const std::string& dataDirectory,
                        const std::vector<std::string>& buttons) {
    return ask(busAddress, dataDirectory, pressMethod, buttons);
}

void raiseRunningCopy(const std::string& busAddress) {
    Bus bus(busAddress);
    if (const BusMessage call =
            bus.methodCall({"org.mpris.MediaPlayer2.larkspin", "/org/mpris/MediaPlayer2",
                            "org.mpris.MediaPlayer2", "Raise"});
        call && bus.tell(call))
        bus.flush(Bus::Moment::clock::now() + sendTime);
}

} // namespace larkspin
