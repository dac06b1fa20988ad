// Tells the owner, not the room, of a song that can't be played, once for each start. In silent
// mode that comes in a box, which nothing waits for.
#pragma once

#include "chat/core.h"

#include <string>
#include <vector>

namespace larkspin {

class MediaControl;
class ThisRun;
class Transport;

class SongFailures {
public:
    SongFailures(const Core& core, MediaControl& player, Transport& transport)
        : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
          player_(player), transport_(transport) {}

    // To be called while no song plays. Says so if the player has given up the song, which then
    // neither plays nor is paused.
    void tell();

    // The song that has been started just now has failed before, and that was told.
    void leaveOut();

private:
    void addToBox(std::string text);
    void showBoxes(const ThisRun& run);

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    MediaControl& player_;
    Transport& transport_;
    unsigned told_ = 0;               // the start whose failure was told last
    std::vector<std::string> toShow_; // the lines of the next box
    int more_ = 0;                    // that it has no room for
    bool isShowing_ = false;
};

} // namespace larkspin
