// The refresh of the whole playlist as the media window does it: the button "ref", the command
// `ref`, and the refresh at start.
#pragma once

#include "chat/core.h"

#include <optional>

namespace larkspin {

class BehindSplash;
class MediaWindow;
class Refresh;

class RefreshButton {
public:
    RefreshButton(const Core& core, BehindSplash& behindSplash, Refresh& refresh,
                  MediaWindow& window)
        : state_(core.state), reply_(core.reply), behindSplash_(behindSplash), refresh_(refresh),
          window_(window) {}

    // Tells by how many rows the playlist has grown. The splash window shows it in place of the
    // media window, if that is there; its status line tells it in any case. Nothing when the run
    // of the program has ended meanwhile.
    std::optional<int> Command5_Click();

    // The command: the same with an answer.
    void ref();

private:
    int refreshWithStatus();

    AppState& state_;
    Reply& reply_;
    BehindSplash& behindSplash_;
    Refresh& refresh_;
    MediaWindow& window_;
};

} // namespace larkspin
