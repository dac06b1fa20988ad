// The transport: starting, pausing and stopping songs.
//
// Every start of a song goes through one operation, which is told in what this start differs from
// the others. A start serves events while it says its message, and one that is picked at random
// also before its song is known. Another start, or a stop, that comes in there wins: what is left
// of the overtaken start is dropped.
#pragma once

#include "chat/core.h"
#include "library/playlist_row.h"
#include "playback/last_song.h"
#include "shell/event_loop.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class Choices;
class Files;
class MediaControl;
class PlayCounters;
class Row;
class Sliders;

// What a message shows after a song's name: " (<b>.wav</b>)", nothing for .mp3.
std::string extensionTag(std::string_view extension);

// One start. The defaults are those of a row that is started by hand.
struct SongStart {
    enum class Position {
        kept, // the row at masterIndex is the one last started
        leftAlone,
        goneBack, // masterIndex returns to the row last started
    };
    enum class Choices {
        offered, // the song becomes the only one, unless the owner has yet to choose
        replaced,
        ended, // an open selection stays, but an answer to it doesn't count any longer
        leftAlone,
    };
    enum class Count {
        coming, // the menu shows the count that the song will have at its end
        stored, // the count that it has
        leftAlone,
    };

    Song song;
    std::string message = {}; // what is said of it; empty for a silent start
    Position position = Position::kept;
    Choices choices = Choices::offered;
    Count count = Count::coming;
    bool isRemembered = true; // as the list song last started, in the settings
    bool endsPause = true;    // takes away the mark of a pause, without a call of the player
    bool sendsVolume = true;
    std::string tempTitle = {}; // of a file that is no list song; such a file isn't looked for
    std::string notFound = {};  // what is said when the file is gone; empty for the usual
    bool isMissingTold = false; // its directory has been named
    Task whenOpened = {};       // before the message
    Task afterMessage = {};
};

// "next:  <b>3</b>.  ride" with the song's tag: the number is shown as given.
std::string startMessage(std::string_view head, const std::string& number, const std::string& name,
                         const Song& song);

// A song's name with the words marked that it was searched by, as the owner typed them.
std::string markedName(const std::string& name, const std::string& words);

class Transport {
public:
    Transport(const Core& core, Files& files, MediaControl& player, Sliders& sliders,
              PlayCounters& counters, Choices& choices, LastSong& lastSong)
        : state_(core.state), loop_(core.loop), reply_(core.reply), files_(files), player_(player),
          sliders_(sliders), counters_(counters), choices_(choices), lastSong_(lastSong) {}

    // The commands.
    void stop(); // halts, and says so
    void pause();
    void resume();
    void nexp3();  // next
    void prep3();  // pre
    void tempp3(); // play: the song last started

    enum class Outcome {
        started,
        notFound,   // the file is gone
        unanswered, // nobody knows: the disk doesn't answer
        overtaken,
    };
    Outcome start(const SongStart& start) { return begin(start, turns_); }

    // A start whose song is picked first. The pick serves events, asks whether it is still wanted
    // after each time, and tells whether there is a song; the start is described only then.
    using StillWanted = std::function<bool()>;
    Outcome startPicked(const std::function<bool(const StillWanted&)>& pick,
                        const std::function<SongStart()>& describe);

    // A media file that is on no list, by its path.
    void openFromDisk(const std::string& path);

    // Makes the player let go of its song, at the end of a run.
    void close();

    // Stops the song in play by hand: its end isn't counted.
    void halt();
    void onHalt(Task shown) { onHalt_ = std::move(shown); } // the task shows it at once

    // The same as `close` for working on the song's file. Nothing plays then, and nothing has
    // ended, as after a stop. Events run until the player is off the file, for five seconds at
    // most, or until one of them has started a song.
    void releasesong();

    void moveToNextRow();     // after the last row the first one follows
    void moveToPreviousRow(); // and the other way round
    // The start by hand of the row at masterIndex, whose message begins with the head.
    SongStart currentRowStart(std::string_view head) const;

    bool nothingLoaded(); // stopped or closed
    // Another one from each start and each stop on.
    unsigned turn() const { return turns_; }
    int resumeRow() const; // of masterList: the one last started, -1 for none
    Song lastSong() const { return lastSong_.song(); }
    void endPauseMark(); // without a call of the player

    // While the owner has a choice to make shuffle starts no song: its pick would take the place of
    // the choices. It goes on after them if a song still plays.
    void holdShuffle();
    void resumeShuffle();

private:
    // `turn`: the one at which the start was wanted.
    Outcome begin(const SongStart& start, unsigned turn);
    Outcome lookFor(const SongStart& start, unsigned turn);
    void tellMissing(const SongStart& start);
    void tellUnstarted(const std::string& said, const std::string& boxed);
    void openFile(const SongStart& start);
    void noteOpened(const SongStart& start);
    void takeBackPick();
    void returnTo(const Row& row);
    void place(SongStart::Position position);
    void showCount(const SongStart& start);
    void settleChoices(SongStart::Choices choices, const std::string& title);
    void dressplayer();
    std::string currentName() const;

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Files& files_;
    MediaControl& player_;
    Sliders& sliders_;
    PlayCounters& counters_;
    Choices& choices_;
    LastSong& lastSong_;
    Task onHalt_ = [] {};
    unsigned turns_ = 0; // songs opened and stopped so far; wraps around
};

} // namespace larkspin
