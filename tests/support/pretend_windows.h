// A window manager with nothing behind it: a tree of windows that a test builds and takes apart.
// What a pressed button or an entered text brings about is the business of whoever derives from it.
#pragma once

#include "host/window_tree/window_calls.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class PretendWindows : public WindowCalls {
public:
    using Texts = std::vector<std::string>;
    struct Window {
        HostHandle parent = 0; // 0 is the desktop
        std::string className, text;
        std::vector<HostHandle> children = {}; // front-most first
        const Texts* rows = nullptr;           // of a list
        std::size_t row = 1000000;             // its selected one
        bool isHeld = false;                   // a button
    };
    HostHandle add(HostHandle parent, const std::string& className, const std::string& text = {});
    void remove(HostHandle window); // with all that is in it
    bool has(HostHandle window) const { return windows_.contains(window); }
    Window& operator[](HostHandle window) { return windows_[window]; }

    HostHandle findWindow(const std::string& className) override;
    HostHandle findWindow(const std::string& className, const std::string& caption) override;
    HostHandle findChild(HostHandle of, HostHandle after, const std::string& className) override;
    std::string caption(HostHandle window) override { return reach(window).text; }
    std::int64_t send(HostHandle, unsigned message, std::uint64_t, std::int64_t) override;
    void sendText(HostHandle window, unsigned message, const std::string& text) override;
    std::string readText(HostHandle window, unsigned message, std::size_t size) override;
    void post(HostHandle window, unsigned message, std::uint64_t, std::int64_t) override;
    void show(HostHandle window, int command) override { shown.emplace_back(window, command); }
    int visible(HostHandle window) override { return reach(window).parent != 0; }
    std::uint32_t processOf(HostHandle window) override { return reach(window).parent ? 77 : 0; }
    ProcessHandle openProcess(std::uint32_t process, std::uint32_t access) override;
    std::optional<std::string> readMemory(ProcessHandle, std::uint64_t, std::size_t) override;
    void closeProcess(ProcessHandle) override { --openProcesses; }
    std::optional<RegistryValue> registryValue(const std::string&, const std::string&) override;
    void activate(const std::string& caption) override { activated.push_back(caption); }
    void sendKeys(const std::string& text) override { keys.push_back(text); }

    int calls = 0, vanishAt = 0; // before the call of that number all windows go
    bool mayBeRead = true;       // the memory, and all but one row in it
    std::size_t unreadableRow = 1000000;
    int openProcesses = 0;
    std::map<std::string, RegistryValue> registry; // by key, "|" and name
    Texts keys, activated;
    std::vector<std::pair<HostHandle, int>> shown; // the show commands
    std::vector<HostHandle> closed;                // what was told to

protected:
    virtual void pressed(HostHandle) {} // a button, in one of the two ways
    virtual void entered(HostHandle) {} // a text, by the return key

private:
    Window& reach(HostHandle window); // one that isn't there is empty

    std::map<HostHandle, Window> windows_{{0, {}}};
    HostHandle last_ = 0;
};

} // namespace larkspin
