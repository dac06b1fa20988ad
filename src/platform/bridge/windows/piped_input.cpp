#include "platform/bridge/windows/piped_input.h"

namespace larkspin::bridge {

PipedInput::PipedInput()
    : filled_(CreateEventA(nullptr, FALSE, FALSE, nullptr)),
      taken_(CreateEventA(nullptr, FALSE, FALSE, nullptr)) {
    CloseHandle(CreateThread(nullptr, 0, run, this, 0, nullptr));
}

DWORD WINAPI PipedInput::run(void* self) {
    static_cast<PipedInput*>(self)->read();
    return 0;
}

void PipedInput::read() {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    do {
        if (ReadFile(input, bytes_.data(), static_cast<DWORD>(bytes_.size()), &size_, nullptr) == 0)
            size_ = 0;
        SetEvent(filled_);
        WaitForSingleObject(taken_, INFINITE);
    } while (size_ > 0);
}

std::optional<std::string_view> PipedInput::wait(unsigned milliseconds) {
    if (isHeld_)
        SetEvent(taken_);
    isHeld_ = WaitForSingleObject(filled_, milliseconds) == WAIT_OBJECT_0;
    if (!isHeld_)
        return std::nullopt;
    return std::string_view(bytes_.data(), size_);
}

} // namespace larkspin::bridge
