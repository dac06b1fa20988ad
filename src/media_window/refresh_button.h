// The refresh of the whole playlist as the media window does it: the button "ref", the command
// `ref`, and the refresh at start.
#pragma once

#include "chat/core.h"
#include "library/refresh.h"

#include <optional>

namespace larkspin {

class BehindSplash;
class MediaFrame;

class RefreshButton {
public:
    RefreshButton(const Core& core, BehindSplash& behindSplash, Refresh& refresh, MediaFrame& frame)
        : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
          behindSplash_(behindSplash), refresh_(refresh), frame_(frame) {}

    // The button. Boxes tell what couldn't be refreshed.
    void press();

    // The command: the same with an answer.
    void ref();

    // The refresh at start, and what it has to tell once the start is over.
    void refreshAtStart();
    void tellOfStart();

private:
    // If the media window is shown, the splash window takes its place and shows by how many rows
    // the playlist has grown; the status line has the number in any case. Nothing when the run of
    // the program has ended meanwhile.
    std::optional<Refreshed> Command5_Click();
    std::optional<Refreshed> refreshWithStatus();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    BehindSplash& behindSplash_;
    Refresh& refresh_;
    MediaFrame& frame_;
    std::optional<Refreshed> ofStart_;
};

} // namespace larkspin
