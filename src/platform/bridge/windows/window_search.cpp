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

// Each once, while it is told to go on and there is time. One that came to the front meanwhile
// leads to those that were seen and on from them, one that went back to the beginning.
using EachChild = std::function<bool(HWND window)>;
void visitChildren(HWND parent, const char* className, const Deadline& deadline,
                   const EachChild& each) {
    std::set<HWND> seen;
    HWND window = child(parent, nullptr, className);
    for (std::size_t step = 0; window != nullptr && step < WindowWalk::most; ++step) {
        if (deadline.isOver() || (seen.insert(window).second && !each(window)))
            return;
        const HWND next = child(parent, window, className);
        const bool isGone = next == nullptr && IsWindow(window) == 0;
        window = isGone ? child(parent, nullptr, className) : next;
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
