// The files of songs, deleted and renamed on disk with what hangs on them: the row in the playlist,
// the play count, and, for the song in play, its hold in the player and the settings. What is
// deleted goes to the desktop's wastebasket.
//
// When the disk refuses, the owner is told, and all stays as it was; so it does when the disk
// doesn't answer, but whether the file has been changed, or will be, isn't known then.
#pragma once

#include "chat/core.h"
#include "library/playlist_row.h"
#include "shell/files.h"
#include "shell/this_run.h"

#include <functional>
#include <optional>
#include <string>

namespace larkspin {

class Choices;
class LastSong;
class PlayCounters;
class Transport;

class SongFiles {
public:
    SongFiles(const Core& core, Files& files, PlayCounters& counters, Choices& choices,
              Transport& transport, LastSong& lastSong)
        : state_(core.state), dialogs_(core.dialogs), reply_(core.reply), files_(files),
          counters_(counters), choices_(choices), transport_(transport), lastSong_(lastSong) {}

    // The commands `delete` and `rename *`, on the song in play.
    void deleteInPlay();
    void renameInPlay(const std::string& newName);

    // Delete or rename the song of the current row in the media window's list, whether it is in
    // play or not. The owner is asked first, and nothing is said in the room.
    void deleteShown();
    void renameShown();

private:
    // What has become of a file once the player no longer holds it. There is no `Change` if the run
    // ended before that.
    struct Change {
        ThisRun run;
        FileChange file;
        bool wasInPlay;
        bool nothingFollows; // it was, and no other song has been started meanwhile
    };
    std::optional<Change> deleteFile(const Song& song);
    std::optional<Change> renameFile(const Song& song, const Song& renamed);
    std::optional<Change> changeFile(const Song& song, const std::function<FileChange()>& ask);
    std::optional<Song> songInPlay() const;
    std::optional<Song> songShown();
    bool isInPlay(const Song& song) const;
    void letGo();
    bool isNothingStarted() const;
    void catchUpWith(const Song& song);
    void takeOut(const Song& song);
    void giveName(const Song& song, const Song& renamed);
    void changeRows(const Song& song, const Song* renamed);
    void returnToResumeRow();
    void becomeInPlay(const Song& song);
    void tellUndone(const std::string& verb, const Song& song, const FileChange& change);

    AppState& state_;
    Dialogs& dialogs_;
    Reply& reply_;
    Files& files_;
    PlayCounters& counters_;
    Choices& choices_;
    Transport& transport_;
    LastSong& lastSong_;
};

} // namespace larkspin
