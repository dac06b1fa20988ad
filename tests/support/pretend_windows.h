// A window manager with nothing behind it: a tree of windows that a test builds and takes apart.
// What a pressed button or an entered text brings about is the business of whoever derives from it.
#pragma once

#include "host/window_tree/window_calls.h"
#include "host/window_tree/window_names.h"

#include <algorithm>
#include <cstdint>
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

    // The first child of the class; 0 is the desktop.
    HostHandle first(HostHandle of, const std::string& className) {
        for (const HostHandle child : windows_[of].children)
            if (windows_[child].className == className)
                return child;
        return noHandle;
    }

    FoundWindows walk(const WindowWalk& walk) override {
        HostHandle parent = walk.from;
        Window& start = reach(parent);
        for (const std::string& step : walk.path)
            if ((parent = first(parent, step)) == noHandle)
                return {};
        FoundWindows found;
        for (const HostHandle child :
             walk.path.empty() ? start.children : windows_[parent].children)
            if (windows_[child].className == walk.className) {
                found.push_back({.window = child});
                if (walk.tells != WindowWalk::Tells::nothing)
                    found.back().text = windows_[child].text;
                for (const std::string& held : walk.holds)
                    found.back().holds.push_back(first(child, held));
            }
        return found;
    }
    HostHandle findWindow(const std::string& className, const std::string& caption) override {
        for (const HostHandle child : reach(0).children)
            if (windows_[child].className == className && windows_[child].text == caption)
                return child;
        return noHandle;
    }
    std::string caption(HostHandle window) override { return reach(window).text; }
    std::int64_t send(HostHandle window, unsigned message, std::uint64_t wParam,
                      std::int64_t) override {
        Window& at = reach(window);
        const bool isSpace = wParam == window::spaceKey;
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
    std::string text(HostHandle window) override {
        return reach(window).text.substr(0, longestText);
    }
    bool post(HostHandle window, unsigned message, std::uint64_t wParam,
              std::int64_t lParam) override {
        if (message != window::close)
            send(window, message, wParam, lParam);
        if (message != window::close || !has(window))
            return has(window);
        closed.push_back(window);
        remove(window);
        return true;
    }
    void show(HostHandle window, int command) override { shown.emplace_back(window, command); }
    int visible(HostHandle window) override { return reach(window).parent != 0; }
    std::vector<std::string> rows(HostHandle list, const RowRecord& record,
                                  std::size_t most) override {
        const Texts* const all = reach(list).rows;
        if (!all || !mayBeRead || record.pointerAt != 28 || record.nameAt != 6)
            return {};
        Texts fields(all->begin(),
                     all->begin() + static_cast<std::ptrdiff_t>(std::min(most, all->size())));
        for (std::string& field : fields)
            field.resize(record.nameSize, '\0');
        if (unreadableRow < fields.size())
            fields[unreadableRow].clear();
        return fields;
    }
    void watch(const TextWatch& watch, Watching changed) override {
        watched_ = watch;
        changed_ = std::move(changed);
        told_ = {.length = 1};
        look();
    }
    // Tells what has changed of what is watched. To be called from an event of its own.
    void look() {
        const Watching changed = changed_;
        const WatchedText now = changed ? seen() : WatchedText();
        if (changed && std::exchange(told_, now) != now)
            changed(now);
    }
    std::optional<RegistryValue> registryValue(const std::string& key,
                                               const std::string& name) override {
        const auto found = registry.find(key + "|" + name);
        return found == registry.end() ? std::nullopt : std::optional(found->second);
    }
    void activate(const std::string& caption) override { activated.push_back(caption); }
    void sendKeys(const std::string& text) override { keys.push_back(text); }

    int calls = 0, vanishAt = 0; // before the call of that number all windows go
    bool mayBeRead = true;       // the memory, and all but one row in it
    bool hangs = false;          // what is watched
    std::size_t unreadableRow = 1000000;
    std::map<std::string, RegistryValue> registry; // by key, "|" and name
    Texts keys, activated;
    std::vector<std::pair<HostHandle, int>> shown; // the show commands
    std::vector<HostHandle> closed;                // what was told to

protected:
    virtual void pressed(HostHandle) {} // a button, in one of the two ways
    virtual void entered(HostHandle) {} // a text, by the return key

private:
    WatchedText seen() {
        for (const FoundWindow& each : walk(watched_.windows)) {
            if (!each.holdsFirst(watched_.needed))
                continue;
            const std::string& text = windows_[each.holds[watched_.text]].text;
            const HostHandle list = each.holds[watched_.list];
            const Texts* const rows = has(list) ? windows_[list].rows : nullptr;
            return {
                .state = hangs ? WatchedText::State::hangs : WatchedText::State::there,
                .window = each.window,
                .list = list,
                .caption = each.text,
                .length = static_cast<std::uint32_t>(text.size()),
                .end = text.substr(text.size() - std::min<std::size_t>(text.size(), watched_.most)),
                .rows = rows ? static_cast<std::uint32_t>(rows->size()) : 0};
        }
        return {};
    }

    Window& reach(HostHandle window) { // one that isn't there is empty
        if (++calls == vanishAt)
            windows_ = {{0, {}}};
        none_ = {};
        return has(window) ? windows_[window] : none_;
    }

    TextWatch watched_;
    Watching changed_;
    WatchedText told_; // before it is watched, nothing that there is
    std::map<HostHandle, Window> windows_{{0, {}}};
    Window none_;
    HostHandle last_ = 0;
};

} // namespace larkspin
