// What happens at a song's end. The player doesn't tell: its state is polled, by the 500 ms
// mode tick while a mode is on, and by the one-second tick while none is.
//
// A song that the player gave up on has not been played to its end and isn't counted; the mode
// goes on all the same. Songs whose files are gone are passed over.
#pragma once

#include "chat/core.h"
#include "playback/transport.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace larkspin {

class MediaControl;
class PlayCounters;
class RandomPick;
class SongFailures;

class ModeTick {
public:
    ModeTick(const Core& core, MediaControl& player, Transport& transport, PlayCounters& counters,
             RandomPick& randomPick, SongFailures& failures)
        : state_(core.state), reply_(core.reply), player_(player), transport_(transport),
          counters_(counters), randomPick_(randomPick), failures_(failures) {}

    // The mode tick: starts the next song by the mode once the current one has ended.
    void tick();

    // The one-second check of what the mode tick doesn't see: a song that has failed while it
    // rests, or has run out with no mode on.
    void checkEndWithoutTick();

private:
    // Does what the mode asks for, and returns what is left to say after that; empty for nothing.
    std::string followMode();
    std::string repeatSong();
    std::string shuffleOn();
    void continueOn();
    using Directories = std::set<std::string>; // in which a song is missing, as was said
    void passOverMissing(const bool& mode,
                         const std::function<Transport::Outcome(Directories&)>& startNext);
    SongStart nextStart(std::string_view head, Directories& told) const;
    void countEnd();
    bool hasEnded();
    bool wasStopped();

    AppState& state_;
    Reply& reply_;
    MediaControl& player_;
    Transport& transport_;
    PlayCounters& counters_;
    RandomPick& randomPick_;
    SongFailures& failures_;
    bool isAtWork_ = false;
};

} // namespace larkspin
