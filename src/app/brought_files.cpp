#include "app/brought_files.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "shell/files.h"
#include "text/number.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

using Outcome = Brought::Outcome;

// For so long a path is looked at without a word.
constexpr std::chrono::seconds unexplained{2};

std::string nameOf(const Brought& file) {
    return songOfPath(file.path).name;
}

int sum(const std::vector<Brought>& all, int Brought::*number) {
    int whole = 0;
    for (const Brought& each : all)
        whole += each.*number;
    return whole;
}

// "ride", "5 songs from c:\music\rock", or "5 songs" of several paths.
std::string songsOf(const std::vector<Brought>& taken, int count) {
    const Brought& first = taken.front();
    if (taken.size() > 1)
        return counted(count, "song");
    return first.outcome == Outcome::file ? nameOf(first)
                                          : counted(count, "song") + " from " + first.path;
}

// What has become of the paths that could be taken; empty where they have brought nothing.
std::string toldTaken(const std::vector<Brought>& taken, const std::string& played) {
    const int added = sum(taken, &Brought::added), there = sum(taken, &Brought::there);
    if (added == 0 && !played.empty())
        return "playing " + played;
    if (added == 0)
        return there == 0
                   ? ""
                   : songsOf(taken, there) + (there == 1 ? " is" : " are") + " in the list already";
    if (taken.size() == 1 && !played.empty())
        return "added and playing " + played;
    const std::string already =
        there == 0 ? "" : ", " + std::to_string(there) + (there == 1 ? " was" : " were") + " there";
    return "added " + songsOf(taken, added) + already +
           (played.empty() ? "" : ", playing " + played);
}

// "couldn't open c:\gone.mp3 and 2 more:  there is no such file", of those that this is true of.
template <typename IsOne>
std::string toldOf(const std::vector<Brought>& all, IsOne isOne, const std::string& before,
                   const std::string& after) {
    const auto first = std::ranges::find_if(all, isOne);
    const auto count = std::ranges::count_if(all, isOne);
    if (count == 0)
        return {};
    const std::string more = count > 1 ? " and " + std::to_string(count - 1) + " more" : "";
    return before + first->path + more + after;
}

std::string toldUnopened(const std::vector<Brought>& all, Outcome outcome,
                         const std::string& reason) {
    return toldOf(
        all, [outcome](const Brought& each) { return each.outcome == outcome; }, "couldn't open ",
        ":  " + reason);
}

bool isTaken(const Brought& each) {
    return each.outcome == Outcome::file || each.outcome == Outcome::directory;
}

bool holdsNoSongs(const Brought& each) {
    return each.outcome == Outcome::directory && each.unread.empty() &&
           each.added + each.there + each.leftOut == 0;
}

} // namespace

void BroughtFiles::take(const std::vector<std::string>& paths, Then then) {
    std::vector<Brought> all;
    std::string played; // the name
    unsigned turn = 0;  // in which it plays
    for (const std::string& path : paths) {
        const auto brought = bring(path);
        if (!brought)
            return; // the run has ended
        all.push_back(*brought);
        // At once, since what comes after it may take long.
        const bool isWanted = then == Then::playing && brought->outcome == Outcome::file;
        if (isWanted && played.empty() && play(*brought)) {
            played = nameOf(*brought);
            turn = transport_.turn();
        }
    }
    if (turn != transport_.turn())
        played.clear(); // another one has been started meanwhile, or a stop came
    for (const std::string& line : told(all, played))
        if (!line.empty())
            reply_.tellOwner(line);
}

std::optional<Brought> BroughtFiles::bring(const std::string& path) {
    const TimerId slow =
        loop_.once(unexplained, [this, path] { reply_.tellOwner("looking at " + path); });
    auto brought = songs_.bring(path);
    loop_.cancel(slow);
    return brought;
}

bool BroughtFiles::play(const Brought& file) {
    const int index = findRow(state_.masterList, file.row, 0);
    if (index < 0) { // there is no room for it
        transport_.openFromDisk(file.path);
        return true;
    }
    state_.setMasterIndex(index);
    return transport_.start({.song = songOfRow(file.row.text()),
                             .count = SongStart::Count::stored}) == Transport::Outcome::started;
}

// A refresh keeps only what the media filter lets through. Once for each filter is enough.
std::string BroughtFiles::toldFiltered(int count) {
    if (count == 0 || std::exchange(toldFilter_, state_.mediaFilter) == state_.mediaFilter)
        return {};
    return "the media filter is " + state_.mediaFilter + ":  a refresh takes " +
           std::to_string(count) + " of these out, but not after " + state_.trigger + "filter any";
}

std::vector<std::string> BroughtFiles::told(const std::vector<Brought>& all,
                                            const std::string& played) {
    std::vector<Brought> taken;
    std::ranges::copy_if(all, std::back_inserter(taken), isTaken);
    const int leftOut = sum(all, &Brought::leftOut);
    std::vector<std::string> lines = {
        taken.empty() ? "" : toldTaken(taken, played),
        leftOut > 0 ? leftOutText(leftOut, "", "") : "",
        toldFiltered(sum(all, &Brought::filtered)),
        toldOf(all, holdsNoSongs, "no songs in ", ""),
        toldUnopened(all, Outcome::unplayable, "not of a type that can be played"),
        toldUnopened(all, Outcome::missing, "there is no such file"),
        toldUnopened(all, Outcome::elsewhere, "it is no file of this machine"),
        toldUnopened(all, Outcome::unanswered, noAnswer)};
    for (const Brought& each : all)
        if (!each.unread.empty())
            lines.push_back(each.unread.told("", ""));
    return lines;
}

} // namespace larkspin
