// The client's notices and the windows of its file transfers.
#pragma once

#include "host/host_client.h"

namespace larkspin {

class WindowTreeHost;

class WindowNotices : public ClientNotices {
public:
    explicit WindowNotices(WindowTreeHost& host) : host_(host) {}

    std::optional<Notice> notice() override;
    void confirm() override;
    void hide() override;
    void bringBack() override;
    std::optional<Transfer> download() override;

private:
    WindowTreeHost& host_;
};

} // namespace larkspin
