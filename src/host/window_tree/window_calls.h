// The calls of a window manager that the chat client's windows are worked with, in plain values.
// Texts are single bytes here, as the client has them (see host_bytes.h); class names are
// ASCII.
//
// Each call may have to go to another process and back, so a search through many windows is one
// call. A window may vanish between any two calls. What is asked of one that isn't there, or of
// handle 0, gives 0 or an empty text, and what is sent to it goes nowhere. A window that doesn't
// answer counts as one that isn't there: no call waits for it, but for a moment. No call lets
// events of this program's run. Nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

// A window or a control. A handle is used only within the operation that asked for it and is never
// kept, since the window may be gone by the next one.
using HostHandle = std::uint64_t;
inline constexpr HostHandle noHandle = 0;

// A way down the tree: at each step to the front-most direct child of the class.
using ClassPath = std::vector<std::string>;

// A search for the direct children of one class, front-most first.
struct WindowWalk {
    enum class Tells {
        nothing,
        caption,
        text
    }; // as the manager knows it; as the window itself does

    HostHandle from = noHandle; // 0 for the desktop, whose children are the top-level windows
    ClassPath path{};           // leads from there to their parent; nothing is found off its way
    std::string className{};
    std::vector<std::string> holds{}; // classes: which children of these each one has
    Tells tells = Tells::nothing;

    // Windows that change their order during a walk turn up again, so that it ends after so many.
    static constexpr std::size_t most = 1000;
};

struct FoundWindow {
    HostHandle window = noHandle;
    std::string text{};              // as was asked for
    std::vector<HostHandle> holds{}; // of each class its first direct child; 0 where it has none

    // Whether it has children of the first `needed` of those classes.
    bool holdsFirst(std::size_t needed) const {
        for (std::size_t at = 0; at < needed; ++at)
            if (at >= holds.size() || holds[at] == noHandle)
                return false;
        return true;
    }
};
using FoundWindows = std::vector<FoundWindow>;

// Where the name of a list's row stands in the memory of the list's process. The row's data is an
// address; that many bytes behind it stands a pointer of four bytes, and that many behind what it
// points to the name, in a field of a fixed size.
struct RowRecord {
    std::uint32_t pointerAt = 0, nameAt = 0, nameSize = 0;
};

// A text that grows, in the first window found by a walk that holds what is needed.
struct TextWatch {
    WindowWalk windows{};
    std::uint32_t needed = 0;         // so many of the classes that it may hold, the first ones
    std::uint32_t text = 0, list = 0; // which of them has the text, and which is the list
    std::uint32_t most = 0;           // bytes of the text's end
};

struct WatchedText {
    enum class State { none, there, hangs }; // no such window; it doesn't answer

    State state = State::none;
    HostHandle window = noHandle, list = noHandle;
    std::string caption{};
    std::uint32_t length = 0; // of the whole text, in bytes
    std::string end{};        // the last of it
    std::uint32_t rows = 0;   // of the list

    bool operator==(const WatchedText&) const = default;
};

// A value as the registry has it: the number of its type, and its bytes.
struct RegistryValue {
    unsigned type = 0;
    std::string bytes;
};

class WindowCalls {
public:
    virtual ~WindowCalls() = default;

    virtual FoundWindows walk(const WindowWalk& walk) = 0;

    // The front-most top-level window of the class with exactly this caption.
    virtual HostHandle findWindow(const std::string& className, const std::string& caption) = 0;

    // A window's caption, as the manager itself knows it; and its text, as it tells it itself. What
    // a window claims its text to be long isn't believed beyond `longestText`, in bytes.
    virtual std::string caption(HostHandle window) = 0;
    virtual std::string text(HostHandle window) = 0;
    static constexpr std::size_t longestText = 65535;

    // Sends a message and gives what the window answers: one with numbers, and one that hands a
    // text over.
    virtual std::int64_t send(HostHandle window, unsigned message, std::uint64_t wParam,
                              std::int64_t lParam) = 0;
    virtual void sendText(HostHandle window, unsigned message, const std::string& text) = 0;

    // Leaves a message for the window, without an answer. False when it isn't there.
    virtual bool post(HostHandle window, unsigned message, std::uint64_t wParam,
                      std::int64_t lParam) = 0;

    virtual void show(HostHandle window, int command) = 0;

    // What the manager answers to whether a window is visible; exactly 1 means yes.
    virtual int visible(HostHandle window) = 0;

    // The field of each row, all its bytes, but no more than `most` rows. Empty for a row that
    // couldn't be read. None at all from a process that may not be read.
    virtual std::vector<std::string> rows(HostHandle list, const RowRecord& record,
                                          std::size_t most) = 0;

    // Tells what is there, and again with every change of it, in an event of its own each. One text
    // is watched at a time; an empty handler ends it.
    using Watching = std::function<void(const WatchedText& text)>;
    virtual void watch(const TextWatch& watch, Watching changed) = 0;

    // A value of the current user's part of the registry.
    virtual std::optional<RegistryValue> registryValue(const std::string& key,
                                                       const std::string& name) = 0;

    // Makes the window with that caption the active application.
    virtual void activate(const std::string& caption) = 0;

    // Keystrokes for the window that has the focus: "^" holds Ctrl and "%" Alt for the next key.
    virtual void sendKeys(const std::string& keys) = 0;
};

} // namespace larkspin
