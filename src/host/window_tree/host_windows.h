// The walks through the chat client's window tree: where each of its windows stands, and what it
// says. Each walk begins at the top, since nothing in the tree lasts.
#pragma once

#include "host/window_tree/window_calls.h"

#include <functional>
#include <string>

namespace larkspin {

class HostWindows {
public:
    explicit HostWindows(WindowCalls& calls) : calls_(calls) {}

    HostHandle frame() const;
    HostHandle room() const; // told by its controls alone
    HostHandle keywordBox() const;
    HostHandle download() const;

    // The first window in the client's child area that passes the test; the first one whose caption
    // is exactly this.
    using Test = std::function<bool(HostHandle window)>;
    HostHandle child(const Test& test) const;
    HostHandle childCalled(const std::string& caption) const;

    // The direct children of a class, one after the other.
    HostHandle first(HostHandle parent, const char* className) const;
    HostHandle next(HostHandle parent, HostHandle after, const char* className) const;

    // As the manager knows a window's caption, and as the window itself tells its text.
    std::string caption(HostHandle window) const;
    std::string text(HostHandle window) const;

private:
    bool has(HostHandle parent, const char* className) const;

    WindowCalls& calls_;
};

} // namespace larkspin
