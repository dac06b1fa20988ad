// The commands that tell the play counters.
#pragma once

#include "chat/core.h"

namespace larkspin {

class PlayCounters;

class CounterCommands {
public:
    CounterCommands(const Core& core, PlayCounters& counters)
        : state_(core.state), settings_(core.settings), dialogs_(core.dialogs), reply_(core.reply),
          counters_(counters) {}

    // How often the song last started has been played to its end.
    void times();

private:
    AppState& state_;
    Settings& settings_;
    Dialogs& dialogs_;
    Reply& reply_;
    PlayCounters& counters_;
};

} // namespace larkspin
