// Notifications, by a bus of the test's own and a service that pretends to show them.
#include "platform/dbus/notifications.h"
#include "support/private_bus.h"

#include <mutex>

namespace larkspin {
namespace {

struct NotificationsTest : testing::Test {
    // What it was asked to do, a line each. Its notifications have the numbers 7, 8 and so on.
    std::string take() {
        const std::lock_guard lock(mutex);
        return std::exchange(asked, {});
    }
    PretendService::Then called(sd_bus_message* call) {
        const std::lock_guard lock(mutex);
        const char *name = "", *icon = "", *title = "", *body = "";
        std::uint32_t id = 0;
        if (sd_bus_message_is_method_call(call, nullptr, "Notify") > 0) {
            sd_bus_message_read(call, "susss", &name, &id, &icon, &title, &body);
            asked += std::to_string(id) + ' ' + title + ": " + body + '\n';
            id = id == 0 ? next++ : id;
            sd_bus_reply_method_return(call, "u", id);
            if (chooses)
                sd_bus_emit_signal(sd_bus_message_get_bus(call), "/org/freedesktop/Notifications",
                                   "org.freedesktop.Notifications", "ActionInvoked", "us",
                                   id + (choosesOther ? 1 : 0), "default");
        } else if (sd_bus_message_is_method_call(call, nullptr, "GetCapabilities") > 0) {
            asked += "asked\n";
            sd_bus_reply_method_return(call, "as", 2, "body", capability);
        } else {
            sd_bus_message_read(call, "u", &id);
            asked += "withdrawn " + std::to_string(id) + '\n';
            sd_bus_reply_method_return(call, "");
        }
        return PretendService::Then::stays;
    }
    // The service has a thread of its own, which doesn't wake this loop.
    std::string comesTo(const std::string& wanted) {
        std::string all = take();
        for (const auto end = loop.now() + patience; all != wanted && loop.now() < end;) {
            loop.waitUntil(loop.now() + std::chrono::milliseconds(2));
            all += take();
        }
        return all;
    }

    PrivateBus bus;
    std::mutex mutex;
    std::string asked;
    std::uint32_t next = 7;
    const char* capability = "body-markup";
    bool chooses = false, choosesOther = false;
    PollLoop loop;
};

TEST_F(NotificationsTest, AreTextAndOneAtATime) {
    const PretendService service(bus.address(), "org.freedesktop.Notifications",
                                 "/org/freedesktop/Notifications",
                                 [this](sd_bus_message* call) { return called(call); });
    Notifications notifications(loop, bus.address());
    int chosen = 0;
    const auto show = [&](const char* title, const char* text) {
        notifications.show(title, text, [&] { ++chosen; });
    };
    show("ann", "lost");
    show("#den", "one");
    EXPECT_EQ(comesTo("asked\n0 #den: one\n"), "asked\n0 #den: one\n");
    show("#den", "two");
    EXPECT_EQ(comesTo("7 #den: two\n"), "7 #den: two\n");
    notifications.withdraw();
    EXPECT_EQ(comesTo("withdrawn 7\n"), "withdrawn 7\n");
    {
        const std::lock_guard lock(mutex);
        chooses = choosesOther = true;
    }
    show("ann", "not this one");
    EXPECT_EQ(comesTo("0 ann: not this one\n"), "0 ann: not this one\n");
    {
        const std::lock_guard lock(mutex);
        choosesOther = false;
    }
    show("ann", "this one");
    loop.waitFor([&] { return chosen > 0; }, loop.now() + patience);
    EXPECT_EQ(chosen, 1);
}

TEST_F(NotificationsTest, ReadAsTheyAreAlsoWhereMarkupIsRead) {
    for (const auto& [can, shown] :
         {std::pair("body-markup", "&lt;b&gt;hi&lt;/b&gt; &amp; &lt;img src='x'&gt;"),
          {"actions", "<b>hi</b> & <img src='x'>"}}) {
        capability = can;
        const PretendService service(bus.address(), "org.freedesktop.Notifications",
                                     "/org/freedesktop/Notifications",
                                     [this](sd_bus_message* call) { return called(call); });
        Notifications notifications(loop, bus.address());
        notifications.show("ann", "<b>hi</b> & <img src='x'>", [] {});
        const std::string wanted = "asked\n0 ann: " + std::string(shown) + '\n';
        EXPECT_EQ(comesTo(wanted), wanted);
    }
}

TEST_F(NotificationsTest, AreNothingWithoutABusOrAService) {
    for (const std::string& address :
         {std::string(), std::string("unix:path=/nonexistent"), bus.address()}) {
        Notifications notifications(loop, address);
        for (int time = 0; time < 2; ++time)
            notifications.show("ann", "hi", [] {});
        notifications.withdraw();
        loop.serveTurn();
    }
    EXPECT_EQ(take(), "");
}

} // namespace
} // namespace larkspin
