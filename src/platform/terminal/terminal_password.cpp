#include "platform/terminal/terminal_password.h"

#include "platform/terminal/foreground.h"
#include "platform/terminal/terminal_input.h"
#include "platform/terminal/terminal_screen.h"

#include <termios.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

void TerminalPassword::ask(const std::string& prompt, std::function<void(std::string)> answered) {
    showTyped(false);
    screen_.show("password", prompt);
    input_.takeSecret([this, answered = std::move(answered)](const std::string& line) {
        showTyped(true);
        answered(line);
    });
}

void TerminalPassword::dismiss() {
    showTyped(true);
    input_.dropSecret();
}

// A process in the background that touches its terminal's mode is stopped.
void TerminalPassword::showTyped(bool shows) {
    termios mode{};
    if (isHidden_ == !shows || !isInForeground(STDIN_FILENO) ||
        ::tcgetattr(STDIN_FILENO, &mode) != 0)
        return;
    isHidden_ = !shows;
    mode.c_lflag = shows ? mode.c_lflag | ECHO : mode.c_lflag & ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &mode);
}

} // namespace larkspin
