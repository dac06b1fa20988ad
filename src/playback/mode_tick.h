// What happens at a song's end. The player doesn't tell: its state is polled, by the 500 ms
// mode tick while a mode is on, and by the one-second tick while none is.
#pragma once

#include <string>

namespace larkspin {

struct AppState;
struct Song;
class MediaControl;
class PlayCounters;
class RandomPick;
class Reply;
class Scanner;
class Transport;

class ModeTick {
public:
    ModeTick(AppState& state, MediaControl& player, Reply& reply, Transport& transport,
             PlayCounters& counters, RandomPick& randomPick, Scanner& NiteScan2)
        : state_(state), player_(player), reply_(reply), transport_(transport), counters_(counters),
          randomPick_(randomPick), NiteScan2_(NiteScan2) {}

    // The mode tick: starts the next song by the mode once the one in hand has ended.
    void tick();

    // The one-second check: counts a song that has run out with no mode on.
    void checkEndWithoutMode();

private:
    void repeatSong();
    void shuffleOn();
    void continueOn();
    bool hasEnded();
    bool openCurrentRow(const Song& song);
    bool showCurrentRow(const std::string& head, const Song& song);
    void store(const Song& song);

    AppState& state_;
    MediaControl& player_;
    Reply& reply_;
    Transport& transport_;
    PlayCounters& counters_;
    RandomPick& randomPick_;
    Scanner& NiteScan2_;
};

} // namespace larkspin
