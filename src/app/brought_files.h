// Files and directories that come from outside: named as the program is started, opened by another
// program, or dropped on a window. They are added to the playlist, and the first song that was
// named by itself is played where that is wanted, as silently as the buttons do it. What has become
// of them is told to the owner alone.
#pragma once

#include "chat/core.h"
#include "library/brought_songs.h"

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class Transport;

class BroughtFiles {
public:
    enum class Then { playing, adding };

    BroughtFiles(const Core& core, BroughtSongs& songs, Transport& transport)
        : state_(core.state), loop_(core.loop), reply_(core.reply), songs_(songs),
          transport_(transport) {}

    // Drive paths. A text that is none is told as one that can't be opened. Events are served.
    void take(const std::vector<std::string>& paths, Then then);

private:
    std::optional<Brought> bring(const std::string& path);
    bool play(const Brought& file); // false when it can't be started
    std::vector<std::string> told(const std::vector<Brought>& all, const std::string& played);
    std::string toldFiltered(int count);

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    BroughtSongs& songs_;
    Transport& transport_;
    std::string toldFilter_; // of which the owner has been told
};

} // namespace larkspin
