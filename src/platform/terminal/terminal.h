// The terminal front end, put together: a styled room with a line to type in where both ends
// are a terminal, a protocol for scripts where the output isn't one.
#pragma once

#include "platform/terminal/line_editor.h"
#include "platform/terminal/line_reader.h"
#include "platform/terminal/terminal_dialogs.h"
#include "platform/terminal/terminal_input.h"
#include "platform/terminal/terminal_room.h"
#include "platform/terminal/terminal_screen.h"

#include <optional>
#include <string>

namespace larkspin {

class Terminal {
public:
    Terminal(PollLoop& loop, const std::string& screenName);

    // From now on lines are taken and said in the room. `/quit` and the end of the input call
    // `quit`.
    void open(Task quit);

    // Gives the terminal back, before the process ends.
    void close();

    TerminalScreen screen;
    TerminalInput input;
    TerminalRoom room;
    TerminalDialogs dialogs;

private:
    std::optional<LineEditor> editor_;
    std::optional<LineReader> reader_;
};

} // namespace larkspin
