// Choosing a song by chat: by a part of its name, by its number, or at random.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class Choices;
class RandomPick;
struct SongStart;
class Transport;

class PlaySelection {
public:
    PlaySelection(const Core& core, Transport& transport, Choices& choices, RandomPick& randomPick)
        : state_(core.state), reply_(core.reply), transport_(transport), choices_(choices),
          randomPick_(randomPick) {}

    // The commands.
    void play(const std::string& text);
    void num(const std::string& number);
    void rnd();
    void rndOf(const std::string& text);

    // Starts a random row of the whole playlist.
    void randp3();

    // Starts a choice, counted from 1. The song doesn't become the current row: the list goes on
    // from the row before the search. A choice whose file is gone leaves the others open.
    void selp3(int choice);

private:
    bool search(const std::string& text);
    void playOnlyHit(const std::string& text);
    void askForChoice();
    SongStart startOfRandomHit(const std::string& text);
    void placeAtRandomHit(const std::string& text, int picked, int before);

    AppState& state_;
    Reply& reply_;
    Transport& transport_;
    Choices& choices_;
    RandomPick& randomPick_;
};

} // namespace larkspin
