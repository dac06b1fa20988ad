// The terminal front end, put together: a styled screen with a line to type in where both ends
// are a terminal, a protocol for scripts where the output isn't one; dialogs, the tray and windows
// on it; and a room of the owner's own.
#pragma once

#include "host/own_room.h"
#include "platform/posix/line_history.h"
#include "platform/terminal/line_editor.h"
#include "platform/terminal/line_reader.h"
#include "platform/terminal/queued_output.h"
#include "platform/terminal/terminal_commands.h"
#include "platform/terminal/terminal_desktop.h"
#include "platform/terminal/terminal_dialogs.h"
#include "platform/terminal/terminal_input.h"
#include "platform/terminal/terminal_screen.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class Terminal {
public:
    // Lines said in the room come in through `lines`.
    Terminal(PollLoop& loop, ChatLines& lines, const std::string& screenName,
             TerminalDialogs::ReadPath readPath);

    // What Tab makes of a line that is being typed.
    void completeBy(LineEditor::Complete complete);

    // Keeps the typed lines for the next run, in this file.
    void keepHistory(Files& files, const std::string& path);

    // From now on lines are taken: said in the room, or done by the terminal itself, which works
    // these windows. `/quit` and the end of the input call `quit`.
    void open(std::vector<Window*> windows, Task quit);

    // Gives the terminal back, before the process ends.
    void close();

private:
    QueuedOutput output_, errors_;
    TerminalInput input_;

public:
    TerminalScreen screen;
    TerminalDialogs dialogs;
    TerminalDesktop desktop;
    OwnRoom room;

private:
    void take(const std::string& line);
    void showChoices(const Completion& completion);

    TerminalCommands commands_;
    std::unique_ptr<LineEditor> editor_;
    std::optional<LineHistory> history_;
    std::optional<LineReader> reader_;
};

} // namespace larkspin
