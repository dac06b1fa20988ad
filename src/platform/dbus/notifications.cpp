#include "platform/dbus/notifications.h"

#include <utility>

namespace larkspin {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* object = "/org/freedesktop/Notifications";

constexpr int asLongAsUsual = -1; // it stays

// Such as whoever reads markup shows as the text.
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

// Whether this is among what whoever shows them can do. What isn't told is taken for markup, which
// shows too much of a text, but nothing that isn't in it.
bool holdsMarkup(sd_bus_message* capabilities) {
    if (!capabilities || sd_bus_message_enter_container(capabilities, 'a', "s") < 0)
        return true;
    bool holds = false;
    for (const char* each = nullptr; sd_bus_message_read(capabilities, "s", &each) > 0;)
        holds |= std::string_view(each) == "body-markup";
    return holds;
}

} // namespace

bool Notifications::connect() {
    if (bus_ && bus_->isOpen())
        return true;
    bus_ = std::make_unique<Bus>(address_);
    id_ = 0;
    isOnItsWay_ = false;
    isMarkupRead_.reset();
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
    next_ = Text{title, text};
    if (!isOnItsWay_)
        sendNext();
}

void Notifications::askWhetherMarkupIsRead() {
    const BusMessage call = bus_->methodCall({service, object, service, "GetCapabilities"});
    isOnItsWay_ = call && bus_->ask(call, [this](sd_bus_message* answer) {
        loop_.post([this, holds = holdsMarkup(answer)] {
            isMarkupRead_ = holds;
            answered(id_);
        });
    });
}

void Notifications::sendNext() {
    if (!isMarkupRead_)
        return askWhetherMarkupIsRead();
    const Text text = *std::exchange(next_, std::nullopt);
    const std::string body = *isMarkupRead_ ? escaped(text.body) : text.body;
    const BusMessage call = bus_->methodCall({service, object, service, "Notify"});
    if (!call || sd_bus_message_append(call.get(), "susssasa{sv}i", "larkspin", id_, "larkspin",
                                       text.title.c_str(), body.c_str(), 2, "default", "show", 1,
                                       "desktop-entry", "s", "larkspin", asLongAsUsual) < 0)
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
    if (next_ && bus_ && bus_->isOpen())
        sendNext();
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
