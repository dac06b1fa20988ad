#include "host/window_tree/host_windows.h"

#include "host/window_tree/host_bytes.h"
#include "host/window_tree/window_names.h"

#include <algorithm>

namespace larkspin {

namespace {

// Of these, which come first in what a room is looked for by, a room has each; and where among the
// classes what is worked of it stands.
constexpr std::size_t roomNeeds = 4, shownTextAt = 1, inputAt = 4, listAt = 5;
const HostWindows::Classes roomHolds = {window::label, window::shownText, window::combobox,
                                        window::icon,  window::input,     window::listbox};

bool isRoom(const FoundWindow& window) {
    return window.holdsFirst(roomNeeds);
}

HostHandle firstOf(const FoundWindows& found) {
    return found.empty() ? noHandle : found.front().window;
}

WindowWalk childrenWalk(HostWindows::Classes holds) {
    return {.path = {window::frame, window::childArea},
            .className = window::child,
            .holds = std::move(holds),
            .tells = WindowWalk::Tells::caption};
}

} // namespace

TextWatch roomWatch(std::uint32_t mostText) {
    return {.windows = childrenWalk(roomHolds),
            .needed = roomNeeds,
            .text = shownTextAt,
            .list = listAt,
            .most = mostText};
}

FoundWindows HostWindows::walk(const WindowWalk& walk) const {
    FoundWindows found = calls_.walk(walk);
    for (FoundWindow& each : found) {
        each.text = fromSingleByte(each.text);
        each.holds.resize(walk.holds.size());
    }
    return found;
}

HostHandle HostWindows::top(const char* className) const {
    return firstOf(walk({.className = className}));
}

HostHandle HostWindows::frame() const {
    return top(window::frame);
}

// If there is no parent, the search must not be made: it would go through the top-level windows.
FoundWindows HostWindows::all(HostHandle parent, const char* className,
                              WindowWalk::Tells tells) const {
    if (parent == noHandle)
        return {};
    return walk({.from = parent, .className = className, .tells = tells});
}

HostHandle HostWindows::first(HostHandle parent, const char* className) const {
    return firstOf(all(parent, className));
}

FoundWindows HostWindows::children(Classes holds) const {
    return walk(childrenWalk(std::move(holds)));
}

FoundWindow HostWindows::child(const Test& test, Classes holds) const {
    const FoundWindows found = children(std::move(holds));
    const auto fitting = std::ranges::find_if(found, test);
    return fitting == found.end() ? FoundWindow() : *fitting;
}

HostHandle HostWindows::childCalled(const std::string& wanted) const {
    return child([&](const FoundWindow& each) { return each.text == wanted; }).window;
}

std::vector<std::string> HostWindows::greetings() const {
    std::vector<std::string> captions;
    for (const FoundWindow& each : children(roomHolds))
        if (each.text.starts_with(window::welcome) && !isRoom(each))
            captions.push_back(each.text);
    return captions;
}

ClientRoom HostWindows::room() const {
    const FoundWindow found = child(isRoom, roomHolds);
    if (found.window == noHandle)
        return {};
    return {.window = found.window,
            .input = found.holds[inputAt],
            .people = found.holds[listAt],
            .caption = found.text};
}

HostHandle HostWindows::ejectedList(HostHandle room) const {
    const FoundWindows lists = all(room, window::listbox);
    return lists.size() < 2 ? noHandle : lists[1].window;
}

// It has a button of either kind.
HostHandle HostWindows::download() const {
    const auto isDownload = [](const FoundWindow& each) {
        return each.holdsFirst(3) && (each.holds[3] != noHandle || each.holds[4] != noHandle);
    };
    return child(isDownload,
                 {window::gauge, window::checkbox, window::label, window::aolButton, window::icon})
        .window;
}

HostHandle HostWindows::keywordBox() const {
    return firstOf(
        walk({.path = {window::frame, window::toolbar, window::toolbarStrip, window::combobox},
              .className = window::edit}));
}

std::string HostWindows::caption(HostHandle window) const {
    return fromSingleByte(calls_.caption(window));
}

std::string HostWindows::text(HostHandle control) const {
    return control == noHandle ? std::string() : fromSingleByte(calls_.text(control));
}

} // namespace larkspin
