// The commands on playlists, and what the menus do with them.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class MediaFilter;
class PlaylistFiles;

class PlaylistCommands {
public:
    PlaylistCommands(const Core& core, PlaylistFiles& playlists, MediaFilter& filter)
        : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
          playlists_(playlists), filter_(filter) {}

    // The commands.
    void list(const std::string& text);
    void xlist(const std::string& text);
    void save(const std::string& name);
    void pl();
    void tellCount(); // pl?
    void scrpl();
    void newpl();
    void clearpl();

    // What the media window's menu does, with an answer in the room: a playlist from anywhere on
    // disk, and into a file of the data directory.
    void loadFile(const std::string& path);
    void saveAs(const std::string& fileName);
    // The same without one.
    void startAnew();

private:
    void loadnamed(const std::string& lowered);
    void deletenamed(const std::string& lowered);
    template <typename Action> void forEachNamed(const std::string& lowered, Action&& action);
    void sayLoaded(const std::string& name);
    bool clearIfWanted();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    PlaylistFiles& playlists_;
    MediaFilter& filter_;
};

} // namespace larkspin
