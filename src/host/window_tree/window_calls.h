// The calls of a window manager that the chat client's windows are worked with, in plain values.
// Texts are single bytes here, as the client has them (see host_bytes.h); class names are
// ASCII.
//
// A window may vanish between any two calls. What is asked of one that isn't there, or of handle 0,
// gives 0 or an empty text, and what is sent to it goes nowhere. A window that doesn't answer
// counts as one that isn't there: no call waits for it. No call lets events of this program's run.
// Nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace larkspin {

// A window or a control. A handle is used only within the operation that asked for it and is never
// kept, since the window may be gone by the next one.
using HostHandle = std::uint64_t;
inline constexpr HostHandle noHandle = 0;

using ProcessHandle = std::uint64_t;

// A value as the registry has it: the number of its type, and its bytes.
struct RegistryValue {
    unsigned type = 0;
    std::string bytes;
};

class WindowCalls {
public:
    virtual ~WindowCalls() = default;

    // The front-most top-level window of the class, of any caption or of exactly this one.
    virtual HostHandle findWindow(const std::string& className) = 0;
    virtual HostHandle findWindow(const std::string& className, const std::string& caption) = 0;

    // The next direct child of the class after the child `after`, front-most first; the first one
    // for 0. Nothing stands behind a window that isn't a child of the parent.
    virtual HostHandle findChild(HostHandle parent, HostHandle after,
                                 const std::string& className) = 0;

    // A window's caption, as the manager itself knows it.
    virtual std::string caption(HostHandle window) = 0;

    // Sends a message and gives what the window answers: one with numbers; one that hands a text
    // over; and one that reads a text of up to `size` bytes.
    virtual std::int64_t send(HostHandle window, unsigned message, std::uint64_t wParam,
                              std::int64_t lParam) = 0;
    virtual void sendText(HostHandle window, unsigned message, const std::string& text) = 0;
    virtual std::string readText(HostHandle window, unsigned message, std::size_t size) = 0;

    // Leaves a message for the window, without an answer.
    virtual void post(HostHandle window, unsigned message, std::uint64_t wParam,
                      std::int64_t lParam) = 0;

    virtual void show(HostHandle window, int command) = 0;

    // What the manager answers to whether a window is visible; exactly 1 means yes.
    virtual int visible(HostHandle window) = 0;

    // The number of the process that a window belongs to.
    virtual std::uint32_t processOf(HostHandle window) = 0;

    // Opens a process for reading its memory; 0 when it may not be. What was opened must be closed.
    // A read gives all the bytes, or nothing.
    virtual ProcessHandle openProcess(std::uint32_t process, std::uint32_t access) = 0;
    virtual std::optional<std::string> readMemory(ProcessHandle process, std::uint64_t address,
                                                  std::size_t size) = 0;
    virtual void closeProcess(ProcessHandle process) = 0;

    // A value of the current user's part of the registry.
    virtual std::optional<RegistryValue> registryValue(const std::string& key,
                                                       const std::string& name) = 0;

    // Makes the window with that caption the active application.
    virtual void activate(const std::string& caption) = 0;

    // Keystrokes for the window that has the focus: "^" holds Ctrl and "%" Alt for the next key.
    virtual void sendKeys(const std::string& keys) = 0;
};

} // namespace larkspin
