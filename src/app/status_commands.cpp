#include "app/status_commands.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "chat/room.h"
#include "library/playlist.h"
#include "playback/play_counters.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/settings.h"
#include "shell/shell.h"
#include "text/dates.h"
#include "text/number.h"

#include <algorithm>
#include <cstdint>

namespace larkspin {

namespace {

constexpr std::string_view homePage = "https://larkspin.invalid/";

constexpr const char* noSong = "play somethin first fucker";
constexpr const char* noFirstLoad = "first load not found... date created - try again";

// A span of seconds, taken apart.
struct Span {
    explicit Span(const std::string& text) {
        const std::int64_t total = rounded(numberOrZero(text));
        hours = std::to_string(total / 3600);
        minutes = std::to_string(total % 3600 / 60);
        seconds = std::to_string(total % 60);
    }

    std::string hours, minutes, seconds;
};

std::string playedBox(const Span& span) {
    return "total played music time:  " + span.hours + " hours, " + span.minutes + " minutes, " +
           span.seconds + " seconds";
}

std::string runBox(const Span& span) {
    return "total program runtime:  " + span.hours + " hours, " + span.minutes + " minutes";
}

std::string version() {
    return "version " + versionText() + " - december 19, 2003";
}

} // namespace

void StatusCommands::pt() {
    const Span span(state_.playedSeconds);
    reply_.sayOrBox("total played music time:  <b>" + span.hours + "</b> hrs, <b>" + span.minutes +
                        "</b> min, <b>" + span.seconds + "</b> sec",
                    playedBox(span));
}

void StatusCommands::rt() {
    const Span span(state_.programSeconds);
    reply_.sayOrBox("total program runtime:  <b>" + span.hours + "</b> hrs, <b>" + span.minutes +
                        "</b> min",
                    runBox(span));
}

void StatusCommands::boxPlayedTime() {
    dialogs_.box(playedBox(Span(state_.playedSeconds)));
}

void StatusCommands::boxRunTime() {
    dialogs_.box(runBox(Span(state_.programSeconds)));
}

void StatusCommands::ver() {
    reply_.sayOrBox(version());
}

void StatusCommands::boxVersion() {
    dialogs_.box(version());
}

void StatusCommands::first() {
    const std::string moment = firstLoad();
    reply_.sayOrBox(moment.empty() ? noFirstLoad : "first loaded on " + moment);
}

void StatusCommands::boxFirstLoad() {
    const std::string moment = firstLoad();
    if (moment.empty())
        dialogs_.stopBox(noFirstLoad);
    else
        dialogs_.box("this program was first loaded on " + moment);
}

// The moment of the first start. Empty when it was never stored; it is stored then, for the next
// time.
std::string StatusCommands::firstLoad() {
    std::string moment = settings_.get("first load");
    if (moment.empty())
        settings_.put("first load", dateAndTime(loop_.localTime()));
    return moment;
}

void StatusCommands::time() {
    const std::string now = clockTime(loop_.localTime());
    reply_.sayOrBox(now, "the time is " + now);
}

void StatusCommands::date() {
    const std::string today = longDate(loop_.localTime());
    reply_.sayOrBox(today, "the date is " + today);
}

void StatusCommands::clear() {
    room_.clearChatInput();
    reply_.saychat("chat window cleared");
}

void StatusCommands::sela() {
    if (!reply_.silentguard())
        reply_.saychat("9-27-02 i love you sela, never forget that.");
}

void StatusCommands::stats() {
    collectdirs(state_);
    const auto sizes = [this] {
        return "directories:  <b>" + std::to_string(state_.knownDirs.count()) +
               "</b> - files:  <b>" + std::to_string(state_.masterList.count());
    };
    const auto sliders = [this] {
        return "tempo (speed):  <b>" + std::to_string(state_.HScroll3) + "</b> - volume:  <b>" +
               std::to_string(state_.HScroll2);
    };
    // One mode is told at most, by the order in which the modes rule each other out.
    const auto modes = [this] {
        const bool isRepeat = state_.rep, isShuffle = state_.crand && !isRepeat;
        const bool isContinuous = state_.cintz && !isRepeat && !isShuffle;
        return std::string("continuous:  <b>") + yesNo(isContinuous) + "</b> - repeat:  <b>" +
               yesNo(isRepeat) + "</b> - shuffle:  <b>" + yesNo(isShuffle);
    };
    recitals_.tell({sizes, sliders, modes}, 0.3);
}

void StatusCommands::pstat() {
    const auto played = [this] {
        // The number follows the words "load number:  " in the tray's entry.
        const auto named = std::min(state_.loads.size(), std::size_t{14});
        return "load number:  <b>" + state_.loads.substr(named) + "</b> - files played:  <b>" +
               counters_.played();
    };
    const auto pair = [this](const std::string& oneCalled, Choice one,
                             const std::string& otherCalled, Choice other) {
        return [=, this] {
            return oneCalled + ":  <b>" + settings_.yochoose(one) + "</b> - " + otherCalled +
                   ":  <b>" + settings_.yochoose(other);
        };
    };
    recitals_.tell(
        {played, pair("ascii font", Choice::openingFont, "font", Choice::font),
         pair("ascii color", Choice::openingColor, "font color", Choice::fontColor),
         pair("end ascii font", Choice::closingFont, "end ascii font color", Choice::closingColor)},
        0.5);
}

void StatusCommands::info() {
    const Song song = songOfFile(songTitle(), "");
    reply_.sayAlways(song.title().empty() ? noSong
                                          : "song:  " + song.name + extensionTag(song.extension));
}

void StatusCommands::boxSong() {
    const std::string title = songTitle();
    dialogs_.box(title.empty() ? noSong : "song:  " + songOfFile(title, "").name);
}

// The file name of the song in play, also of one that is on no list. Empty when there is none.
std::string StatusCommands::songTitle() {
    if (!state_.tempTitle.empty())
        return state_.tempTitle;
    return transport_.nothingLoaded() ? "" : state_.play;
}

void StatusCommands::adv() {
    const auto download = [this] {
        return "<body link=#" + settings_.yochoose(Choice::fontColor) + "><a href=\"" +
               std::string(homePage) + "\"></u>built around perfection <> download</a>";
    };
    recitals_.tell({[] { return "larkspin player - by moraine"; }, download}, 0.5);
}

} // namespace larkspin
