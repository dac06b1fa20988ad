#include "host/window_tree/host_windows.h"

#include "host/window_tree/host_bytes.h"
#include "host/window_tree/window_calls.h"
#include "host/window_tree/window_names.h"

#include <algorithm>

namespace larkspin {

namespace {

// Windows that change their order during a walk turn up again, so that it ends after so many.
constexpr int mostChildren = 1000;

// What a window claims its text to be long isn't believed beyond this, in bytes.
constexpr std::int64_t longestText = 65535;

} // namespace

HostHandle HostWindows::frame() const {
    return calls_.findWindow(window::frame);
}

HostHandle HostWindows::first(HostHandle parent, const char* className) const {
    return next(parent, noHandle, className);
}

// If there is no parent, the search must not be made: it would go through all the windows there
// are.
HostHandle HostWindows::next(HostHandle parent, HostHandle after, const char* className) const {
    return parent == noHandle ? noHandle : calls_.findChild(parent, after, className);
}

bool HostWindows::has(HostHandle parent, const char* className) const {
    return first(parent, className) != noHandle;
}

HostHandle HostWindows::child(const Test& test) const {
    const HostHandle area = first(frame(), window::childArea);
    HostHandle child = first(area, window::child);
    for (int seen = 1; child != noHandle && !test(child); ++seen)
        child = seen < mostChildren ? next(area, child, window::child) : noHandle;
    return child;
}

HostHandle HostWindows::childCalled(const std::string& wanted) const {
    return child([&](HostHandle window) { return caption(window) == wanted; });
}

HostHandle HostWindows::room() const {
    return child([this](HostHandle candidate) {
        return has(candidate, window::label) && has(candidate, window::shownText) &&
               has(candidate, window::combobox) && has(candidate, window::icon);
    });
}

HostHandle HostWindows::download() const {
    return child([this](HostHandle candidate) {
        return has(candidate, window::gauge) && has(candidate, window::checkbox) &&
               has(candidate, window::label) &&
               (has(candidate, window::aolButton) || has(candidate, window::icon));
    });
}

HostHandle HostWindows::keywordBox() const {
    const HostHandle strip = first(first(frame(), window::toolbar), window::toolbarStrip);
    return first(first(strip, window::combobox), window::edit);
}

std::string HostWindows::caption(HostHandle window) const {
    return fromSingleByte(calls_.caption(window));
}

std::string HostWindows::text(HostHandle control) const {
    const std::int64_t length = calls_.send(control, window::getTextLength, 0, 0);
    if (length <= 0)
        return {};
    const auto size = static_cast<std::size_t>(std::min(length, longestText) + 1);
    return fromSingleByte(calls_.readText(control, window::getText, size));
}

} // namespace larkspin
