#include "platform/dbus/tray_host.h"

namespace larkspin {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* property = "IsStatusNotifierHostRegistered";

// The signals after which to look again: the watcher comes or goes, or a host registers with it.
constexpr const char* changes[] = {
    "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',"
    "arg0='org.kde.StatusNotifierWatcher'",
    "type='signal',interface='org.kde.StatusNotifierWatcher',"
    "member='StatusNotifierHostRegistered'"};

bool isTrue(sd_bus_message* answer) {
    int value = 0;
    return answer && sd_bus_message_enter_container(answer, 'v', "b") > 0 &&
           sd_bus_message_read_basic(answer, 'b', &value) > 0 && value != 0;
}

} // namespace

TrayHost::TrayHost(WatchingLoop& loop, const std::string& busAddress)
    : loop_(loop), bus_(busAddress) {
    bus_.attach(loop);
    const auto hear = [](sd_bus_message*, void* host, sd_bus_error*) {
        static_cast<TrayHost*>(host)->look();
        return 0;
    };
    for (const char* const change : changes)
        if (bus_.isOpen())
            sd_bus_add_match_async(bus_.raw(), nullptr, change, hear, nullptr, this);
    look();
}

void TrayHost::look() {
    const BusMessage call = bus_.methodCall(
        {watcher, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "Get"});
    if (call && sd_bus_message_set_auto_start(call.get(), 0) >= 0 &&
        sd_bus_message_append(call.get(), "ss", watcher, property) >= 0)
        bus_.ask(call, [this](sd_bus_message* answer) {
            // This runs inside the library, so the task is posted.
            const bool wasThere = std::exchange(isThere_, isTrue(answer));
            if (isThere_ && !wasThere)
                loop_.post([this] { arrived_(); });
        });
}

} // namespace larkspin
