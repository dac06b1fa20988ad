// Checks of what the program says, for tests that read like a chat.
#pragma once

#include "support/virtual_machine.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace larkspin {

// A talk with the program: what the owner says, one line or each of several; what each of them
// brings about at once, as `answer` tells it; and how long he then waits.
struct Turn {
    using Seconds = std::chrono::duration<double>;
    Turn(const char* line, std::string said, Seconds time = 0s)
        : Turn(Lines{line}, std::move(said), time) {}
    Turn(Lines several, std::string said, Seconds time = 0s)
        : lines(std::move(several)), answer(std::move(said)), wait(time) {}

    Lines lines;
    std::string answer;
    Seconds wait;
};
inline void converse(VirtualMachine& machine, const std::vector<Turn>& turns) {
    for (const Turn& turn : turns) {
        for (const std::string& line : turn.lines) {
            SCOPED_TRACE(line);
            EXPECT_EQ(machine.answer(line), turn.answer);
        }
        machine.advance(turn.wait);
    }
}

#define EXPECT_SAID(machine, text) EXPECT_EQ((machine).said(), (text))

} // namespace larkspin
