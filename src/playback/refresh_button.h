// The refresh of the whole playlist as the media window does it: the button "ref", the command
// `ref`, and the refresh at start.
#pragma once

#include "chat/core.h"

namespace larkspin {

class MediaWindow;
class Refresh;
class Splash;

class RefreshButton {
public:
    RefreshButton(const Core& core, Splash& splash, Refresh& refresh, MediaWindow& window)
        : state_(core.state), loop_(core.loop), reply_(core.reply), splash_(splash),
          refresh_(refresh), window_(window) {}

    // Tells by how many rows the playlist has grown. The splash window shows it in place of the
    // media window, if that is there; its status line tells it in any case.
    int Command5_Click();

    // The command: the same with an answer.
    void ref();

private:
    int refreshWithStatus();

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Splash& splash_;
    Refresh& refresh_;
    MediaWindow& window_;
};

} // namespace larkspin
