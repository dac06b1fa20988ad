// The commands on playlists, and what the menus do with them.
#pragma once

#include "chat/core.h"

#include <string>
#include <vector>

namespace larkspin {

class MediaFilter;
class PlaylistFiles;
struct Loaded;

class PlaylistCommands {
public:
    PlaylistCommands(const Core& core, PlaylistFiles& playlists, MediaFilter& filter)
        : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
          recitals_(core.recitals), playlists_(playlists), filter_(filter) {}

    // The commands.
    void list(const std::string& text);
    void xlist(const std::string& text);
    void save(const std::string& name);
    void pl();
    void tellCount(); // pl?
    void scrpl();
    void newpl();
    void clearpl();

    // What the media window's menu does, with an answer in the room: loading a playlist from
    // anywhere on the disk, and saving one into the data directory.
    void loadFile(const std::string& path);
    void saveAs(const std::string& fileName);
    // What the menu does without an answer, and what the tray's entries do.
    void startAnew();
    void loadSilently(const std::string& name);

private:
    void loadnamed(const std::string& lowered);
    void deletenamed(const std::string& lowered);
    bool mayDelete(const std::vector<std::string>& names);
    std::vector<std::string> namesWith(const std::string& lowered);
    template <typename Action> bool forEach(const std::vector<std::string>& names, Action&& action);
    void tellLoad(const std::string& name, const Loaded& loaded, bool says);
    void sayNotFound(const std::string& text);
    bool clearIfWanted();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    Recitals& recitals_;
    PlaylistFiles& playlists_;
    MediaFilter& filter_;
};

} // namespace larkspin
