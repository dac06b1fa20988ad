#include "playback/sliders.h"

#include "chat/reply.h"
#include "playback/media_control.h"
#include "shell/app_state.h"
#include "text/number.h"

#include <optional>

namespace larkspin {

namespace {

// What is wrong with the value, as the owner is told; nothing when it can be set. The order of
// the tests shows: 300.5 is too large before it is no whole number.
std::optional<std::string> complaint(const std::string& value, int max) {
    const auto wanted = number(value);
    if (!wanted)
        return "can you be more stupid?";
    if (*wanted > max)
        return std::to_string(max) + " is the max, you fuck up";
    if (value.find('.') != std::string::npos)
        return "can you be more stupid?";
    if (*wanted < 0)
        return "0 is the least, you fuck up";
    return std::nullopt;
}

int stored(const std::string& value, int max, int fallback) {
    const auto number16 = wholeNumber16(value);
    return number16 && *number16 >= 0 && *number16 <= max ? *number16 : fallback;
}

const char* tempoWord(int tempo) {
    if (tempo > 100)
        return "</b> (fast)";
    return tempo < 100 ? "</b> (slow)" : "</b> (normal)";
}

} // namespace

void Sliders::tempo(const std::string& value) {
    if (const auto wrong = complaint(value, mostTempo)) {
        reply_.saychat(*wrong);
        return;
    }
    const int wanted = static_cast<int>(numberOrZero(value));
    reply_.saychat("tempo set to <b>" + value + tempoWord(wanted));
    moveTempo(wanted);
}

// A paused song stays paused, and the mark goes on saying so.
void Sliders::volume(const std::string& value) {
    if (const auto wrong = complaint(value, mostVolume)) {
        reply_.saychat(*wrong);
        return;
    }
    const int wanted = static_cast<int>(numberOrZero(value));
    reply_.saychat(wanted == 0 ? "volume set:  <b>0</b> (mute)"
                               : "volume set:  <b>" + value + "</b>");
    moveVolume(wanted);
}

void Sliders::moveTempo(int value) {
    if (state_.HScroll3 == value)
        return;
    state_.HScroll3 = value;
    HScroll3_Change();
}

void Sliders::moveVolume(int value) {
    if (state_.HScroll2 == value)
        return;
    state_.HScroll2 = value;
    HScroll2_Change();
}

void Sliders::restore(const std::string& tempo, const std::string& volume) {
    state_.HScroll3 = stored(tempo, mostTempo, 100);
    HScroll3_Change();
    state_.HScroll2 = stored(volume, mostVolume, 50);
    HScroll2_Change();
}

void Sliders::HScroll2_Change() {
    const int drop = mostVolume - state_.HScroll2;
    state_.volumeDrop = std::to_string(drop);
    player_.setVolume(-30 * drop); // 0.3 decibels a step
    player_.setMute(state_.HScroll2 == 0);
    state_.volumeCaption = "     volume:  " + std::to_string(state_.HScroll2);
}

void Sliders::HScroll3_Change() {
    // A factor with two decimals: 105 is "1.05".
    const int hundredths = state_.HScroll3 % 100;
    state_.tempoText = std::to_string(state_.HScroll3 / 100) + (hundredths < 10 ? ".0" : ".") +
                       std::to_string(hundredths);
    player_.setRate(numberOrZero(state_.tempoText));
    state_.tempoCaption = "       tempo:  " + std::to_string(state_.HScroll3);
}

} // namespace larkspin
