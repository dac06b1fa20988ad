#include "platform/terminal/markup.h"

#include "text/fold.h"
#include "text/utf8.h"

#include <charconv>
#include <optional>

namespace larkspin {

namespace {

constexpr std::string_view replacementCharacter = "\uFFFD";
constexpr std::string_view everythingOff = "\x1b[0m";

struct Switch {
    std::string_view tag; // in lower case
    std::string_view sequence;
};

constexpr Switch switches[] = {
    {"b", "\x1b[1m"},      {"/b", "\x1b[22m"}, {"u", "\x1b[4m"},
    {"/u", "\x1b[24m"},    {"i", "\x1b[3m"},   {"/i", "\x1b[23m"},
    {"/font", "\x1b[39m"}, {"html", ""},       {"/html", "\x1b[0m"},
};

// How long a tag is that opens the text, brackets included; 0 where none closes.
std::size_t tagLength(std::string_view text) {
    bool quoted = false;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '"')
            quoted = !quoted;
        else if (text[at] == '>' && !quoted)
            return at + 1;
    }
    return 0;
}

// "color=#0066BB" anywhere in a font tag; the default colour where the digits are wrong.
std::string colorSequence(std::string_view fontTag) {
    constexpr std::string_view attribute = "color=#";
    constexpr std::size_t digits = 6;
    const auto at = fontTag.find(attribute);
    if (at == std::string_view::npos)
        return {};
    const auto hex = fontTag.substr(at + attribute.size());
    const auto end = hex.find_first_of("> \"");
    unsigned rgb = 0;
    if (end != digits ||
        std::from_chars(hex.data(), hex.data() + digits, rgb, 16).ptr != hex.data() + digits)
        return "\x1b[39m";
    return "\x1b[38;2;" + std::to_string(rgb >> 16) + ';' + std::to_string(rgb >> 8 & 0xFF) + ';' +
           std::to_string(rgb & 0xFF) + 'm';
}

// What a tag does to the terminal; nothing when it isn't one of the client's.
std::optional<std::string> sequenceOf(std::string_view tag) {
    const std::string folded = foldCase(tag);
    if (folded.starts_with("<font "))
        return colorSequence(folded);
    for (const Switch& known : switches)
        if (std::string_view(folded).substr(1, folded.size() - 2) == known.tag)
            return std::string(known.sequence);
    return std::nullopt;
}

void appendShown(std::string& shown, std::string_view bytes, const Character& character) {
    const char32_t code = character.code;
    const bool isControl = (code < 0x20 && code != '\n') || (code >= 0x7F && code < 0xA0);
    if (code > 0xF01F && code < 0xF07F) // the stand-in of a printable character
        shown += static_cast<char>(code - 0xF000);
    else if (!character.valid || isControl)
        shown += replacementCharacter;
    else
        shown += bytes;
}

} // namespace

std::string shownMarkup(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = text[0] == '<' ? tagLength(text) : 0;
        const auto sequence = length > 0 ? sequenceOf(text.substr(0, length)) : std::nullopt;
        if (sequence) {
            shown += *sequence;
            text.remove_prefix(length);
            continue;
        }
        const Character character = firstCharacter(text);
        appendShown(shown, text.substr(0, character.length), character);
        text.remove_prefix(character.length);
    }
    return shown.append(everythingOff);
}

} // namespace larkspin
