#include "platform/terminal/screen/columns.h"

#include "text/characters.h"
#include "text/utf8.h"

#include <clocale>
#include <cwchar>
#include <locale.h>

namespace larkspin {

namespace {

constexpr std::string_view ellipsis = "…";
constexpr char32_t unknownCharacter = 0xFFFD;

// What the C library knows of the character's width, whatever the owner's locale: C.UTF-8 is built
// into it. Negative for what it doesn't know, and for control characters.
int knownWidth(char32_t character) {
    static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t others = ::uselocale(unicode);
    const int width = ::wcwidth(static_cast<wchar_t>(character));
    ::uselocale(others);
    return width;
}

bool isPlain(char32_t character) {
    return character >= U' ' && character < 0x7F;
}

struct Measured {
    std::size_t length; // bytes
    int columns;
};

// The character at the beginning of a text that isn't empty. A byte that is no text is shown as
// one.
Measured firstMeasured(std::string_view text) {
    const Character first = firstCharacter(text);
    return {first.length, first.valid ? columnsOf(first.code) : 1};
}

// What combines with a character that stands before the text.
std::size_t combiningLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size()) {
        const Measured next = firstMeasured(text.substr(length));
        if (next.columns > 0)
            break;
        length += next.length;
    }
    return length;
}

std::size_t withCombining(std::string_view text, std::size_t length) {
    return length + combiningLength(text.substr(length));
}

std::size_t blanksAt(std::string_view text, std::size_t at) {
    const std::size_t after = text.find_first_not_of(' ', at);
    return (after == text.npos ? text.size() : after) - at;
}

// The last place up to `longest` at which a line may break; 0 for none. Blanks in front of the
// first word are no such place.
std::size_t lastBreak(std::string_view text, std::size_t longest) {
    std::size_t found = 0;
    bool hasWord = false, wasWide = false;
    for (std::size_t at = 0; at < text.size();) {
        const Measured next = firstMeasured(text.substr(at));
        const bool isBlank = text[at] == ' ', isWide = next.columns == 2;
        if (at > longest)
            break;
        if (hasWord && (isBlank || isWide || wasWide))
            found = at;
        hasWord = hasWord || !isBlank;
        wasWide = isWide;
        at = withCombining(text, at + next.length);
    }
    return found;
}

std::size_t trimmedEnd(std::string_view text, std::size_t begin, std::size_t end) {
    while (end > begin && text[end - 1] == ' ')
        --end;
    return end;
}

// Whether the first word has room on a line of its own.
bool fitsWhole(std::string_view text, int columns) {
    const std::size_t blanks = blanksAt(text, 0);
    const std::string_view word = text.substr(0, text.find(' ', blanks));
    return lengthIn(word, columns) == word.size();
}

// The end of the line that begins the text; 0 for an empty line before a longer one.
std::size_t lineLength(std::string_view text, int columns, bool mayBeEmpty, int nextColumns) {
    const std::size_t longest = lengthIn(text, columns);
    if (longest == text.size())
        return longest;
    if (const std::size_t at = lastBreak(text, longest); at > 0)
        return at;
    if (mayBeEmpty && fitsWhole(text, nextColumns))
        return 0;
    if (longest > 0)
        return longest;
    return mayBeEmpty && nextColumns > columns
               ? 0
               : withCombining(text, firstMeasured(text).length); // wider than the line
}

} // namespace

char32_t shownInCell(char32_t character) {
    return isControl(character) || knownWidth(character) >= 0 ? character : unknownCharacter;
}

int columnsOf(char32_t character) {
    if (isPlain(character))
        return 1;
    if (isControl(character))
        return 0;
    const int width = knownWidth(character);
    return width < 0 ? 1 : width;
}

int columnsOf(std::string_view visible) {
    int columns = 0;
    while (!visible.empty()) {
        const Measured next = firstMeasured(visible);
        columns += next.columns;
        visible.remove_prefix(next.length);
    }
    return columns;
}

std::size_t lengthIn(std::string_view visible, int columns) {
    std::size_t length = 0;
    while (length < visible.size()) {
        const Measured next = firstMeasured(visible.substr(length));
        if (next.columns > columns)
            break;
        columns -= next.columns;
        length += next.length;
    }
    return length;
}

std::string cutTo(std::string_view visible, int columns) {
    if (columns <= 0)
        return {};
    if (lengthIn(visible, columns) == visible.size())
        return std::string(visible);
    return std::string(visible.substr(0, lengthIn(visible, columns - 1))) + std::string(ellipsis);
}

std::vector<Span> wrapped(std::string_view visible, int firstColumns, int columns) {
    std::vector<Span> lines;
    for (std::size_t begin = 0; begin < visible.size() || lines.empty();) {
        const bool isFirst = lines.empty();
        const int room = isFirst ? firstColumns : columns;
        const std::size_t length =
            lineLength(visible.substr(begin), room, isFirst && firstColumns < columns, columns);
        const std::size_t end = begin + length;
        const bool isLast = end == visible.size();
        lines.push_back({begin, isLast ? end : trimmedEnd(visible, begin, end)});
        begin = end + (isLast || length == 0 ? 0 : blanksAt(visible, end));
    }
    return lines;
}

} // namespace larkspin
