// The client's notices and the windows of its file transfers.
#pragma once

#include "host/host_client.h"
#include "shell/event_loop.h"

#include <utility>

namespace larkspin {

class WindowTreeHost;

class WindowNotices : public ClientNotices {
public:
    explicit WindowNotices(WindowTreeHost& host) : host_(host) {}

    // What is done each time before one is hidden.
    void beforeHiding(Task task) { beforeHiding_ = std::move(task); }

    std::optional<Notice> notice() override;
    void confirm() override;
    void hide() override;
    void bringBack() override;
    std::optional<Transfer> download() override;

private:
    WindowTreeHost& host_;
    Task beforeHiding_ = [] {};
};

} // namespace larkspin
