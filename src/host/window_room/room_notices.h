// The client's own notices, for as long as its windows are reached.
#pragma once

#include "host/host_client.h"
#include "shell/event_loop.h"

#include <functional>
#include <optional>
#include <utility>

namespace larkspin {

class RoomNotices : public ClientNotices {
public:
    // The client's, or null while none is reached; and what is done before one is hidden, since
    // that is told in the client's room.
    RoomNotices(std::function<ClientNotices*()> client, Task beforeHiding)
        : client_(std::move(client)), beforeHiding_(std::move(beforeHiding)) {}

    std::optional<Notice> notice() override;
    void confirm() override;
    void hide() override;
    void bringBack() override;
    std::optional<Transfer> download() override;

private:
    std::function<ClientNotices*()> client_;
    Task beforeHiding_;
};

} // namespace larkspin
