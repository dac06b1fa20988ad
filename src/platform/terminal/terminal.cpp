#include "platform/terminal/terminal.h"

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

// What a line is given to do its work undisturbed, so that several lines pasted at once run one
// after the other, and a recital can still be broken off.
constexpr Nanoseconds ownersPatience = std::chrono::milliseconds(300);

bool inputIsTerminal() {
    return ::isatty(STDIN_FILENO) == 1;
}

bool outputIsTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

} // namespace

Terminal::Terminal(PollLoop& loop, const std::string& screenName)
    : screen(STDOUT_FILENO,
             outputIsTerminal() ? TerminalScreen::Form::styled : TerminalScreen::Form::protocol),
      input(loop, inputIsTerminal() ? ownersPatience : TerminalInput::never),
      room(loop, screen, screenName), dialogs(screen, input) {
    std::signal(SIGPIPE, SIG_IGN);
    if (!inputIsTerminal() || !outputIsTerminal()) {
        reader_.emplace(loop, input, STDIN_FILENO);
        return;
    }
    // The editor thinks in characters; without a locale that knows them, in Debian's own.
    if (!std::setlocale(LC_CTYPE, "") || MB_CUR_MAX == 1)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    editor_.emplace(loop, input, screenName + ": ");
    screen.aroundTypedLine([this] { editor_->hide(); }, [this] { editor_->show(); });
    loop.onSignals({SIGWINCH, SIGCONT}, [this] { editor_->drawAnew(); });
}

void Terminal::open(Task quit) {
    input.open(
        [this, quit](const std::string& line) {
            if (line == "/quit")
                quit();
            else
                room.typed(line, editor_.has_value());
        },
        quit);
}

void Terminal::close() {
    if (editor_)
        editor_->close();
}

} // namespace larkspin
