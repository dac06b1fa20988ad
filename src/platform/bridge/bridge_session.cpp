#include "platform/bridge/bridge_session.h"

#include "platform/posix/spawn.h"

#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr const char* noWine = "wine isn't installed";
constexpr const char* noBridge =
    "larkspin-bridge.exe isn't there: the package larkspin-windows has it, or a build with its "
    "compiler";
constexpr const char* noStart = "wine can't be started";

} // namespace

BridgeSession::BridgeSession(WatchingLoop& loop, std::string bridge, BridgeLink::Patience patience)
    : loop_(loop), bridge_(std::move(bridge)), patience_(patience), ending_(loop),
      link_(loop, {.up = [this] { isUp(); },
                   .answersAgain = [this] { windows_.bridgeAnswersAgain(); },
                   .seen = [this](const std::string& body) { windows_.bridgeHasSeen(body); },
                   .ended = [this](const std::string& why) { hasEnded(why); }}),
      windows_(loop, link_) {}

void BridgeSession::begin() {
    if (state_ != State::off)
        return;
    state_ = State::beginning;
    const std::string why = start();
    if (!why.empty())
        failing_ = loop_.once(0ns, [this, why] { hasEnded(why); });
}

std::string BridgeSession::start() {
    if (bridge_.empty())
        return noBridge;
    const std::string wine = programOnPath("wine");
    if (wine.empty())
        return noWine;
    process_ = BridgeProcess::start(wine, bridge_);
    if (!process_)
        return noStart;
    link_.open(process_->takePipes(), patience_);
    return "";
}

// One that hangs wouldn't see that its pipes are closed, and this program may end before it does.
void BridgeSession::end() {
    loop_.cancel(std::exchange(failing_, TimerId::none));
    if (process_ && link_.isHung())
        process_->kill();
    link_.close();
    if (process_)
        ending_.add(std::move(process_));
    state_ = State::off;
    windows_.bridgeIsGone();
}

// What is watched is asked for first, since whoever hears of it may do anything.
void BridgeSession::isUp() {
    state_ = State::up;
    windows_.bridgeIsUp();
    tell("");
}

void BridgeSession::hasEnded(const std::string& why) {
    end();
    tell(why);
}

void BridgeSession::tell(const std::string& why) {
    if (const Changed changed = changed_)
        changed(why);
}

} // namespace larkspin
