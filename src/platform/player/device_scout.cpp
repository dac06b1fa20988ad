#include "platform/player/device_scout.h"

#include "platform/player/device_signs.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds roundInterval = 250ms;
// After a sign of a device. It may need a moment until it can be opened.
constexpr int looksAtOnce = 4;
// Without a sign, since a server on another machine gives none.
constexpr int roundsBetweenLooks = 120;
constexpr int roundsInDoubt = 8; // until a look without an answer counts as one in vain
// A device that breaks this soon isn't looked for again at once.
constexpr Nanoseconds leastUse = 10s;

} // namespace

DeviceScout::DeviceScout(EventLoop& loop, std::string program, std::vector<std::string> arguments,
                         Task found, Task inVain)
    : loop_(loop), line_(loop, std::move(program), std::move(arguments)), found_(std::move(found)),
      inVain_(std::move(inVain)) {}

void DeviceScout::begin() {
    if (isAtWork())
        return;
    signs_ = deviceSigns();
    looksToCome_ = loop_.now() - foundAt_ < leastUse ? 0 : looksAtOnce;
    waited_ = 0;
    rounds_ = loop_.every(roundInterval, [this] { round(); });
    if (looksToCome_ > 0)
        look();
    else
        inVain_();
}

void DeviceScout::begin(PlayerLine& waiting) {
    end();
    line_.takeOver(waiting);
    line_.hear(); // by which the process is told to forget what was wished of it
    begin();
}

void DeviceScout::end() {
    loop_.cancel(std::exchange(rounds_, TimerId::none));
    if (line_.isUp())
        line_.end();
}

void DeviceScout::round() {
    ++waited_;
    if (line_.isUp())
        hear();
    else if (isTime())
        look();
}

void DeviceScout::hear() {
    auto heard = PlayerLine::Heard::nothing;
    do
        heard = line_.hear();
    while (heard == PlayerLine::Heard::report && line_.report().start < startSteps);
    const bool isThrough = line_.report().start == startSteps;
    if (isThrough && !line_.report().withoutDevice) {
        loop_.cancel(std::exchange(rounds_, TimerId::none));
        foundAt_ = loop_.now();
        found_();
        return;
    }
    const bool isOver = isThrough || heard == PlayerLine::Heard::end;
    if (isOver)
        line_.end();
    if (isOver || waited_ == roundsInDoubt)
        inVain_();
}

bool DeviceScout::isTime() {
    if (auto signs = deviceSigns(); signs != signs_) {
        signs_ = std::move(signs);
        looksToCome_ = looksAtOnce;
    }
    return looksToCome_ > 0 || waited_ >= roundsBetweenLooks;
}

void DeviceScout::look() {
    looksToCome_ = std::max(looksToCome_ - 1, 0);
    waited_ = 0;
    if (!line_.isUp())
        line_.start();
}

} // namespace larkspin
