// The playlist as the media window shows it: bringing it up, and what the owner's clicks on its
// rows do.
#pragma once

#include "chat/core.h"

namespace larkspin {

class Files;
class MediaFrame;
class Row;
class Transport;

class MediaList {
public:
    MediaList(const Core& core, Files& files, MediaFrame& frame, Transport& transport)
        : state_(core.state), reply_(core.reply), files_(files), frame_(frame),
          transport_(transport) {}

    // Shows the window; masterIndex returns to the row last started.
    void show();
    void media(); // the command: the same with an answer

    // Tells where the row that the owner has clicked stands, and how big its file is.
    void tellSize();

    // Starts that row, which also becomes the current one.
    void startClicked();

private:
    void moveTo(const Row& row, int index);

    AppState& state_;
    Reply& reply_;
    Files& files_;
    MediaFrame& frame_;
    Transport& transport_;
};

} // namespace larkspin
