// The program's side of a client, through the real bridge to real windows.
#include "platform/bridge/bridge_session.h"
#include "platform/posix/poll_loop.h"
#include "support/client_cases.h"
#include "support/windows_machine.h"

namespace larkspin {

namespace {

class RealClient : public CasedClient {
public:
    explicit RealClient(WindowTreeHost& host) : host_(host) {}
    void tell(const std::string& line) override { client_.tell(line); }
    std::vector<std::string> told(std::size_t least) override { return client_.told(least); }
    WindowTreeHost& host() override { return host_; }

private:
    WindowsClient client_;
    WindowTreeHost& host_;
};

struct WindowCases : testing::Test {
    WindowCases() {
        WindowsMachine::running();
        session.begin();
        const auto isUp = [this] { return session.state() == WindowSession::State::up; };
        loop.waitFor(isUp, loop.now() + patience);
        EXPECT_TRUE(isUp());
    }

    PollLoop loop;
    BridgeSession session{loop, LARKSPIN_BRIDGE};
    WindowTreeHost host{session.calls(), loop};
};

} // namespace

TEST_F(WindowCases, HoldForRealWindows) {
    for (const ClientCase& each : clientCases()) {
        RealClient client(host);
        expectCase(client, each);
    }
}

// Which window has the keyboard takes the display a while.
TEST_F(WindowCases, BringTheClientForwardAndStrikeKeysThere) {
    WindowsClient client;
    client.tell("player Night ride");
    using Told = std::vector<std::string>;
    EXPECT_TRUE(comes([&] {
        host.bringHostForward();
        client.tell("active");
        return client.told(1) == Told{"active America  Online"};
    }));
    host.sendHostKeys("^r%MRO");
    EXPECT_EQ(client.told(4), (Told{"key ^R", "key %M", "key R", "key O"}));
}

} // namespace larkspin
