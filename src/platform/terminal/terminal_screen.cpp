#include "platform/terminal/terminal_screen.h"

#include "platform/terminal/markup.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

std::string onOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char byte : text) {
        if (byte == '\n')
            line += "\\n";
        else
            line += byte;
    }
    return line;
}

} // namespace

void TerminalScreen::showLine(const std::string& speaker, const std::string& text) {
    if (form_ == Form::protocol)
        put(descriptor_, onOneLine(speaker) + ": " + onOneLine(text) + '\n');
    else
        put(descriptor_, shownMarkup(speaker + ": ") + shownMarkup(text) + '\n');
}

void TerminalScreen::showEvent(std::string_view head, const std::string& text) {
    const std::string start = std::string(head) + ' ';
    if (form_ == Form::protocol)
        put(descriptor_, start + onOneLine(text) + '\n');
    else
        put(descriptor_, shownMarkup("<b>" + start + "</b>" + text) + '\n');
}

void TerminalScreen::note(const std::string& line) {
    put(STDERR_FILENO, line + '\n');
}

void TerminalScreen::aroundTypedLine(Task hide, Task show) {
    hide_ = std::move(hide);
    show_ = std::move(show);
}

// A reader that has gone is no reason to stop: the music plays on.
void TerminalScreen::put(int descriptor, const std::string& line) {
    hide_();
    for (std::size_t at = 0; at < line.size();) {
        const ssize_t written = ::write(descriptor, line.data() + at, line.size() - at);
        if (written < 0 && errno != EINTR)
            break;
        at += static_cast<std::size_t>(written < 0 ? 0 : written);
    }
    show_();
}

} // namespace larkspin
