// The connection itself, to buses of the test's own.
#include "platform/qt/qt_loop.h"
#include "support/private_bus.h"
#include "support/qt_application.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(BusConnection, GoesOnToTheNextBusOfItsAddress) {
    startQt();
    QtLoop loop;
    const PrivateBus daemon;
    // Whoever connects to the first one has to wait until it closes.
    const int full = ::socket(AF_INET, SOCK_STREAM, 0), guest = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    auto* const address = reinterpret_cast<sockaddr*>(&place);
    socklen_t size = sizeof place;
    EXPECT_EQ(::bind(full, address, size), 0);
    EXPECT_EQ(::listen(full, 0), 0);
    EXPECT_EQ(::getsockname(full, address, &size), 0);
    EXPECT_EQ(::connect(guest, address, size), 0);
    Bus bus("tcp:host=127.0.0.1,port=" + std::to_string(ntohs(place.sin_port)) + ";" +
            daemon.address());
    bus.attach(loop);
    bool answered = false;
    bus.ask(bus.methodCall({"org.freedesktop.DBus", "/", "org.freedesktop.DBus.Peer", "Ping"}),
            [&](sd_bus_message* answer) { answered = answer != nullptr; });
    ::close(full);
    loop.waitFor([&] { return answered; }, loop.now() + patience);
    EXPECT_TRUE(answered);
    ::close(guest);
}

} // namespace
} // namespace larkspin
