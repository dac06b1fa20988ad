#include "playback/counter_commands.h"

#include "chat/reply.h"
#include "playback/play_counters.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/settings.h"
#include "text/number.h"

namespace larkspin {

void CounterCommands::times() {
    const double count = counters_.count(settings_.yochoose(Choice::play));
    counters_.show(count); // in place of the coming count, which a start shows
    if (state_.silnt)
        dialogs_.box("this song has been played " + numberText(count) + " times");
    else
        reply_.saychat("this song has been played <b>" + numberText(count) + "</b> times");
}

} // namespace larkspin
