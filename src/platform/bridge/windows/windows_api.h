// The system's own header, and what its handles are to the program.
#pragma once

#include <windows.h>

#include "host/window_tree/window_calls.h"

#include <cstdint>

namespace larkspin::bridge {

inline HWND windowOf(HostHandle handle) {
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(handle));
}

inline HostHandle handleOf(HWND window) {
    return static_cast<HostHandle>(reinterpret_cast<std::uintptr_t>(window));
}

} // namespace larkspin::bridge
