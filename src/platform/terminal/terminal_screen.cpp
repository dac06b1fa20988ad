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

constexpr std::string_view bold = "\x1b[1m", dim = "\x1b[2m", off = "\x1b[0m";

std::string withoutStyles(std::string_view markup) {
    std::string shown;
    for (const MarkupPiece& piece : readMarkup(markup))
        shown += shownText(piece.text);
    return shown;
}

} // namespace

TerminalScreen::TerminalScreen(QueuedOutput& output, QueuedOutput& notes, Form form)
    : output_(output), notes_(notes), form_(form) {
    output_.afterDrops([this](int count) {
        if (count > 0)
            tell(counted(count, "line was", "lines were") + " dropped here, since nobody read on");
    });
}

std::string TerminalScreen::styled(std::string_view style, const std::string& text) const {
    if (form_ != Form::styled)
        return text;
    return std::string(style).append(text).append(off);
}

std::string TerminalScreen::stamped(const std::string& stamp) const {
    return stamp.empty() ? "" : styled(dim, stamp) + ' ';
}

void TerminalScreen::showLine(const std::string& name, const std::string& text, Speaker speaker,
                              const std::string& stamp) {
    if (form_ == Form::protocol)
        put(output_, protocolText(name) + ": " + protocolText(asSeenInMarkup(text)) + '\n',
            speaker);
    else
        put(output_,
            stamped(stamp) + shownName(name) + ": " +
                (form_ == Form::styled ? shownMarkup(text) : withoutStyles(text)) + '\n',
            speaker);
}

void TerminalScreen::show(std::string_view head, const std::string& text) {
    before_();
    const std::string bracketed = '[' + std::string(head) + "] ";
    if (form_ == Form::protocol)
        put(output_, bracketed + protocolText(text) + '\n');
    else
        put(output_, styled(bold, bracketed) + shownText(withoutGaps(text)) + '\n');
}

// The text is always shown on one line, since others choose the names in it.
void TerminalScreen::showRoom(const std::string& text, Speaker speaker, const std::string& stamp) {
    const std::string head = "[room] ";
    if (form_ == Form::protocol)
        put(output_, head + protocolText(text) + '\n', speaker);
    else
        put(output_, stamped(stamp) + styled(dim, head + shownLine(text)) + '\n', speaker);
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
