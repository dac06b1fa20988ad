#include "platform/bridge/windows/activation.h"

#include "platform/bridge/windows/window_search.h"

namespace larkspin::bridge {

namespace {

DWORD WINAPI bringForward(void* given) {
    const HWND window = static_cast<HWND>(given);
    if (IsIconic(window) != 0)
        ShowWindowAsync(window, SW_RESTORE);
    SetForegroundWindow(window);
    return 0;
}

} // namespace

Activation::~Activation() {
    if (thread_ != nullptr)
        CloseHandle(thread_);
}

bool Activation::isBusy() const {
    return thread_ != nullptr && WaitForSingleObject(thread_, 0) == WAIT_TIMEOUT;
}

void Activation::activate(const std::string& caption, const Deadline& deadline) {
    const HWND window = caption.empty() ? nullptr : topLevelWindow(nullptr, caption, deadline);
    if (window == nullptr || isBusy())
        return;
    if (thread_ != nullptr)
        CloseHandle(thread_);
    thread_ = CreateThread(nullptr, 0, bringForward, window, 0, nullptr);
    if (thread_ != nullptr)
        WaitForSingleObject(thread_, deadline.left());
}

} // namespace larkspin::bridge
