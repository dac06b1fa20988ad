// The commands that tell the play counters.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class PlayCounters;
class TopList;

class CounterCommands {
public:
    CounterCommands(const Core& core, PlayCounters& counters, TopList& topList)
        : state_(core.state), reply_(core.reply), counters_(counters), topList_(topList) {}

    // How often the song last started has been played to its end.
    void times();

    // How many songs have been played in all.
    void total();

    // The five most played songs, or as many as wanted.
    void tops();
    void top(const std::string& wanted);

private:
    AppState& state_;
    Reply& reply_;
    PlayCounters& counters_;
    TopList& topList_;
};

} // namespace larkspin
