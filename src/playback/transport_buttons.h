// What the media window's five buttons for playing do: much the same as the commands, but without
// a word, and the next song of a shuffle is a random one.
#pragma once

#include "chat/core.h"

namespace larkspin {

class Choices;
class Files;
class MediaControl;
class RandomPick;
struct SongStart;
class Transport;

class TransportButtons {
public:
    TransportButtons(const Core& core, Files& files, MediaControl& player, Transport& transport,
                     Choices& choices, RandomPick& randomPick)
        : state_(core.state), dialogs_(core.dialogs), files_(files), player_(player),
          transport_(transport), choices_(choices), randomPick_(randomPick) {}

    void previous();
    void next();
    void pauseOrResume(); // also with nothing to pause
    void stopOrPlay();    // what it plays is the list song last started
    void openFile();      // by a dialog, from anywhere on disk

    // What these buttons do, one by one.
    void pause();
    void resume();
    void stop();
    void playLast();

private:
    SongStart currentRow() const;
    void nextAtRandom();
    void endPause();

    AppState& state_;
    Dialogs& dialogs_;
    Files& files_;
    MediaControl& player_;
    Transport& transport_;
    Choices& choices_;
    RandomPick& randomPick_;
};

} // namespace larkspin
