#include "shell/shell.h"

#include "text/number.h"

namespace larkspin {

namespace {

std::string asCount(const std::string& seconds) {
    return numberText(numberOrZero(seconds));
}

std::string oneMore(const std::string& seconds) {
    return numberText(numberOrZero(seconds) + 1);
}

} // namespace

void loadFlag(bool& flag, const std::string& stored) {
    if (stored == "yes")
        flag = true;
    else if (stored.empty() || stored == "no")
        flag = false;
}

const char* yesNo(bool flag) {
    return flag ? "yes" : "no";
}

Shell::Shell(EventLoop& loop, Files& files, const std::string& dataDirectory, bool fadesWindows)
    : directory(dataDirectory), settings(files, directory), splash(state, loop, fadesWindows) {}

void Shell::load(const StoredSettings& stored) {
    state.playedSeconds = asCount(stored.get("mp3sec"));
    state.programSeconds = asCount(stored.get("progsec"));
    loadFlag(state.rol, stored.get("ref on load"));
}

void Shell::save(SettingsChanges& changes) const {
    changes.emplace_back("scan pc on load", yesNo(state.spcol));
    changes.emplace_back("ref on load", yesNo(state.rol));
    changes.emplace_back("mp3sec", state.playedSeconds);
    changes.emplace_back("progsec", state.programSeconds);
}

void Shell::reset() {
    // Only the number of the run goes on: handlers that still wait see by it that theirs is over.
    const unsigned next = state.run + 1;
    state = AppState();
    state.run = next;
}

void Shell::countSecond(bool songPlays) {
    if (songPlays && state.pauseMark != pausedMark)
        state.playedSeconds = oneMore(state.playedSeconds);
    state.programSeconds = oneMore(state.programSeconds);
}

} // namespace larkspin
