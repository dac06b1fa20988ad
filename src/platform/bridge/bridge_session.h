// The bridge among the client's windows: begun by Wine when the owner wants it, and gone when it
// ends.
#pragma once

#include "host/window_tree/window_session.h"
#include "platform/bridge/bridge_link.h"
#include "platform/bridge/bridge_process.h"
#include "platform/bridge/bridged_windows.h"

#include <cstdint>
#include <memory>
#include <string>

namespace larkspin {

class BridgeSession : public WindowSession {
public:
    // The bridge's program is a native path, empty where there is none. Wine is given time to make
    // its directory first.
    BridgeSession(WatchingLoop& loop, std::string bridge, BridgeLink::Patience patience = {});
    ~BridgeSession() override { BridgeSession::end(); }
    BridgeSession(const BridgeSession&) = delete;
    BridgeSession& operator=(const BridgeSession&) = delete;

    void begin() override;
    void end() override;
    State state() const override { return state_; }
    void onChange(Changed changed) override { changed_ = std::move(changed); }
    WindowCalls& calls() override { return windows_; }

    std::uint32_t questions() const { return link_.questions(); } // to bridges so far

private:
    std::string start(); // why it can't be; empty when it is
    void isUp();
    void hasEnded(const std::string& why);
    void tell(const std::string& why);

    WatchingLoop& loop_;
    std::string bridge_;
    BridgeLink::Patience patience_;
    Changed changed_;
    State state_ = State::off;
    TimerId failing_ = TimerId::none;
    std::unique_ptr<BridgeProcess> process_;
    EndingBridges ending_;
    BridgeLink link_;
    BridgedWindows windows_;
};

} // namespace larkspin
