// Takes a password as the next line. A terminal, which shows by itself what is typed, is told not
// to meanwhile.
#pragma once

#include "irc/client/password_prompt.h"

namespace larkspin {

class TerminalInput;
class TerminalScreen;

class TerminalPassword : public PasswordPrompt {
public:
    TerminalPassword(TerminalScreen& screen, TerminalInput& input)
        : screen_(screen), input_(input) {}

    void ask(const std::string& prompt, std::function<void(std::string)> answered) override;
    void dismiss() override;

private:
    void showTyped(bool shows);

    TerminalScreen& screen_;
    TerminalInput& input_;
    bool isHidden_ = false; // what is typed
};

} // namespace larkspin
