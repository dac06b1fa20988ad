#include "playback/section_repeat.h"

#include "chat/reply.h"
#include "chat/two_arguments.h"
#include "playback/media_control.h"
#include "shell/app_state.h"
#include "text/number.h"
#include "text/parts.h"

#include <cmath>
#include <optional>

namespace larkspin {

namespace {

// A part that is left out counts nothing: ":30" is half a minute.
std::optional<double> partOfTime(std::string_view text) {
    return text.empty() ? 0 : number(text);
}

std::optional<double> seconds(std::string_view time) {
    const auto [head, tail, hasMinutes] = partedAt(time, ':');
    if (!hasMinutes)
        return number(time);
    const auto minutes = partOfTime(head), rest = partOfTime(tail);
    if (!minutes || !rest || !std::isfinite(60 * *minutes + *rest))
        return std::nullopt;
    return 60 * *minutes + *rest;
}

} // namespace

void SectionRepeat::rec(const std::string& times) {
    if (reply_.refusedInSilence(
            "use the rec button on the mp3s window to repeat a section in silent mode"))
        return;
    const auto section = twoArguments(times);
    if (!section || section->first.empty() || section->second.empty())
        return;
    const auto start = seconds(section->first), end = seconds(section->second);
    if (!start || !end) {
        reply_.saychat("those arent times, dumbass");
        return;
    }
    if (*end < *start) {
        reply_.saychat("thats backwards, stupid");
        return;
    }
    state_.sectionStart = numberText(*start);
    state_.sectionEnd = numberText(*end);
    reply_.saychat("repeating from <b>" + section->first + "</b> to <b>" + section->second);
}

void SectionRepeat::end() {
    state_.sectionEnd.clear();
    reply_.saychat("repeating session ended");
}

void SectionRepeat::press() {
    // One press marks the beginning, the next one marks the end and starts the repeating, and the
    // third one ends it.
    if (state_.recCaption == recResting) {
        state_.sectionStart = numberText(player_.CurrentPosition());
        state_.recCaption = recMarking;
    } else if (state_.recCaption == recMarking) {
        state_.sectionEnd = numberText(player_.CurrentPosition());
        state_.recCaption = recRepeating;
    } else if (state_.recCaption == recRepeating) {
        state_.sectionEnd.clear();
        state_.sectionSeconds = "0";
        state_.recCaption = recResting;
    }
}

void SectionRepeat::check() {
    if (state_.recCaption == recMarking)
        state_.sectionSeconds = numberText(numberOrZero(state_.sectionSeconds) + 1);
    if (!state_.sectionEnd.empty() && player_.CurrentPosition() > numberOrZero(state_.sectionEnd))
        player_.setCurrentPosition(numberOrZero(state_.sectionStart));
}

} // namespace larkspin
