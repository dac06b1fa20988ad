#include "platform/terminal/terminal_screen.h"

#include "chat/markup.h"
#include "platform/terminal/terminal_text.h"
#include "text/line_breaks.h"
#include "text/number.h"
#include "text/stand_ins.h"

#include <utility>

namespace larkspin {

namespace {

std::string protocolText(std::string_view text) {
    return breaksEscaped(asSeen(text));
}

std::string dimmed(const std::string& stamp) {
    return stamp.empty() ? "" : "\x1b[2m" + stamp + "\x1b[0m ";
}

} // namespace

TerminalScreen::TerminalScreen(QueuedOutput& output, QueuedOutput& notes, Form form)
    : output_(output), notes_(notes), form_(form) {
    output_.afterDrops([this](int count) {
        if (count > 0)
            tell(counted(count, "line was", "lines were") + " dropped here, since nobody read on");
    });
}

void TerminalScreen::showLine(const std::string& name, const std::string& text, Speaker speaker,
                              const std::string& stamp) {
    if (form_ == Form::protocol)
        put(output_, protocolText(name) + ": " + protocolText(asSeenInMarkup(text)) + '\n',
            speaker);
    else
        put(output_, dimmed(stamp) + shownName(name) + ": " + shownMarkup(text) + '\n', speaker);
}

void TerminalScreen::show(std::string_view head, const std::string& text) {
    before_();
    const std::string bracketed = '[' + std::string(head) + "] ";
    if (form_ == Form::protocol)
        put(output_, bracketed + protocolText(text) + '\n');
    else
        put(output_, "\x1b[1m" + bracketed + "\x1b[0m" + shownText(withoutGaps(text)) + '\n');
}

// The text is always shown on one line, since others choose the names in it.
void TerminalScreen::showRoom(const std::string& text, Speaker speaker, const std::string& stamp) {
    const std::string head = "[room] ";
    if (form_ == Form::protocol)
        put(output_, head + protocolText(text) + '\n', speaker);
    else
        put(output_, dimmed(stamp) + "\x1b[2m" + head + shownLine(text) + "\x1b[0m\n", speaker);
}

void TerminalScreen::note(const std::string& line) {
    put(notes_, shownText(line) + '\n');
}

void TerminalScreen::put(QueuedOutput& output, const std::string& line, Speaker speaker) {
    if (speaker == Speaker::owner)
        output.put(line);
    else
        output.putOfOthers(line);
}

} // namespace larkspin
