#include "media_window/media_list.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "media_window/media_frame.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/files.h"
#include "text/number.h"

#include <string>

namespace larkspin {

namespace {

// The size in the largest unit that it reaches, with two decimals at most.
std::string sizeText(std::uintmax_t bytes) {
    const auto size = static_cast<double>(bytes);
    constexpr struct {
        double bytes;
        const char* name;
    } units[] = {{1024.0 * 1024 * 1024, "gb"}, {1024.0 * 1024, "mb"}, {1024, "kb"}};
    for (const auto& unit : units)
        if (size >= unit.bytes)
            return numberText(static_cast<double>(rounded(size / unit.bytes * 100)) / 100) +
                   unit.name;
    return numberText(size) + "bytes";
}

} // namespace

void MediaList::show() {
    state_.setMasterIndex(transport_.resumeRow());
    bringUp(frame_.mp3s);
}

void MediaList::media() {
    show();
    reply_.saychat("viewing media list");
}

// The owner may have clicked on another row while the disk was asked.
void MediaList::tellSize() {
    const Row row = state_.playlistView.share(state_.playlistView.currentIndex());
    if (state_.playlistView.currentIndex() < 0)
        return;
    const auto size = files_.size(rowpath(row.text()));
    const int index = state_.playlistView.find(row);
    if (index < 0 || index != state_.playlistView.currentIndex())
        return;
    state_.fileCountLabel = std::to_string(index + 1) + "/" +
                            std::to_string(state_.playlistView.count()) + " files - " +
                            (size ? sizeText(*size) : noAnswer);
}

void MediaList::startClicked() {
    const int index = state_.playlistView.currentIndex();
    const Row row = state_.playlistView.share(index);
    if (row.text().empty())
        return;
    const Song song = songOfRow(row.text());
    transport_.start(
        {.song = song,
         .message = startMessage("playing:  <b>", std::to_string(index + 1), song.name, song),
         .position = SongStart::Position::leftAlone,
         .count = SongStart::Count::stored,
         .afterMessage = [&] { moveTo(row, index); }});
}

// During the message the row may have moved, and the owner may have clicked on another one.
void MediaList::moveTo(const Row& row, int index) {
    const int found = findRow(state_.masterList, row, index);
    if (found < 0)
        return;
    state_.resumeIndex = std::to_string(found);
    state_.setMasterIndex(found);
}

} // namespace larkspin
