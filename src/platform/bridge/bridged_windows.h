// The calls of a window manager, each a question to the bridge. What comes back is no more than was
// asked for, else it counts as nothing.
#pragma once

#include "host/window_tree/window_calls.h"
#include "platform/bridge/bridge_link.h"

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class BridgedWindows : public WindowCalls {
public:
    BridgedWindows(EventLoop& loop, BridgeLink& link) : loop_(loop), link_(link) {}
    ~BridgedWindows() override { loop_.cancel(vanishing_); }
    BridgedWindows(const BridgedWindows&) = delete;
    BridgedWindows& operator=(const BridgedWindows&) = delete;

    FoundWindows walk(const WindowWalk& walk) override;
    HostHandle findWindow(const std::string& className, const std::string& caption) override;
    std::string caption(HostHandle window) override;
    std::string text(HostHandle window) override;
    std::int64_t send(HostHandle window, unsigned message, std::uint64_t wParam,
                      std::int64_t lParam) override;
    void sendText(HostHandle window, unsigned message, const std::string& text) override;
    bool post(HostHandle window, unsigned message, std::uint64_t wParam,
              std::int64_t lParam) override;
    void show(HostHandle window, int command) override;
    int visible(HostHandle window) override;
    std::vector<std::string> rows(HostHandle list, const RowRecord& record,
                                  std::size_t most) override;
    // May be called while there is no bridge, and outlasts it: each one that comes is asked to
    // watch. When one goes, the watcher sees no window any more.
    void watch(const TextWatch& watch, Watching changed) override;
    std::optional<RegistryValue> registryValue(const std::string& key,
                                               const std::string& name) override;
    void activate(const std::string& caption) override;
    void sendKeys(const std::string& keys) override;

    // To be told by whoever has the link.
    void bridgeIsUp();
    void bridgeAnswersAgain();
    void bridgeHasSeen(const std::string& body);
    void bridgeIsGone();

private:
    template <typename Read>
    auto ask(bridge::Kind kind, bridge::Writer&& question, Read read)
        -> std::optional<decltype(read(std::declval<bridge::Reader&>()))>;
    void tell(bridge::Kind kind, bridge::Writer&& order);
    std::string askText(bridge::Kind kind, HostHandle window);
    std::uint32_t askNumber(bridge::Kind kind, bridge::Writer&& question);
    void askToWatch();
    void changed(const WatchedText& text);

    EventLoop& loop_;
    BridgeLink& link_;
    TextWatch watch_;
    Watching watching_;
    bool isWatched_ = true;   // the bridge watches what is to be watched, if anything
    bool seesWindow_ = false; // whoever watches, as far as he has been told
    TimerId vanishing_ = TimerId::none;
};

} // namespace larkspin
