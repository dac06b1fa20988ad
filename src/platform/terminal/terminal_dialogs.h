// Boxes as lines on the screen. A question is answered by the next line of the input.
#pragma once

#include "shell/dialogs.h"

namespace larkspin {

class TerminalInput;
class TerminalScreen;

class TerminalDialogs : public Dialogs {
public:
    TerminalDialogs(TerminalScreen& screen, TerminalInput& input)
        : screen_(screen), input_(input) {}

    void box(const std::string& text) override;
    void stopBox(const std::string& text) override;

    // Yes is a line that opens with y. Everything else is No, and so is ten minutes of silence.
    bool ask(const std::string& question) override;

private:
    TerminalScreen& screen_;
    TerminalInput& input_;
};

} // namespace larkspin
