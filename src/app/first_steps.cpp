#include "app/first_steps.h"

#include "app/program.h"
#include "host/preferences.h"
#include "shell/media_types.h"
#include "shell/this_run.h"
#include "text/blanks.h"
#include "text/number.h"
#include "text/visible.h"

#include <utility>

namespace larkspin {

void FirstSteps::begin() {
    program_.machine.loop.beforeSleep([this] { look(); });
}

bool FirstSteps::isEmpty() const {
    return program_.shell.state.masterList.empty();
}

bool FirstSteps::areShown() const {
    // Before it runs, only a first run is known to have no songs.
    const bool isReady = program_.isRunning() || program_.isFirstRun();
    return isReady && (isEmpty() || areAskedFor_ || !lookingIn_.empty());
}

std::string FirstSteps::folder() const {
    return preferences_.musicFolder().empty() ? "~"
                                              : preferences_.asTyped(preferences_.musicFolder());
}

std::string FirstSteps::title() const {
    return isEmpty() ? "there are no songs yet. these lines bring them, and play one:"
                     : "these lines bring songs, and play one:";
}

std::vector<FirstSteps::Step> FirstSteps::steps() const {
    const std::string& trigger = program_.shell.state.trigger;
    return {{trigger + "scan " + folder(), "looks for songs there"},
            {trigger + "transfer", "takes what was found into the list"},
            {trigger + "rnd", "plays any of them"}};
}

FirstSteps::Step FirstSteps::allTypes() const {
    const AppState& state = program_.shell.state;
    if (state.mediaFilter == anyMediaType || state.mediaFilter.empty())
        return {};
    return {state.trigger + "filter any", "first, for more than " + state.mediaFilter};
}

std::string FirstSteps::seen(const std::string& folder) const {
    return visibleText(preferences_.asTyped(folder), " ");
}

std::string FirstSteps::progress() const {
    const auto scanned = program_.library.scan.lookingIn();
    if (lookingIn_.empty() && !scanned)
        return {};
    return "looking in " + (lookingIn_.empty() ? seen(*scanned) : lookingIn_) + ":  " +
           counted(program_.shell.state.scanRows.count(), "song") + " so far";
}

std::vector<std::string> FirstSteps::asLines() const {
    std::vector<std::string> lines{title()};
    std::vector<Step> all = steps();
    if (const Step first = allTypes(); !first.line.empty())
        all.insert(all.begin(), first);
    for (const Step& step : all)
        lines.push_back("  " + step.line + "  \u2013  " + step.does);
    lines.push_back(std::string(addingWord) + "  \u2013  does it with all songs of a folder");
    return lines;
}

SlashWord FirstSteps::word() {
    return {std::string(addingWord).substr(1),
            "[FOLDER]",
            "adds all songs of a folder, and of those below it; asks for one if none is given",
            [this](std::string_view rest) {
                addMusic(std::string(withoutBlanks(rest)));
                return true;
            },
            {},
            "larkspin"};
}

void FirstSteps::addMusic(const std::string& typed) {
    const ThisRun run(program_.shell.state);
    if (!lookingIn_.empty())
        return program_.chat.reply.tellOwner("still " + progress());
    if (!typed.empty())
        return addFrom(program_.machine.directories.drivePath(typed));
    const auto chosen = program_.machine.dialogs.openDirectory(
        {.title = "where is your music?", .directory = preferences_.musicFolder()});
    if (chosen && run.lasts() && lookingIn_.empty())
        addFrom(*chosen);
}

void FirstSteps::addFrom(const std::string& folder) {
    Reply& reply = program_.chat.reply;
    lookingIn_ = seen(folder);
    const std::string from = lookingIn_;
    reply.tellOwner("looking for songs in " + from);
    program_.library.mediaFilter.takeAll();
    const auto tree = program_.library.adding.addTree(folder);
    lookingIn_.clear();
    if (!tree)
        return;
    const int there = tree->found - tree->added - tree->leftOut;
    std::string told = tree->found == 0 ? "there are no songs in " + from
                                        : "added " + counted(tree->added, "song") + " from " + from;
    if (there > 0)
        told += ", " + std::to_string(there) + (there == 1 ? " was" : " were") + " there";
    reply.tellOwner(told + tree->notes);
    if (tree->added > 0)
        areAskedFor_ = false;
}

// The songs may have come by any road.
void FirstSteps::look() {
    if (!program_.isRunning() || !lookingIn_.empty())
        return;
    const bool wasEmpty = std::exchange(wasEmpty_, isEmpty());
    if (wasEmpty && !wasEmpty_)
        program_.machine.loop.post([this] { tellHowToPlay(); });
}

void FirstSteps::tellHowToPlay() {
    const std::string& trigger = program_.shell.state.trigger;
    program_.chat.reply.tellOwner(trigger + "play and a part of a name plays a song, " + trigger +
                                  "rnd any of them, " + trigger + "next the next one; " + trigger +
                                  "help tells more");
}

} // namespace larkspin
