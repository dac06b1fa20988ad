// The files of songs, deleted and renamed on disk with what hangs on them: the row in the playlist,
// the play count, and, for the song in play, its hold in the player and the settings. What is
// deleted goes to the desktop's wastebasket.
//
// When the disk refuses, the rest changes all the same, and the owner is told.
#pragma once

#include "chat/core.h"
#include "library/playlist_row.h"
#include "text/row.h"

#include <optional>
#include <string>

namespace larkspin {

class Choices;
class Files;
class PlayCounters;
class Transport;

class SongFiles {
public:
    SongFiles(const Core& core, Files& files, PlayCounters& counters, Choices& choices,
              Transport& transport)
        : state_(core.state), settings_(core.settings), dialogs_(core.dialogs), reply_(core.reply),
          files_(files), counters_(counters), choices_(choices), transport_(transport) {}

    // The commands `delete` and `rename *`, on the song in play.
    void deleteInPlay();
    void renameInPlay(const std::string& newName);

    // On the current row of the media window's list, in play or not. The owner is asked first, and
    // nothing is said in the room.
    void deleteShown();
    void renameShown();

private:
    // A row, for finding it again behind a wait.
    struct Listed {
        int index;
        Row row;
    };

    std::optional<Song> songInPlay();
    bool isInPlay(const Song& song);
    bool letGo();
    Listed rowInPlay();
    std::optional<Listed> rowShown();
    int find(const Listed& listed);
    bool takeOut(const Listed& listed);
    void takeOutInPlay(const Song& song, const Listed& listed, bool nothingFollows);
    void add(const Song& song);
    bool discard(const Song& song);
    bool giveName(const Song& song, const Song& renamed);
    void returnToResumeRow();
    void becomeInPlay(const Song& song);

    AppState& state_;
    Settings& settings_;
    Dialogs& dialogs_;
    Reply& reply_;
    Files& files_;
    PlayCounters& counters_;
    Choices& choices_;
    Transport& transport_;
};

} // namespace larkspin
