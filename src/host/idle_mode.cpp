#include "host/idle_mode.h"

#include "chat/reply.h"
#include "host/host_client.h"
#include "host/transfers.h"
#include "shell/app_state.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/number.h"

#include <utility>

namespace larkspin {

namespace {

constexpr double beforeReports = 0.2; // seconds

std::string timeIdle(const AppState& state) {
    return numberText(numberOrZero(state.idleHours)) + " hr, " +
           numberText(numberOrZero(state.idleMinutes)) + " min";
}

void countAnew(AppState& state) {
    state.idleMinutes = "0";
    state.idleHours = "0";
}

} // namespace

void IdleMode::idle(const std::string& reason) {
    core_.state.idleReason = reason;
    countAnew(core_.state);
    core_.state.idleClock.connect(core_.loop, [this] { tick(); }); // which stops one that runs
    core_.state.idleClock.enable();
    const std::string text = "idLe:  " + reason + " - begin";
    core_.reply.sayOrBox(text, "silent idle enabled - " + text);
}

void IdleMode::idleoff() {
    core_.state.idleClock.disable();
    const std::string text = "idLed:  " + timeIdle(core_.state) + " - end";
    countAnew(core_.state); // ahead of the box: idle mode may begin anew after it
    core_.reply.sayOrBox(text);
}

// What idle mode still has to do, step by step: `idleoff` or a restart may come in each.
void IdleMode::tick() {
    AppState& state = core_.state;
    const ThisRun run(state);
    const auto goesOn = [&] { return run.lasts() && state.idleClock.enabled(); };
    countMinute();
    answerQuestion();
    if (goesOn())
        core_.reply.saychat("idLe:  " + state.idleReason + " - " + timeIdle(state));
    if (goesOn())
        Pause{core_.loop}(beforeReports);
    if (goesOn())
        reportTransfers();
}

void IdleMode::countMinute() {
    AppState& state = core_.state;
    double minutes = numberOrZero(state.idleMinutes) + 1;
    if (minutes == 60) {
        state.idleHours = numberText(numberOrZero(state.idleHours) + 1);
        minutes = 0;
    }
    state.idleMinutes = numberText(minutes);
}

void IdleMode::answerQuestion() {
    const auto notice = client_.notices().notice();
    if (notice && notice->asksForOwner)
        client_.notices().confirm();
}

// In silent mode a report is a box, which waits for an owner who is away. While it does, no further
// one is added each minute.
void IdleMode::reportTransfers() {
    if (std::exchange(reporting_, true))
        return;
    const ThisRun run(core_.state);
    transfers_.dstat();
    if (run.lasts() && core_.state.idleClock.enabled())
        transfers_.ustat();
    reporting_ = false;
}

} // namespace larkspin
