#include "chat/silent_mode.h"

#include "chat/reply.h"
#include "shell/app_state.h"

namespace larkspin {

void SilentMode::silent() {
    if (reply_.refusedInSilence("silent is already enabled"))
        return;
    reply_.saychat("silent mode - <b>on"); // while it can still be said
    state_.silnt = true;
}

void SilentMode::silentoff() {
    state_.silnt = false;
    reply_.saychat("silent mode - <b>off");
}

} // namespace larkspin
