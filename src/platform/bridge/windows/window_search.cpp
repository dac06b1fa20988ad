#include "platform/bridge/windows/window_search.h"

#include <set>
#include <vector>

namespace larkspin::bridge {

namespace {

// To the calls below, no parent is the desktop: what leads nowhere must not end up there.
struct Parent {
    HWND window = nullptr;
    bool isThere = false;
};

HWND child(HWND parent, HWND after, const std::string& className) {
    return className.empty() ? nullptr : FindWindowExA(parent, after, className.c_str(), nullptr);
}

Parent parentOf(const WindowWalk& walk) {
    Parent parent{windowOf(walk.from), walk.from == noHandle || IsWindow(windowOf(walk.from)) != 0};
    for (const std::string& className : walk.path) {
        if (parent.isThere)
            parent.window = child(parent.window, nullptr, className);
        parent.isThere = parent.isThere && parent.window != nullptr;
    }
    return parent;
}

} // namespace

std::string captionOf(HWND window) {
    const auto claimed = static_cast<std::size_t>(std::max(GetWindowTextLengthA(window), 0));
    std::string text(std::min(claimed, WindowCalls::longestText) + 1, '\0');
    const int got = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
    text.resize(std::min(static_cast<std::size_t>(std::max(got, 0)), text.size() - 1));
    return text;
}

void visit(const WindowWalk& walk, const Deadline& deadline, const Visit& each) {
    const Parent parent = parentOf(walk);
    if (!parent.isThere)
        return;
    // A window that came to the front meanwhile leads to those that were seen, and on from them.
    std::set<HWND> seen;
    HWND window = child(parent.window, nullptr, walk.className);
    for (std::size_t step = 0; window != nullptr && step < WindowWalk::most; ++step) {
        if (deadline.isOver())
            return;
        if (seen.insert(window).second) {
            FoundWindow found{handleOf(window), {}, {}};
            for (const std::string& className : walk.holds)
                found.holds.push_back(handleOf(child(window, nullptr, className)));
            if (!each(found))
                return;
        }
        window = child(parent.window, window, walk.className);
    }
}

HWND topLevelWindow(const char* className, const std::string& caption, const Deadline& deadline) {
    HWND window = FindWindowExA(nullptr, nullptr, className, nullptr);
    for (std::size_t step = 0; window != nullptr && step < WindowWalk::most; ++step) {
        if (deadline.isOver())
            return nullptr;
        if (captionOf(window) == caption)
            return window;
        window = FindWindowExA(nullptr, window, className, nullptr);
    }
    return nullptr;
}

} // namespace larkspin::bridge
