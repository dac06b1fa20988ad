// The commands that tell how the program stands, with the entries of the tray that answer the same
// in a box, and a few small chores in the room.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class PlayCounters;
class Room;
class Transport;

class StatusCommands {
public:
    StatusCommands(const Core& core, Room& room, Transport& transport, PlayCounters& counters)
        : state_(core.state), settings_(core.settings), loop_(core.loop), dialogs_(core.dialogs),
          reply_(core.reply), recitals_(core.recitals), room_(room), transport_(transport),
          counters_(counters) {}

    // The commands.
    void pt();
    void rt();
    void ver();
    void first();
    void time();
    void date();
    void clear();
    void sela();
    void stats();
    void pstat();
    void info();
    void adv();

    // The tray's entries.
    void boxSong();
    void boxRunTime();
    void boxPlayedTime();
    void boxFirstLoad();
    void boxVersion();

private:
    std::string songTitle();
    std::string firstLoad();

    AppState& state_;
    Settings& settings_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    Recitals& recitals_;
    Room& room_;
    Transport& transport_;
    PlayCounters& counters_;
};

} // namespace larkspin
