#include "platform/player/standstill.h"

namespace larkspin {

namespace {

// The number of rounds, of a second each, that may pass without any movement.
int mostRounds(Standstill::Patience patience) {
    switch (patience) {
    case Standstill::Patience::starting:
        return 20;
    case Standstill::Patience::suspicious:
        return 2;
    default:
        return 4; // the round before these saw it move: five seconds in all
    }
}

} // namespace

bool Standstill::isReached(const PlayerReport& report, Patience patience) {
    const bool moves = report.position != last_.position || report.phase != last_.phase ||
                       report.song != last_.song || report.start != last_.start;
    last_ = report;
    rounds_ = moves ? 0 : rounds_ + 1;
    return rounds_ >= mostRounds(patience);
}

} // namespace larkspin
