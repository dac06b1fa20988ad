// The commands that work on the trigger itself.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class TriggerCommands {
public:
    explicit TriggerCommands(const Core& core) : state_(core.state), reply_(core.reply) {}

    void trig(const std::string& wanted);
    void tellTrigger();

private:
    AppState& state_;
    Reply& reply_;
};

} // namespace larkspin
