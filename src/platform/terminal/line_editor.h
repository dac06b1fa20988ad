// The line that the owner types on a terminal, with the usual keys and a history, at the bottom
// of the screen. Finished lines are brought to the input.
#pragma once

#include "platform/terminal/terminal_input.h"

#include <memory>
#include <string>

namespace larkspin {

class LineEditor {
public:
    // Standard input and output must be a terminal.
    LineEditor(PollLoop& loop, TerminalInput& input, std::string prompt);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    // Take the line off the screen and put it back, for what is to stand above it.
    void hide();
    void show();

    // After the terminal's size or mode has changed under it.
    void drawAnew();

    // Gives the terminal back.
    void close();

private:
    struct Library;

    void keyPressed();
    void prepare();

    PollLoop& loop_;
    TerminalInput& input_;
    std::unique_ptr<Library> library_;
    bool isOpen_ = true;
};

} // namespace larkspin
