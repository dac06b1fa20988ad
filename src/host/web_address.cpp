#include "host/web_address.h"

#include "text/blanks.h"
#include "text/characters.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr auto npos = std::string_view::npos;

// By ASCII alone: the names of an address have no other letters, and what merely folds to them is
// another name.
std::string lowerAscii(std::string_view text) {
    std::string lowered(text);
    std::ranges::transform(lowered, lowered.begin(), smallAscii);
    return lowered;
}

// Those of other alphabets stand for themselves: their bytes are all above ASCII.
bool isLetterOrDigit(char byte) {
    return isDigit(byte) || isLetter(byte) || !isAscii(byte);
}

// Control characters, blanks of any kind, marks that nobody sees, and the signs that an address
// writes otherwise.
bool mayStand(const Character& character) {
    static constexpr std::pair<char32_t, char32_t> barred[] = {
        {0x00, 0x20},     {0x7F, 0xA0},     {0xAD, 0xAD},       {0x1680, 0x1680},
        {0x2000, 0x200F}, {0x2028, 0x202F}, {0x205F, 0x206F},   {0x3000, 0x3000},
        {0xFEFF, 0xFEFF}, {0xE000, 0xF8FF}, {0xE0000, 0x10FFFF}};
    const char32_t code = character.code;
    if (!character.valid ||
        (code < 0x80 && std::string_view("\"<>\\^`{|}").find(static_cast<char>(code)) != npos))
        return false;
    return std::ranges::none_of(
        barred, [code](const auto& range) { return range.first <= code && code <= range.second; });
}

bool allMayStand(std::string_view text) {
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (!mayStand(character))
            return false;
        text.remove_prefix(character.length);
    }
    return true;
}

// Whether the text after "http://" begins with a host.
bool namesHost(std::string_view text) {
    std::string_view server = text.substr(0, text.find_first_of("/?#"));
    server.remove_prefix(server.rfind('@') + 1); // none is npos, and one more is 0
    return !server.empty() && (isLetterOrDigit(server[0]) || server[0] == '[');
}

// After "mailto:": to whom, and only such headers as the owner would write himself. Others attach
// a file of his to the mail. An encoded control character would begin another header; in the body
// it is the end of a line.
bool isMail(std::string_view text) {
    const std::string_view addressees = takePart(text, '?');
    const auto at = addressees.find('@');
    if (at == npos || at == 0 || at + 1 == addressees.size() || addressees[0] == '-')
        return false;
    const auto holdsControl = [](std::string_view part) {
        return part.find("%0") != npos || part.find("%1") != npos;
    };
    if (holdsControl(addressees) || addressees.find_first_of("#&") != npos ||
        text.find_first_of("?#") != npos)
        return false;
    while (!text.empty()) {
        std::string_view value = takePart(text, '&');
        const std::string header = lowerAscii(takePart(value, '='));
        const bool isPlain = header == "subject" || header == "cc" || header == "bcc";
        if (header != "body" && (!isPlain || holdsControl(value)))
            return false;
    }
    return true;
}

bool isLabel(std::string_view text) {
    return !text.empty() && text.front() != '-' && text.back() != '-' &&
           std::ranges::all_of(text,
                               [](char byte) { return isLetterOrDigit(byte) || byte == '-'; });
}

// Labels with dots between them, at least two: a single word is no address that anybody meant. A
// port and a path may follow.
bool isBareHost(std::string_view text) {
    std::string_view host = text.substr(0, text.find_first_of("/?#"));
    const auto [name, port, hasPort] = partedAt(host, ':');
    if (hasPort && (port.empty() || port.size() > 5 || !std::ranges::all_of(port, isDigit)))
        return false;
    host = name;
    if (host.find('.') == npos || host.ends_with('.'))
        return false;
    while (!host.empty())
        if (!isLabel(takePart(host, '.')))
            return false;
    return true;
}

} // namespace

// A scheme goes out in small letters, which is how the system looks up what opens it.
std::optional<std::string> webAddress(std::string_view text) {
    text = withoutBlanks(text);
    if (!allMayStand(text))
        return std::nullopt;
    const std::string_view scheme = partedAt(text, ':').head;
    const std::string_view rest = text.substr(scheme.size());
    const std::string lowered = lowerAscii(scheme);
    if ((lowered == "http" || lowered == "https" || lowered == "ftp") && rest.starts_with("://"))
        return namesHost(rest.substr(3)) ? std::optional(lowered + std::string(rest))
                                         : std::nullopt;
    if (lowered == "mailto" && rest.starts_with(":"))
        return isMail(rest.substr(1)) ? std::optional(lowered + std::string(rest)) : std::nullopt;
    if (isBareHost(text))
        return "http://" + std::string(text);
    return std::nullopt;
}

} // namespace larkspin
