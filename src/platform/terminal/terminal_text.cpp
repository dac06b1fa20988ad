#include "platform/terminal/terminal_text.h"

#include "chat/markup.h"
#include "text/parts.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::string_view everythingOff = "\x1b[0m";
constexpr std::string_view setIn = "\n  ";

void appendSwitch(std::string& shown, bool before, bool now, std::string_view on,
                  std::string_view off) {
    if (before != now)
        shown += now ? on : off;
}

void appendChange(std::string& shown, const MarkupStyle& before, const MarkupStyle& now) {
    appendSwitch(shown, before.bold, now.bold, "\x1b[1m", "\x1b[22m");
    appendSwitch(shown, before.underlined, now.underlined, "\x1b[4m", "\x1b[24m");
    appendSwitch(shown, before.italic, now.italic, "\x1b[3m", "\x1b[23m");
    if (before.color == now.color)
        return;
    if (!now.color) {
        shown += "\x1b[39m";
        return;
    }
    shown += "\x1b[38;2;" + std::to_string(*now.color >> 16) + ';' +
             std::to_string(*now.color >> 8 & 0xFF) + ';' + std::to_string(*now.color & 0xFF) + 'm';
}

} // namespace

std::string shownName(std::string_view name) {
    return visibleName(name);
}

std::string shownLine(std::string_view text) {
    return visibleText(text, replacementCharacter);
}

std::string shownText(std::string_view text) {
    return visibleText(text, setIn);
}

std::string shownMarkup(std::string_view line) {
    std::string shown;
    MarkupStyle style;
    for (const MarkupPiece& piece : readMarkup(line)) {
        appendChange(shown, style, piece.style);
        style = piece.style;
        shown += shownText(piece.text);
    }
    return shown.append(everythingOff);
}

std::string withoutGaps(std::string_view text) {
    constexpr std::size_t gap = 10, left = 2;
    std::string closed;
    while (!text.empty()) {
        const std::size_t blanks = std::min(text.find_first_not_of(' '), text.size());
        closed.append(blanks < gap ? blanks : left, ' ');
        text.remove_prefix(blanks);
        const std::string_view word = partedAt(text, ' ').head;
        closed += word;
        text.remove_prefix(word.size());
    }
    return closed;
}

} // namespace larkspin
