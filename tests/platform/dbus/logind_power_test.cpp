// Orders to a pretended logind on a bus of the test's own. The real one is never reached.
#include "platform/dbus/logind_power.h"

#include "support/private_bus.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(LogindPower, OrdersWithoutAskingForAPasswordAndStaysToBeLookedUp) {
    PrivateBus bus;
    LogindPower power(bus.address());
    power.restart(); // nobody there
    Pipe orders;
    PretendService logind(bus.address(), "org.freedesktop.login1", "/org/freedesktop/login1",
                          [&](sd_bus_message* call) {
                              int interactive = 1;
                              sd_bus_message_read(call, "b", &interactive);
                              sd_bus_creds* sender = nullptr;
                              const bool stays =
                                  sd_bus_query_sender_creds(call, SD_BUS_CREDS_PID, &sender) >= 0;
                              sd_bus_creds_unref(sender);
                              sd_bus_reply_method_errorf(call, SD_BUS_ERROR_ACCESS_DENIED, "no");
                              orders.write(std::string(sd_bus_message_get_interface(call)) + "." +
                                           sd_bus_message_get_member(call) +
                                           (interactive ? " asks" : "") + (stays ? "" : " goes"));
                              return PretendService::Then::stays;
                          });
    power.restart();
    EXPECT_EQ(orders.readSoon(), "org.freedesktop.login1.Manager.Reboot");
    power.shutDown();
    EXPECT_EQ(orders.readSoon(), "org.freedesktop.login1.Manager.PowerOff");
    bus.signal(SIGSTOP);
    EXPECT_TRUE(comesQuickly([&] {
        power.restart();
        return true;
    }));
    bus.signal(SIGKILL);
    power.shutDown(); // nothing happens
}

} // namespace
} // namespace larkspin
