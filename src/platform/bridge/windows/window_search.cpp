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

HWND child(HWND parent, HWND after, const char* className) {
    return FindWindowExA(parent, after, className, nullptr);
}

// Each once, while it is told to go on and there is time. A window that goes, or to the back, on
// the way leads past others, as any does that is new: so the way is gone until none is found on it.
using EachChild = std::function<bool(HWND window)>;
void visitChildren(HWND parent, const char* className, const Deadline& deadline,
                   const EachChild& each) {
    std::set<HWND> seen;
    std::size_t steps = 0;
    for (bool isAnyNew = true; isAnyNew;) {
        isAnyNew = false;
        HWND window = nullptr;
        while ((window = child(parent, window, className)) != nullptr) {
            if (++steps > 2 * WindowWalk::most || deadline.isOver())
                return;
            if (!seen.insert(window).second)
                continue;
            if (seen.size() > WindowWalk::most || !each(window))
                return;
            isAnyNew = true;
        }
    }
}

Parent parentOf(const WindowWalk& walk) {
    Parent parent{windowOf(walk.from), walk.from == noHandle || IsWindow(windowOf(walk.from)) != 0};
    for (const std::string& className : walk.path) {
        if (parent.isThere)
            parent.window = child(parent.window, nullptr, className.c_str());
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
    visitChildren(parent.window, walk.className.c_str(), deadline, [&](HWND window) {
        FoundWindow found{handleOf(window), {}, {}};
        for (const std::string& className : walk.holds)
            found.holds.push_back(handleOf(child(window, nullptr, className.c_str())));
        return each(found);
    });
}

HWND topLevelWindow(const char* className, const std::string& caption, const Deadline& deadline) {
    HWND found = nullptr;
    visitChildren(nullptr, className, deadline, [&](HWND window) {
        if (captionOf(window) == caption)
            found = window;
        return found == nullptr;
    });
    return found;
}

} // namespace larkspin::bridge
