// Takes a password on a terminal, by the line editor, or as a script's next line. A terminal that
// shows by itself what is typed is told not to meanwhile.
#pragma once

#include "irc/client/password_prompt.h"

namespace larkspin {

class LineEditor;
class TerminalInput;
class TerminalScreen;

class TerminalPassword : public PasswordPrompt {
public:
    TerminalPassword(TerminalScreen& screen, TerminalInput& input)
        : screen_(screen), input_(input) {}

    // From now on the editor takes what is typed. It must live on.
    void editBy(LineEditor& editor) { editor_ = &editor; }

    void ask(const std::string& prompt, std::function<void(std::string)> answered) override;
    void dismiss() override;

private:
    void showTyped(bool shows);

    TerminalScreen& screen_;
    TerminalInput& input_;
    LineEditor* editor_ = nullptr;
    bool isHidden_ = false; // what is typed
};

} // namespace larkspin
