#include "outside/winamp.h"

#include "chat/markup.h"
#include "chat/reply.h"
#include "outside/other_player.h"
#include "shell/this_run.h"
#include "text/highlight.h"

namespace larkspin {

namespace {

constexpr std::string_view noPlayer = "winamp isnt loaded you fag";

// The title of a song without what Winamp puts around it. What looks like a tag is part of it.
std::string cleaned(const std::string& caption) {
    return withoutTags(highlight(highlight(caption, " - Winamp", ""), "[Stopped]", ""));
}

} // namespace

void Winamp::amp() {
    const ThisRun run(core_.state);
    const auto caption = player_.title();
    // If there is no player, that is told first, and after it a title without words.
    if (!caption)
        core_.reply.sayAlways(noPlayer);
    if (run.lasts())
        core_.reply.sayAlways(cleaned(caption.value_or("")));
}

void Winamp::wstop() {
    core_.reply.saychat(player_.press(OtherPlayer::Button::stop) ? "stopped current winamp track"
                                                                 : noPlayer);
}

void Winamp::wpre() {
    pressAndTell(OtherPlayer::Button::previous, "previous track ");
}

void Winamp::wplay() {
    pressAndTell(OtherPlayer::Button::play, "now playing track ");
}

void Winamp::wnext() {
    pressAndTell(OtherPlayer::Button::next, "next track ");
}

// The title that is told may still be that of the track before, because the player isn't waited
// for. If the player goes away after the press, that is told first, and then a track without a
// title.
void Winamp::pressAndTell(OtherPlayer::Button button, const std::string& opening) {
    const ThisRun run(core_.state);
    if (!player_.press(button))
        return core_.reply.saychat(noPlayer);
    const auto caption = player_.title();
    if (!caption)
        core_.reply.saychat(noPlayer);
    if (run.lasts())
        core_.reply.saychat(opening + cleaned(caption.value_or("")));
}

} // namespace larkspin
