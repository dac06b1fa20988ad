#include "media_window/media_window.h"

#include "library/library.h"
#include "media_window/media_controls.h"
#include "playback/playback.h"
#include "shell/shell.h"

namespace larkspin {

MediaWindow::MediaWindow(const Core& core, const MediaWindowNeeds& needs)
    : frame(core, needs.player), list(core, needs.files, frame, needs.playback.transport),
      behindSplash(core, needs.shell.splash, frame),
      fileMenu(core, needs.desktop, behindSplash, needs.library.adding),
      editMenu(core, needs.desktop, behindSplash, needs.library.removing),
      opsMenu(core, needs.desktop, needs.shell.directory, behindSplash,
              needs.library.playlistCommands),
      refreshButton(core, behindSplash, needs.library.refresh, frame),
      rowMenu(core, needs.desktop,
              {.list = list,
               .removing = needs.library.removing,
               .songFiles = needs.playback.songFiles,
               .directories = needs.directories,
               .openFolder = needs.openFolder}),
      playback_(needs.playback) {
    frame.mp3s.controls = mediaControls(core, *this, playback_);
    // After a stop no tick brings the small clock up to date, so it is done here.
    playback_.transport.onHalt([this] {
        if (frame.isMini())
            frame.showLength();
    });
}

void MediaWindow::showPosition() {
    if (frame.isMini() && playback_.isPlaying())
        frame.showPosition();
}

} // namespace larkspin
