// The transport: starting, pausing and stopping songs.
//
// Every start of a song is made of the same pieces in the same order, which the ways to choose
// a song put together as they need them:
//
//     open, [a message], showStarted, [the position], remember, [the choice], resumeModeTick
//
// Messages serve events, so a start can be overtaken by another one, or by a stop, in the middle.
// What is left of it would then spoil what the later one has done, and is dropped.
#pragma once

#include "library/playlist_row.h"

#include <string>
#include <string_view>

namespace larkspin {

struct AppState;
class Files;
class MediaControl;
class MediaWindow;
class PlayCounters;
class Reply;
class Scanner;
class Settings;
class Sliders;

// What a message shows behind a song's name: " (<b>.wav</b>)", nothing for .mp3.
std::string extensionTag(std::string_view extension);

class Transport {
public:
    Transport(AppState& state, Settings& settings, Files& files, MediaControl& player, Reply& reply,
              Sliders& sliders, PlayCounters& counters, MediaWindow& window, Scanner& NiteScan2)
        : state_(state), settings_(settings), files_(files), player_(player), reply_(reply),
          sliders_(sliders), counters_(counters), window_(window), NiteScan2_(NiteScan2) {}

    // The commands.
    void stop();
    void pause();
    void resume();
    void nexp3();  // next
    void prep3();  // pre
    void tempp3(); // play: the song last started

    // A whole start of the row at masterIndex, whose message begins with the head. False when
    // its file is gone or the start has been overtaken.
    bool startCurrentRow(const std::string& head);

    // The pieces of a start.

    // Ends a pause, stops the mode tick and opens the song at the slider's volume. False,
    // after saying so, when there is no such file: what plays goes on.
    bool open(const Song& song);
    // Says what is started. False when the start has been overtaken meanwhile.
    bool tellStart(const std::string& message);
    // The same of head, number and marked name with the song's tag: "next:  <b>3</b>.  ride".
    bool announce(const std::string& head, const std::string& number, const std::string& name,
                  const Song& song);
    // A song from the list counts as started.
    void showStarted();
    // The row at masterIndex is the one last started.
    void keepPosition();
    // Stores the song as the one last started, and shows the count it will have at its end.
    void remember(const Song& song);
    // The title becomes the only choice; `offerAsChoice` leaves an open selection alone.
    void offerAsChoice(const std::string& title);
    void replaceChoices(const std::string& title);
    // The mode tick runs while a mode is on.
    void resumeModeTick();

    // What these are made of, for the mode tick.
    bool isThere(const Song& song); // says so when it isn't
    void openFile(const std::string& path);
    void dressplayer(); // the player shows none of its own controls
    void store(const Song& song);
    void moveToNextRow();

    bool nothingLoaded(); // stopped or closed
    Song lastSong();      // the list song last started, from the settings
    void endPauseMark();  // without a call of the player

private:
    void beginStart();
    std::string currentName();

    AppState& state_;
    Settings& settings_;
    Files& files_;
    MediaControl& player_;
    Reply& reply_;
    Sliders& sliders_;
    PlayCounters& counters_;
    MediaWindow& window_;
    Scanner& NiteScan2_;
    unsigned turns_ = 0; // songs opened and stopped so far; wraps around
};

} // namespace larkspin
