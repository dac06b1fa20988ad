// A window manager with nothing behind it: a tree of windows that a test builds and takes apart.
// What a pressed button or an entered text brings about is the business of whoever derives from it.
#pragma once

#include "host/window_tree/window_calls.h"
#include "host/window_tree/window_names.h"

#include <algorithm>
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
    HostHandle add(HostHandle parent, const std::string& className, const std::string& text = {}) {
        windows_[++last_] = {.parent = parent, .className = className, .text = text};
        windows_[parent].children.push_back(last_);
        return last_;
    }
    void remove(HostHandle window) { // with all that is in it
        if (window == 0 || !has(window))
            return;
        while (!windows_[window].children.empty())
            remove(windows_[window].children.back());
        std::erase(windows_[windows_[window].parent].children, window);
        windows_.erase(window);
    }
    bool has(HostHandle window) const { return windows_.contains(window); }
    Window& operator[](HostHandle window) { return windows_[window]; }

    HostHandle findWindow(const std::string& className) override {
        return findChild(0, 0, className);
    }
    HostHandle findWindow(const std::string& className, const std::string& caption) override {
        HostHandle found = findWindow(className);
        while (found != 0 && windows_[found].text != caption)
            found = findChild(0, found, className);
        return found;
    }
    HostHandle findChild(HostHandle of, HostHandle after, const std::string& className) override {
        bool isAfter = after == 0;
        for (const HostHandle child : reach(of).children) {
            if (isAfter && windows_[child].className == className)
                return child;
            isAfter = isAfter || child == after;
        }
        return noHandle;
    }
    std::string caption(HostHandle window) override { return reach(window).text; }
    std::int64_t send(HostHandle window, unsigned message, std::uint64_t wParam,
                      std::int64_t) override {
        Window& at = reach(window);
        const bool isSpace = wParam == window::spaceKey;
        if (message == window::getTextLength)
            return static_cast<std::int64_t>(at.text.size());
        if (message == window::rowCount)
            return at.rows ? static_cast<std::int64_t>(at.rows->size()) : -1;
        if (message == window::rowData)
            return static_cast<std::int64_t>(window * listSize + wParam * recordSize);
        if (message == window::setCurrentRow)
            at.row = wParam;
        if (message == window::leftButtonDown || (message == window::keyDown && isSpace))
            at.isHeld = true;
        if (message == window::keyUp && isSpace && std::exchange(at.isHeld, false))
            pressed(window);
        else if (message == window::character && wParam == window::returnKey && has(window))
            entered(window);
        return 0;
    }
    void sendText(HostHandle window, unsigned message, const std::string& text) override {
        if (message == window::setText)
            reach(window).text = text;
    }
    std::string readText(HostHandle window, unsigned message, std::size_t size) override {
        return message == window::getText ? reach(window).text.substr(0, size - 1) : "";
    }
    void post(HostHandle window, unsigned message, std::uint64_t wParam,
              std::int64_t lParam) override {
        if (message != window::close) {
            send(window, message, wParam, lParam);
        } else if (has(window)) {
            closed.push_back(window);
            remove(window);
        }
    }
    void show(HostHandle window, int command) override { shown.emplace_back(window, command); }
    int visible(HostHandle window) override { return reach(window).parent != 0; }
    std::uint32_t processOf(HostHandle window) override { return reach(window).parent ? 77 : 0; }
    ProcessHandle openProcess(std::uint32_t process, std::uint32_t access) override {
        if (process != 77 || access != window::mayReadMemory || !mayBeRead)
            return 0;
        ++openProcesses;
        return process;
    }
    std::optional<std::string> readMemory(ProcessHandle, std::uint64_t address,
                                          std::size_t size) override {
        const Texts* rows = reach(address / listSize).rows;
        const std::uint64_t row = address % listSize / recordSize, at = address % recordSize;
        if (!rows || row >= rows->size() || row == unreadableRow)
            return std::nullopt;
        std::string record(recordSize, '?');
        for (std::uint64_t byte = 0; byte < 4; ++byte)
            record[28 + byte] = static_cast<char>((address - at + 32) >> 8 * byte);
        std::string name = rows->at(row);
        name.resize(16, '\0');
        return record.replace(38, 16, name).substr(at, size);
    }
    void closeProcess(ProcessHandle) override { --openProcesses; }
    std::optional<RegistryValue> registryValue(const std::string& key,
                                               const std::string& name) override {
        const auto found = registry.find(key + "|" + name);
        return found == registry.end() ? std::nullopt : std::optional(found->second);
    }
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
    // A row's record: at 28 the pointer, which points to 32, so that the name stands at 38.
    static constexpr std::uint64_t recordSize = 64, listSize = recordSize * 0x10000;

    Window& reach(HostHandle window) { // one that isn't there is empty
        if (++calls == vanishAt)
            windows_ = {{0, {}}};
        none_ = {};
        return has(window) ? windows_[window] : none_;
    }

    std::map<HostHandle, Window> windows_{{0, {}}};
    Window none_;
    HostHandle last_ = 0;
};

} // namespace larkspin
