// Bytes from the standard input, read by a thread: a pipe can't be waited for together with other
// things. It reads on only when what it has read is taken, so that a flood waits in the pipe.
#pragma once

#include "platform/bridge/windows/windows_api.h"

#include <array>
#include <optional>
#include <string_view>

namespace larkspin::bridge {

class PipedInput { // there until the program ends, as the thread is
public:
    PipedInput();
    PipedInput(const PipedInput&) = delete;
    PipedInput& operator=(const PipedInput&) = delete;

    // What has come, until the next call; empty at the end of the input. Nothing when nothing came
    // in that time.
    std::optional<std::string_view> wait(unsigned milliseconds);

private:
    static DWORD WINAPI run(void* self);
    void read();

    std::array<char, 65536> bytes_;
    DWORD size_ = 0; // of what is in them; nobody's but the reader's between taken and filled
    HANDLE filled_, taken_;
    bool isHeld_ = false; // what was given last is to be taken
};

} // namespace larkspin::bridge
