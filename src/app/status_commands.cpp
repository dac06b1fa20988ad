#include "app/status_commands.h"

#include "chat/reply.h"
#include "chat/room.h"
#include "library/playlist.h"
#include "playback/play_counters.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/pause.h"
#include "shell/settings.h"
#include "shell/shell.h"
#include "shell/this_run.h"
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
    const ThisRun run(state_);
    const Pause pause(loop_);
    collectdirs(state_);
    reply_.saychat("directories:  <b>" + std::to_string(state_.knownDirs.count()) +
                   "</b> - files:  <b>" + std::to_string(state_.masterList.count()));
    pause(0.3);
    if (!run.lasts())
        return;
    reply_.saychat("tempo (speed):  <b>" + std::to_string(state_.HScroll3) + "</b> - volume:  <b>" +
                   std::to_string(state_.HScroll2));
    pause(0.3);
    if (!run.lasts())
        return;
    // One mode is told at most, by the order in which the modes rule each other out.
    const bool isRepeat = state_.rep, isShuffle = state_.crand && !isRepeat;
    const bool isContinuous = state_.cintz && !isRepeat && !isShuffle;
    reply_.saychat(std::string("continuous:  <b>") + yesNo(isContinuous) + "</b> - repeat:  <b>" +
                   yesNo(isRepeat) + "</b> - shuffle:  <b>" + yesNo(isShuffle));
}

void StatusCommands::pstat() {
    const ThisRun run(state_);
    const Pause pause(loop_);
    const auto setting = [this](Choice choice) { return settings_.yochoose(choice); };
    // The number follows the words "load number:  " in the tray's entry.
    const std::string loadNumber =
        state_.loads.substr(std::min(state_.loads.size(), std::size_t{14}));
    reply_.saychat("load number:  <b>" + loadNumber + "</b> - files played:  <b>" +
                   counters_.played());
    pause(0.5);
    if (!run.lasts())
        return;
    reply_.saychat("ascii font:  <b>" + setting(Choice::openingFont) + "</b> - font:  <b>" +
                   setting(Choice::font));
    pause(0.5);
    if (!run.lasts())
        return;
    reply_.saychat("ascii color:  <b>" + setting(Choice::openingColor) + "</b> - font color:  <b>" +
                   setting(Choice::fontColor));
    pause(0.5);
    if (!run.lasts())
        return;
    reply_.saychat("end ascii font:  <b>" + setting(Choice::closingFont) +
                   "</b> - end ascii font color:  <b>" + setting(Choice::closingColor));
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
    const ThisRun run(state_);
    reply_.saychat("larkspin player - by moraine");
    Pause{loop_}(0.5);
    if (!run.lasts())
        return;
    reply_.saychat("<body link=#" + settings_.yochoose(Choice::fontColor) + "><a href=\"" +
                   std::string(homePage) + "\"></u>built around perfection <> download</a>");
}

} // namespace larkspin
