#include "support/pretend_windows.h"

#include "host/window_tree/window_names.h"

#include <algorithm>

namespace larkspin {

// A row's record: at 28 the pointer, which points to 32, so that the name stands at 38.
static constexpr std::uint64_t recordSize = 64, listSize = recordSize * 0x10000;

HostHandle PretendWindows::add(HostHandle parent, const std::string& className,
                               const std::string& text) {
    windows_[++last_] = {.parent = parent, .className = className, .text = text};
    windows_[parent].children.push_back(last_);
    return last_;
}

void PretendWindows::remove(HostHandle window) {
    if (window == 0 || !has(window))
        return;
    while (!windows_[window].children.empty())
        remove(windows_[window].children.back());
    std::erase(windows_[windows_[window].parent].children, window);
    windows_.erase(window);
}

PretendWindows::Window& PretendWindows::reach(HostHandle window) {
    if (++calls == vanishAt)
        windows_ = {{0, {}}};
    static Window none;
    none = {};
    return has(window) ? windows_[window] : none;
}

HostHandle PretendWindows::findWindow(const std::string& className) {
    return findChild(0, 0, className);
}

HostHandle PretendWindows::findWindow(const std::string& className, const std::string& caption) {
    HostHandle found = findChild(0, 0, className);
    while (found != 0 && windows_[found].text != caption)
        found = findChild(0, found, className);
    return found;
}

HostHandle PretendWindows::findChild(HostHandle of, HostHandle after,
                                     const std::string& className) {
    bool isBehind = after == 0;
    for (const HostHandle child : reach(of).children) {
        if (isBehind && windows_[child].className == className)
            return child;
        isBehind = isBehind || child == after;
    }
    return noHandle;
}

std::int64_t PretendWindows::send(HostHandle window, unsigned message, std::uint64_t wParam,
                                  std::int64_t) {
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

void PretendWindows::sendText(HostHandle window, unsigned message, const std::string& text) {
    if (message == window::setText)
        reach(window).text = text;
}

std::string PretendWindows::readText(HostHandle window, unsigned message, std::size_t size) {
    return message == window::getText ? reach(window).text.substr(0, size - 1) : "";
}

void PretendWindows::post(HostHandle window, unsigned message, std::uint64_t wParam,
                          std::int64_t lParam) {
    if (message != window::close) {
        send(window, message, wParam, lParam);
    } else if (has(window)) {
        closed.push_back(window);
        remove(window);
    }
}

ProcessHandle PretendWindows::openProcess(std::uint32_t process, std::uint32_t access) {
    if (process != 77 || access != window::mayReadMemory || !mayBeRead)
        return 0;
    ++openProcesses;
    return process;
}

std::optional<std::string> PretendWindows::readMemory(ProcessHandle, std::uint64_t address,
                                                      std::size_t size) {
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

std::optional<RegistryValue> PretendWindows::registryValue(const std::string& key,
                                                           const std::string& name) {
    const auto found = registry.find(key + "|" + name);
    return found == registry.end() ? std::nullopt : std::optional(found->second);
}

} // namespace larkspin
