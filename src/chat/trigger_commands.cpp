#include "chat/trigger_commands.h"

#include "chat/catalogue.h"
#include "chat/reply.h"
#include "shell/app_state.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace larkspin {

void TriggerCommands::trig(const std::string& wanted) {
    if (reply_.silentguard())
        return;
    // These are safe as triggers: none is a wildcard, and none of the program's own lines begins
    // with one.
    constexpr std::array<std::string_view, 6> accepted = {"'", ".", "-", "`", ",", "none"};
    if (std::find(accepted.begin(), accepted.end(), wanted) == accepted.end()) {
        reply_.saychat("that trigger is retarded, choose another");
        return;
    }
    state_.trigger = wanted == "none" ? "" : wanted;
    // The catalogue shows the commands as they are typed, with the trigger.
    fillcatalogue(state_);
    reply_.saychat("new trigger:  " + wanted);
}

void TriggerCommands::tellTrigger() {
    const std::string& trigger = state_.trigger;
    reply_.sayOrBox("your trigger is " + (trigger.empty() ? "disabled" : trigger),
                    "your trigger is " + trigger);
}

} // namespace larkspin
