// AppState: the one state of a run, shared by all commands, windows and timers.
//
// Many fields are at once what a window shows and the only record of what they mean: a
// command compares them with their literals, blanks included. Numbers in text that are no
// number count as 0 where they are used. A handler that has waited reads a field anew.
//
// Each field stands with its value before the start sequence fills it.
#pragma once

#include "shell/timer.h"
#include "shell/version.h"
#include "text/row_list.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// Captions with a meaning. U+00B3 is drawn as a play mark by the pause button's font, U+0090
// as a stop mark by the play button's.
inline constexpr std::string_view unpausedMark = "  II";
inline constexpr std::string_view pausedMark = "  \u00B3";
inline constexpr std::string_view idleMark = "  l>";
inline constexpr std::string_view playingMark = " \xC2\x90";
inline constexpr std::string_view recResting = "rec";
inline constexpr std::string_view recMarking = "stop";
inline constexpr std::string_view recRepeating = "end";
inline constexpr std::string_view commandsNormal = "        larkspin commands window";
inline constexpr std::string_view commandsChoosing = "             double click a choice to play";
inline constexpr std::string_view commandsReciting = "        larkspin commands window ";
inline constexpr std::string_view stopsResting = "     stop";
inline constexpr std::string_view stopsLeadingBack = " show list";
inline constexpr std::string_view stopsOffering = "    scroll";
inline constexpr std::string_view stopsReciting = "     stop ";
inline constexpr std::string_view resizeHint = "  [double click to resize]";
inline constexpr std::string_view unnamedPlaylistTitle =
    "                  larkspin playlist editor";

struct AppState {
    unsigned run = 0; // goes up when a run begins and when it ends, see ThisRun

    // Flags: check marks of the tray menu. At most one of rep, crand, cintz is on.
    bool silnt = false; // silent mode
    bool rep = false;   // repeat
    bool crand = false; // shuffle
    bool cintz = false; // continuous
    bool rol = false;   // refresh the list at start
    bool spcol = true;  // stored, no other effect

    // Chat engine
    std::string trigger;                                 // what opens a command; may be empty
    RowList commandNames, commandHelp;                   // the catalogue, parallel
    std::string commandText;                             // help of the selected row
    std::string commandsTitle{commandsNormal};           // also the state of the choice dialogue
    RowList choiceList;                                  // search hits, or the song last started
    std::string stopsCaption{stopsResting};              // caption and state of the stop window
    std::string searchTerm = buildText() + "Loading..."; // last search; also the splash's status

    // Playback
    std::string play, playpath;     // list song last started, name and directory; kept in settings
    std::string resumeIndex = "-1"; // row of masterList last started
    std::string pauseMark{unpausedMark};          // the only record of a pause
    std::string playMark{idleMark};               // whether a song counts as started
    std::string tempTitle;                        // file name of a song opened straight from disk
    std::string sectionStart, sectionEnd;         // seconds; no end means no repeated section
    std::string sectionSeconds = "0";             // counted while a section is being marked
    std::string tempoText;                        // the player's rate
    std::string volumeDrop;                       // 100 less the volume slider
    int HScroll2 = 50;                            // volume slider, 0 to 100
    int HScroll3 = 100;                           // tempo slider, 0 to 200
    RowList playedMemory;                         // what the random pick has had
    std::string pickHits = "0";                   // remembered songs met by a random search
    Timer Timer1{std::chrono::milliseconds(500)}; // the mode tick

    // Library
    RowList masterList{RowList::Order::sorted};        // the playlist
    RowList playlistView{RowList::Order::sorted};      // the same rows, with the owner's selection
    RowList knownDirs, scanRows, dirQueue, driveRoots; // what scans found and work on
    std::string scanRoot;
    std::string mediaFilter;  // a word of the table of media types, such as "mp3" or "all types"
    std::string markedFilter; // the one whose entry has the check mark: only the menu moves it
    std::string matchCount;
    std::string fileCountLabel = "0 files";
    std::string playlistTitle{unnamedPlaylistTitle};

    // Counters, in seconds over all runs
    std::string playedSeconds;
    std::string programSeconds;

    // Companion windows and host
    RowList notes;
    std::string noteText;
    RowList appTitles, appPaths; // parallel
    std::string appPathText;
    std::string idleReason, idleMinutes, idleHours;
    Timer idleClock{std::chrono::minutes(1)};
    std::string uploadSeen; // "yep" or "nope"

    // The program's one-second clock, on the splash window
    Timer clock{std::chrono::seconds(1)};

    // Captions of the tray menu that change
    std::string mp3z, noted, appsz, playtz, numl, loads, mpp, scanpcf;
    std::vector<std::string> p; // one entry per playlist file, after the fixed separator

    // Captions of the media window that change
    std::string mediaCaption{resizeHint};
    std::string volumeCaption, tempoCaption;
    std::string recCaption{recResting}; // also the state of the rec button

    // The current row of masterList: the list's own selection, not a copy. -1 for none; an
    // index outside the list changes nothing.
    int masterIndex() const { return masterList.currentIndex(); }
    void setMasterIndex(int index) { masterList.setCurrentIndex(index); }

    bool modeIsOn() const { return rep || crand || cintz; }
};

} // namespace larkspin
