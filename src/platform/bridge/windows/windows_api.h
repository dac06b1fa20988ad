// The system's own header, without most of its macros, and what its handles are to the program.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
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
