// A window manager with nothing behind it: a tree of windows that a test builds and takes apart.
// What a pressed button or an entered text brings about is the business of whoever derives from it.
#pragma once

#include "host/window_calls.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class PretendWindows : public WindowCalls {
public:
    struct Window {
        HostHandle parent;
        std::string className, text; // the text is the caption as well
        std::vector<HostHandle> children = {};
        bool isVisible = true, isHeld = false;
        const std::vector<std::string>* rows = nullptr; // of a list; they outlive it
        int row = -1;                                   // the selected one
    };

    // Behind the windows that are there. Parent 0 is the desktop.
    HostHandle add(HostHandle parent, const std::string& className, const std::string& text = {});
    void remove(HostHandle window); // with all that is in it
    void raise(HostHandle window);  // in front of its siblings
    bool has(HostHandle window) const { return windows_.contains(window); }
    Window& operator[](HostHandle window) { return windows_.at(window); }
    void removeAll();

    HostHandle findWindow(const std::string& className) override;
    HostHandle findWindow(const std::string& className, const std::string& caption) override;
    HostHandle findChild(HostHandle parent, HostHandle after,
                         const std::string& className) override;
    std::string caption(HostHandle window) override;
    std::int64_t send(HostHandle window, unsigned message, std::uint64_t wParam,
                      std::int64_t lParam) override;
    void sendText(HostHandle window, unsigned message, const std::string& text) override;
    std::string readText(HostHandle window, unsigned message, std::size_t size) override;
    void post(HostHandle window, unsigned message, std::uint64_t wParam,
              std::int64_t lParam) override;
    void show(HostHandle window, int command) override;
    int visible(HostHandle window) override;
    std::uint32_t processOf(HostHandle window) override;
    ProcessHandle openProcess(std::uint32_t process, std::uint32_t access) override;
    std::optional<std::string> readMemory(ProcessHandle process, std::uint64_t address,
                                          std::size_t size) override;
    void closeProcess(ProcessHandle process) override;
    std::optional<RegistryValue> registryValue(const std::string& key,
                                               const std::string& name) override;
    void activate(const std::string& caption) override;
    void sendKeys(const std::string& text) override;

    int calls = 0;
    int vanishAt = 0; // the call, counted from 1, before which all windows go
    bool mayBeRead = true;
    int unreadableRow = -1;
    int openProcesses = 0;
    std::map<std::string, RegistryValue> registry; // by key, "|" and name
    std::vector<std::string> keys, activated;
    std::vector<std::pair<HostHandle, int>> shown; // the show commands
    std::vector<HostHandle> closed;                // what was told to

protected:
    virtual void pressed(HostHandle) {}
    virtual void entered(HostHandle) {} // a text, by the return key

private:
    Window* find(HostHandle window);
    Window* reach(HostHandle window); // the same, as the next call
    void press(HostHandle window, unsigned message, std::uint64_t key);

    std::map<HostHandle, Window> windows_;
    std::vector<HostHandle> desktop_;
    HostHandle last_ = 0;
};

} // namespace larkspin
