#include "platform/dbus/notifications.h"

#include <utility>

namespace larkspin {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* object = "/org/freedesktop/Notifications";

constexpr int asLongAsUsual = -1; // it stays

// What shows them reads a text as markup.
std::string escaped(std::string_view text) {
    std::string plain;
    for (const char byte : text)
        if (byte == '&')
            plain += "&amp;";
        else if (byte == '<')
            plain += "&lt;";
        else if (byte == '>')
            plain += "&gt;";
        else
            plain += byte;
    return plain;
}

} // namespace

bool Notifications::connect() {
    if (bus_ && bus_->isOpen())
        return true;
    bus_ = std::make_unique<Bus>(address_);
    id_ = 0;
    isOnItsWay_ = false;
    if (!bus_->isOpen())
        return false;
    sd_bus_match_signal_async(bus_->raw(), nullptr, service, object, service, "ActionInvoked",
                              takeAction, nullptr, this);
    bus_->attach(loop_);
    return bus_->isOpen();
}

void Notifications::show(const std::string& title, const std::string& text, Task chosen) {
    if (!connect())
        return;
    chosen_ = std::move(chosen);
    isWithdrawn_ = false;
    if (isOnItsWay_)
        next_ = Text{title, escaped(text)};
    else
        send({title, escaped(text)});
}

void Notifications::send(const Text& text) {
    const BusMessage call = bus_->methodCall({service, object, service, "Notify"});
    if (!call || sd_bus_message_append(call.get(), "susssasa{sv}i", "larkspin", id_, "larkspin",
                                       text.title.c_str(), text.body.c_str(), 2, "default", "show",
                                       1, "desktop-entry", "s", "larkspin", asLongAsUsual) < 0)
        return;
    isOnItsWay_ = bus_->ask(call, [this](sd_bus_message* answer) {
        std::uint32_t id = 0;
        if (answer)
            sd_bus_message_read(answer, "u", &id);
        loop_.post([this, id] { answered(id); });
    });
}

void Notifications::answered(std::uint32_t id) {
    isOnItsWay_ = false;
    id_ = id;
    if (const auto next = std::exchange(next_, std::nullopt); next && bus_ && bus_->isOpen())
        send(*next);
    else if (std::exchange(isWithdrawn_, false))
        withdraw();
}

void Notifications::withdraw() {
    next_.reset();
    isWithdrawn_ = isOnItsWay_;
    if (id_ == 0 || isOnItsWay_ || !bus_ || !bus_->isOpen())
        return;
    const BusMessage call = bus_->methodCall({service, object, service, "CloseNotification"});
    if (call && sd_bus_message_append(call.get(), "u", std::exchange(id_, 0)) >= 0)
        bus_->tell(call);
}

int Notifications::takeAction(sd_bus_message* signal, void* self, sd_bus_error*) {
    auto& notifications = *static_cast<Notifications*>(self);
    std::uint32_t id = 0;
    if (sd_bus_message_read(signal, "u", &id) >= 0 && id != 0 && id == notifications.id_)
        notifications.loop_.post([chosen = notifications.chosen_] { chosen(); });
    return 0;
}

} // namespace larkspin
