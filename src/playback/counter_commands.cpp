#include "playback/counter_commands.h"

#include "chat/reply.h"
#include "playback/play_counters.h"
#include "playback/top_list.h"
#include "shell/app_state.h"
#include "text/number.h"

#include <limits>
#include <optional>

namespace larkspin {

namespace {

constexpr std::int32_t topsOfAll = 5;

std::optional<std::int32_t> howMany(const std::string& text) {
    const auto value = number(text);
    const auto whole = value ? rounded(*value) : 0;
    if (whole < 1 || whole > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(whole);
}

} // namespace

void CounterCommands::times() {
    const double count = counters_.count(state_.play);
    counters_.show(count); // in place of the coming count, which a start shows
    reply_.sayOrBox("this song has been played <b>" + numberText(count) + "</b> times",
                    "this song has been played " + numberText(count) + " times");
}

void CounterCommands::total() {
    if (!reply_.silentguard())
        reply_.saychat("total files played:  <b>" + counters_.played());
}

void CounterCommands::tops() {
    if (!reply_.silentguard())
        topList_.toplist(topsOfAll);
}

void CounterCommands::top(const std::string& wanted) {
    if (reply_.silentguard())
        return;
    if (const auto n = howMany(wanted))
        topList_.toplist(*n);
    else
        reply_.saychat("type a number");
}

} // namespace larkspin
