// The commands that switch silent mode.
#pragma once

#include "chat/core.h"

namespace larkspin {

class SilentMode {
public:
    explicit SilentMode(const Core& core) : state_(core.state), reply_(core.reply) {}

    void silent();
    void silentoff();

private:
    AppState& state_;
    Reply& reply_;
};

} // namespace larkspin
