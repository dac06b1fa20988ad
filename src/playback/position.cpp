#include "playback/position.h"

#include "chat/reply.h"
#include "playback/media_control.h"
#include "playback/time_forms.h"
#include "text/number.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <optional>

namespace larkspin {

namespace {

constexpr const char* nonsense = "stop acting gay and lame";

// A number that is neither negative nor has a fraction.
std::optional<double> wholeSpan(const std::string& text) {
    return text.find_first_of("-.") == std::string::npos ? number(text) : std::nullopt;
}

} // namespace

void Position::len() {
    reply_.sayOrBox("song length:  " + richlength(player_),
                    "song length:  " + plainlength(player_));
}

void Position::pos() {
    reply_.sayOrBox("song position:  " + richposition(player_),
                    "current position:  " + plainposition(player_));
}

void Position::posTo(const std::string& time) {
    if (reply_.refusedInSilence("use the position bar on the mp3s window to seek in silent mode"))
        return;
    const auto [head, tail, isTime] = partedAt(time, ':');
    if (!isTime) {
        reply_.saychat("you must be stupider than you look");
        return;
    }
    const std::string minutes(head), seconds(tail);
    // Seconds take two digits.
    if (withoutLast(seconds, 1).empty()) {
        reply_.saychat("um no, retard, try again");
        return;
    }
    const auto mm = wholeSpan(minutes), sec = wholeSpan(seconds);
    if (!mm || !sec || *sec > 59) {
        reply_.saychat(nonsense);
        return;
    }
    const double target = *sec + 60 * *mm;
    if (target > player_.Duration()) {
        reply_.saychat("thats too far forward, you faggot");
        return;
    }
    player_.setCurrentPosition(target);
    reply_.saychat("set position to <b>" + minutes + ":" + seconds);
}

// Only the span itself is tested: a jump beyond the end, from the middle, ends up at the end.
void Position::fwd(const std::string& seconds) {
    if (reply_.refusedInSilence(
            "use the position bar on the mp3s window to fast forward in silent mode"))
        return;
    const auto span = wholeSpan(seconds);
    if (!span) {
        reply_.saychat(nonsense);
    } else if (*span > player_.Duration()) {
        reply_.saychat("thats foo far ahead, you dumb bastard");
    } else {
        player_.setCurrentPosition(player_.CurrentPosition() + *span);
        reply_.saychat("fast forwarded <b>" + seconds + "</b> seconds");
    }
}

void Position::rew(const std::string& seconds) {
    if (reply_.refusedInSilence("use the position bar on the mp3s window to rewind in silent mode"))
        return;
    const auto span = wholeSpan(seconds);
    if (!span) {
        reply_.saychat(nonsense);
    } else if (const double target = player_.CurrentPosition() - *span; target < 0) {
        reply_.saychat("thats foo far behind, you dumb bastard");
    } else {
        player_.setCurrentPosition(target);
        reply_.saychat("rewinded <b>" + seconds + "</b> seconds");
    }
}

} // namespace larkspin
