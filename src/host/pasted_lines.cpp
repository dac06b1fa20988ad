#include "host/pasted_lines.h"

#include "text/number.h"
#include "text/utf8.h"

namespace larkspin {

bool endsLine(char32_t code) {
    constexpr char32_t lineSeparator = 0x2028, paragraphSeparator = 0x2029;
    return code == '\n' || code == '\r' || code == lineSeparator || code == paragraphSeparator;
}

PastedLines pastedLines(std::string_view text, std::size_t mostCharacters) {
    PastedLines pasted;
    const auto take = [&](std::string_view line) {
        if (line.find_first_not_of(" \t") == line.npos)
            return;
        if (pasted.lines.size() < mostPastedLines)
            pasted.lines.emplace_back(line.substr(0, prefixLength(line, mostCharacters)));
        else
            ++pasted.leftOut;
    };
    std::string_view rest = text;
    std::size_t length = 0; // of the line that `rest` begins with
    while (length < rest.size()) {
        const Character next = firstCharacter(rest.substr(length));
        if (!next.valid || !endsLine(next.code)) {
            length += next.length;
            continue;
        }
        take(rest.substr(0, length));
        rest.remove_prefix(length + next.length);
        length = 0;
    }
    take(rest);
    return pasted;
}

std::string questionOf(const PastedLines& pasted) {
    const int count = static_cast<int>(pasted.lines.size());
    if (pasted.leftOut == 0)
        return "say " + counted(count, "line") + '?';
    return "say the first " + std::to_string(count) + " of " +
           counted(count + pasted.leftOut, "line") + '?';
}

} // namespace larkspin
