// Reads lines from a pipe, a file, or a terminal that edits them itself, and brings them to the
// input. It reads on when the input has none left, so that a long script isn't held in memory, and
// only while the terminal isn't another job's.
#pragma once

#include "platform/terminal/terminal_input.h"

#include <string>

namespace larkspin {

class LineReader {
public:
    LineReader(PollLoop& loop, TerminalInput& input, int descriptor);

    // The rest of a longer line is dropped: it must not fill the memory.
    static constexpr std::size_t longestLine = std::size_t{16} << 20; // bytes

private:
    void watch();
    void readOn();
    void take(const char* bytes, std::size_t count);
    void endLine();

    PollLoop& loop_;
    TerminalInput& input_;
    int descriptor_;
    std::string begun_; // of a line whose end hasn't come
    bool hasEnded_ = false;
    TimerId look_ = TimerId::none; // for the terminal, while it is another's
};

} // namespace larkspin
