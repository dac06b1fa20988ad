// The walks through the chat client's window tree: where each of its windows stands, and what it
// says. Each walk begins at the top, since nothing in the tree lasts. Each costs one call, but for
// the room's second list.
#pragma once

#include "host/window_tree/window_calls.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

// A room, told by its controls alone, with those that are worked.
struct ClientRoom {
    HostHandle window = noHandle, input = noHandle, people = noHandle;
    std::string caption{};
};

// What a room is watched by for what is said in it: no more of its text than that, in bytes.
TextWatch roomWatch(std::uint32_t mostText);

class HostWindows {
public:
    explicit HostWindows(WindowCalls& calls) : calls_(calls) {}

    HostHandle frame() const;
    ClientRoom room() const;
    HostHandle keywordBox() const;
    HostHandle download() const;
    HostHandle ejectedList(HostHandle room) const; // its second list

    // All windows in the client's child area with their captions, and what they hold; the first one
    // that passes the test; the first one whose caption is exactly this.
    using Classes = std::vector<std::string>;
    using Test = std::function<bool(const FoundWindow& window)>;
    FoundWindows children(Classes holds = {}) const;
    FoundWindow child(const Test& test, Classes holds = {}) const;
    HostHandle childCalled(const std::string& caption) const;

    // The captions of the client's greetings. A room isn't one, whatever others have called it.
    std::vector<std::string> greetings() const;

    // The direct children of a class, with their texts if these are wanted.
    FoundWindows all(HostHandle parent, const char* className,
                     WindowWalk::Tells tells = WindowWalk::Tells::nothing) const;
    HostHandle first(HostHandle parent, const char* className) const;

    // The first top-level window of the class.
    HostHandle top(const char* className) const;

    // As the manager knows a window's caption, and as the window itself tells its text.
    std::string caption(HostHandle window) const;
    std::string text(HostHandle window) const;

private:
    FoundWindows walk(const WindowWalk& walk) const;

    WindowCalls& calls_;
};

} // namespace larkspin
