#include "companions/launcher.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "chat/two_arguments.h"
#include "companions/launcher_items.h"
#include "companions/launching.h"
#include "library/directories.h"
#include "shell/app_state.h"
#include "shell/event_loop.h"
#include "text/fold.h"
#include "text/wildcard.h"

namespace larkspin {

namespace {

// Seconds.
constexpr double afterItem = 0.6;
constexpr double untilFirstTitle = 0.7; // of a recital

} // namespace

// The walk ends where the list ended at first, so items added meanwhile aren't loaded. Where items
// have been removed meanwhile it comes upon an empty path, which ends it as well.
void Launcher::load(const std::string& text) {
    if (reply_.refusedInSilence(
            "double click an app or pic in the apps and pics list to load it in silent mode"))
        return;
    recitals_.begin(
        [this, wanted = foldCase(text), index = 0, end = items_.count(), any = false]() mutable {
            if (index == end && !any)
                tellNotFound(wanted);
            if (index < end)
                items_.select(index);
            if (index == end || items_.path(index).empty())
                return std::optional<double>();
            const bool isMeant = items_.titleHolds(index, wanted);
            any = any || isMeant;
            isMeant ? announceAndLaunch(index) : loop_.serveTurn();
            ++index;
            return std::optional(isMeant ? afterItem : 0);
        });
}

// From the first one each time: any other item may have gone in the pause.
void Launcher::rmva(const std::string& text) {
    if (reply_.refusedInSilence("press the delete key for the one you want to remove on the "
                                "application and shit form to remove them in silent mode"))
        return;
    recitals_.begin([this, wanted = foldCase(text), any = false]() mutable {
        int index = 0;
        for (; index < items_.count(); ++index) {
            items_.select(index);
            if (items_.path(index).empty())
                return std::optional<double>();
            if (items_.titleHolds(index, wanted))
                break;
        }
        if (index == items_.count()) {
            if (!any)
                tellNotFound(wanted);
            return std::optional<double>();
        }
        any = true;
        const std::string title = items_.title(index);
        items_.removeAt(index);
        reply_.saychat("<b>" + title + "</b> removed from applications n shit list");
        return std::optional(afterItem);
    });
}

void Launcher::clra() {
    const std::string count = std::to_string(items_.count());
    items_.clear();
    reply_.sayOrBox("cleared <b>" + count + "</b> apps n shit",
                    "all apps and pics have been cleared");
}

void Launcher::tellCount() {
    const std::string count = std::to_string(items_.count());
    reply_.sayOrBox("total apps n shit items:  <b>" + count, "you have " + count + " app items");
}

void Launcher::ap(const std::string& pathAndTitle) {
    if (reply_.refusedInSilence(
            "use the applications n shit window to add something in silent mode"))
        return;
    const auto item = twoArguments(pathAndTitle);
    // Path and title are split at the first comma of the whole line. If the trigger has a comma,
    // that one is the first, and the two can't be told apart.
    if (!item || state_.trigger.find(',') != std::string::npos)
        return;
    const std::string path = directories_.drivePath(item->first);
    if (path.empty() || item->second.empty())
        reply_.saychat("the fuck are you tryin to do?");
    else if (!fits(path, "*:\\*"))
        reply_.saychat("the hell are you doing, stupid?");
    else if (!items_.add(path, item->second))
        reply_.saychat("the applications n shit list is full");
    else
        reply_.saychat("added:  <b>" + item->second);
}

void Launcher::scra() {
    if (reply_.refusedInSilence("cant scroll app shit in silent mode you ditz"))
        return;
    recitals_.begin("scrolling <b>" + std::to_string(items_.count()) + "</b> app n shit items",
                    untilFirstTitle, [this, index = 0]() mutable {
                        if (index < items_.count())
                            items_.select(index);
                        if (items_.path(index).empty())
                            return std::optional<double>();
                        const std::string title = items_.title(index), path = items_.path(index);
                        reply_.saychat("<b>" + std::to_string(++index) + "</b>.  <b>" + title +
                                       "</b> ~> " + path);
                        return std::optional(afterItem);
                    });
}

void Launcher::launchSelected() {
    if (!items_.path(items_.selected()).empty())
        announceAndLaunch(items_.selected());
}

void Launcher::announceAndLaunch(int index) {
    // The path is read before the announcement, during which the list may change.
    const std::string path = items_.path(index);
    reply_.saychat("loading... <b>" + items_.title(index));
    launchItem(path);
}

void Launcher::tellNotFound(const std::string& text) {
    reply_.saychat("<b>" + text + "</b> not found");
}

void Launcher::launchItem(const std::string& path) {
    // Such a path is always a program, whatever the desktop would open it with.
    if (!path.ends_with(".exe"))
        launchFile(path);
    else if (!launching_.run(path))
        tellUnable(path);
}

void Launcher::launchFile(const std::string& path) {
    if (!launching_.open(path))
        tellUnable(path);
}

void Launcher::tellUnable(const std::string& path) {
    reply_.saychat("unable to open... <b>" + path);
}

} // namespace larkspin
