// What the owner is shown, line by line: the room and the boxes. For a terminal it is styled;
// for scripts it is a protocol of one event a line, with line breaks inside a text as `\n`.
#pragma once

#include "shell/event_loop.h"

#include <string>
#include <string_view>

namespace larkspin {

class TerminalScreen {
public:
    enum class Form { styled, protocol };

    TerminalScreen(int descriptor, Form form) : descriptor_(descriptor), form_(form) {}

    void showLine(const std::string& speaker, const std::string& text);
    void showBox(const std::string& text) { showEvent("[box]", text); }
    void showStopBox(const std::string& text) { showEvent("[stop]", text); }
    void showQuestion(const std::string& text) { showEvent("[ask]", text); }

    // On standard error, for what belongs to neither.
    void note(const std::string& line);

    // What takes the line that is being typed off the screen and puts it back, so that others
    // come above it.
    void aroundTypedLine(Task hide, Task show);

private:
    void showEvent(std::string_view head, const std::string& text);
    void put(int descriptor, const std::string& line);

    int descriptor_;
    Form form_;
    Task hide_ = [] {}, show_ = [] {};
};

} // namespace larkspin
