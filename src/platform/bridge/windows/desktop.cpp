#include "platform/bridge/windows/desktop.h"

#include <string>

namespace larkspin::bridge {

namespace {

// Wine notes there why it has found no display, in words; below it what the desktop's property
// names. Windows itself has neither.
constexpr char displayProperty[] = "__wine_display_device_guid";
constexpr char displayKeys[] = "System\\CurrentControlSet\\Control\\Video\\{";
constexpr char faultValue[] = "DriverError";

bool hasDisplayFault(HWND desktop) {
    const auto atom = reinterpret_cast<ULONG_PTR>(GetPropA(desktop, displayProperty));
    char name[64] = {};
    if (atom == 0 || GlobalGetAtomNameA(static_cast<ATOM>(atom), name, sizeof name) == 0)
        return false;
    const std::string key = std::string(displayKeys) + name + "}\\0000";
    HKEY opened = nullptr;
    if (RegOpenKeyA(HKEY_LOCAL_MACHINE, key.c_str(), &opened) != ERROR_SUCCESS)
        return false;
    const bool isThere =
        RegQueryValueExA(opened, faultValue, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    RegCloseKey(opened);
    return isThere;
}

} // namespace

Desktop::Desktop() : isSeen_(!hasDisplayFault(GetDesktopWindow())) {
    DWORD process = 0;
    GetWindowThreadProcessId(GetDesktopWindow(), &process);
    process_ = OpenProcess(SYNCHRONIZE, FALSE, process);
}

bool Desktop::isGone() const {
    return process_ != nullptr && WaitForSingleObject(process_, 0) == WAIT_OBJECT_0;
}

} // namespace larkspin::bridge
