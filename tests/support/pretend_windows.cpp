#include "support/pretend_windows.h"

#include "host/window_names.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::uint32_t hostProcess = 77;

// A row's record: the pointer, then what it points to.
constexpr std::size_t recordSize = 64, pointerAt = 28, pointedTo = 32, nameAt = pointedTo + 6;

std::uint64_t recordOf(HostHandle list, std::uint64_t row) {
    return list << 22 | row * recordSize; // a list has at most 65,536 rows
}

std::string bytesOf(std::uint64_t number) {
    std::string bytes;
    for (int at = 0; at < 4; ++at)
        bytes += static_cast<char>(number >> 8 * at);
    return bytes;
}

std::string nameField(const std::string& name) {
    std::string field = name.substr(0, 16);
    field.resize(16, '\0');
    return field;
}

} // namespace

HostHandle PretendWindows::add(HostHandle parent, const std::string& className,
                               const std::string& text) {
    windows_.emplace(++last_, Window{.parent = parent, .className = className, .text = text});
    (parent ? windows_.at(parent).children : desktop_).push_back(last_);
    return last_;
}

void PretendWindows::remove(HostHandle window) {
    if (!has(window))
        return;
    while (!windows_.at(window).children.empty())
        remove(windows_.at(window).children.back());
    const HostHandle parent = windows_.at(window).parent;
    std::erase(parent ? windows_.at(parent).children : desktop_, window);
    windows_.erase(window);
}

void PretendWindows::raise(HostHandle window) {
    auto& siblings = windows_.at(windows_.at(window).parent).children;
    std::rotate(siblings.begin(), std::find(siblings.begin(), siblings.end(), window),
                siblings.end());
}

void PretendWindows::removeAll() {
    windows_.clear();
    desktop_.clear();
}

PretendWindows::Window* PretendWindows::find(HostHandle window) {
    const auto found = windows_.find(window);
    return found == windows_.end() ? nullptr : &found->second;
}

PretendWindows::Window* PretendWindows::reach(HostHandle window) {
    if (++calls == vanishAt)
        removeAll();
    return find(window);
}

HostHandle PretendWindows::findWindow(const std::string& className) {
    reach(0);
    for (const HostHandle window : desktop_)
        if (windows_.at(window).className == className)
            return window;
    return noHandle;
}

HostHandle PretendWindows::findWindow(const std::string& className, const std::string& caption) {
    reach(0);
    for (const HostHandle window : desktop_)
        if (windows_.at(window).className == className && windows_.at(window).text == caption)
            return window;
    return noHandle;
}

HostHandle PretendWindows::findChild(HostHandle parent, HostHandle after,
                                     const std::string& className) {
    const Window* of = reach(parent);
    if (!of)
        return noHandle;
    auto child = of->children.begin();
    if (after) {
        child = std::find(child, of->children.end(), after);
        if (child == of->children.end())
            return noHandle;
        ++child;
    }
    const auto isWanted = [&](HostHandle one) { return windows_.at(one).className == className; };
    child = std::find_if(child, of->children.end(), isWanted);
    return child == of->children.end() ? noHandle : *child;
}

std::string PretendWindows::caption(HostHandle window) {
    const Window* found = reach(window);
    return found ? found->text : std::string();
}

// The press may take away any window.
void PretendWindows::press(HostHandle window, unsigned message, std::uint64_t key) {
    Window& held = windows_.at(window);
    if (message == window::leftButtonDown ||
        (message == window::keyDown && key == window::spaceKey))
        held.isHeld = true;
    else if (message == window::keyUp && key == window::spaceKey &&
             std::exchange(held.isHeld, false))
        pressed(window);
}

std::int64_t PretendWindows::send(HostHandle window, unsigned message, std::uint64_t wParam,
                                  std::int64_t) {
    Window* found = reach(window);
    if (!found)
        return 0;
    switch (message) {
    case window::getTextLength:
        return static_cast<std::int64_t>(found->text.size());
    case window::rowCount:
        return found->rows ? static_cast<std::int64_t>(found->rows->size()) : -1;
    case window::rowData:
        return static_cast<std::int64_t>(recordOf(window, wParam));
    case window::setCurrentRow:
        found->row = static_cast<int>(wParam);
        break;
    case window::character:
        if (wParam == window::returnKey)
            entered(window);
        break;
    default:
        press(window, message, wParam);
    }
    return 0;
}

void PretendWindows::sendText(HostHandle window, unsigned message, const std::string& text) {
    if (Window* found = reach(window); found && message == window::setText)
        found->text = text;
}

std::string PretendWindows::readText(HostHandle window, unsigned message, std::size_t size) {
    const Window* found = reach(window);
    if (!found || message != window::getText || size == 0)
        return {};
    return found->text.substr(0, size - 1);
}

void PretendWindows::post(HostHandle window, unsigned message, std::uint64_t wParam, std::int64_t) {
    if (!reach(window))
        return;
    press(window, message, wParam);
    if (message == window::close) {
        closed.push_back(window);
        remove(window);
    }
}

void PretendWindows::show(HostHandle window, int command) {
    if (Window* found = reach(window)) {
        found->isVisible = command != 0;
        shown.emplace_back(window, command);
    }
}

int PretendWindows::visible(HostHandle window) {
    const Window* found = reach(window);
    return found && found->isVisible ? 1 : 0;
}

std::uint32_t PretendWindows::processOf(HostHandle window) {
    return reach(window) ? hostProcess : 0;
}

ProcessHandle PretendWindows::openProcess(std::uint32_t process, std::uint32_t access) {
    reach(0);
    if (process != hostProcess || access != window::mayReadMemory || !mayBeRead)
        return 0;
    ++openProcesses;
    return hostProcess;
}

std::optional<std::string> PretendWindows::readMemory(ProcessHandle process, std::uint64_t address,
                                                      std::size_t size) {
    const Window* list = reach(address >> 22);
    const std::uint64_t row = (address & 0x3FFFFF) / recordSize, at = address % recordSize;
    if (process != hostProcess || !list || !list->rows || row >= list->rows->size() ||
        static_cast<int>(row) == unreadableRow)
        return std::nullopt;
    if (at == pointerAt && size == 4)
        return bytesOf(recordOf(address >> 22, row) + pointedTo);
    if (at == nameAt && size == 16)
        return nameField(list->rows->at(row));
    return std::nullopt;
}

void PretendWindows::closeProcess(ProcessHandle) {
    reach(0);
    --openProcesses;
}

std::optional<RegistryValue> PretendWindows::registryValue(const std::string& key,
                                                           const std::string& name) {
    reach(0);
    const auto found = registry.find(key + "|" + name);
    return found == registry.end() ? std::nullopt : std::optional(found->second);
}

void PretendWindows::activate(const std::string& caption) {
    reach(0);
    activated.push_back(caption);
}

void PretendWindows::sendKeys(const std::string& text) {
    reach(0);
    keys.push_back(text);
}

} // namespace larkspin
