#include "host/links.h"

#include "host/conversation.h"
#include "host/new_lines.h"
#include "host/web_address.h"
#include "text/characters.h"
#include "text/fold.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t linesLookedAt = 500; // of a conversation, from the end
constexpr std::string_view cutMark = "\u2026";

// Blanks of all kinds, among them the line breaks that a transcript has within a line.
bool divides(const Character& character) {
    const char32_t code = character.code;
    return code <= 0x20 || code == 0x7F || code == 0xA0 || code == 0x1680 || code == 0x3000 ||
           (code >= 0x2000 && code <= 0x200B) || code == 0x2028 || code == 0x2029 ||
           code == 0x202F || code == 0x205F;
}

bool isRightToLeft(char32_t code) {
    static constexpr std::pair<char32_t, char32_t> ranges[] = {{0x0590, 0x08FF},
                                                               {0xFB1D, 0xFDFF},
                                                               {0xFE70, 0xFEFF},
                                                               {0x10800, 0x10FFF},
                                                               {0x1E800, 0x1EFFF}};
    return std::ranges::any_of(
        ranges, [code](const auto& range) { return range.first <= code && code <= range.second; });
}

bool holdsRightToLeft(std::string_view text) {
    for (; !text.empty(); text.remove_prefix(firstCharacter(text).length))
        if (isRightToLeft(firstCharacter(text).code))
            return true;
    return false;
}

bool beginsLikeAddress(std::string_view text) {
    static constexpr std::string_view beginnings[] = {"http://", "https://", "ftp://",
                                                      "mailto:", "www."};
    return std::ranges::any_of(beginnings, [text](std::string_view beginning) {
        return equalFolded(text.substr(0, beginning.size()), beginning);
    });
}

// Without the marks that end a sentence, or the bracket that was opened before the address.
std::string_view withoutMarksAfter(std::string_view word) {
    for (;;) {
        const char last = word.empty() ? ' ' : word.back();
        const bool closes = last == ')' || last == ']';
        const char opening = last == ')' ? '(' : '[';
        const bool isMark = std::string_view(".,;:!?'\">").find(last) != std::string_view::npos;
        if (!isMark &&
            !(closes && std::ranges::count(word, opening) < std::ranges::count(word, last)))
            return word;
        word.remove_suffix(1);
    }
}

// The link in a word between blanks that stands there; nothing if there is none.
void addLinkIn(std::string_view word, std::size_t begin, std::vector<Link>& links) {
    const auto skipped = std::min(word.find_first_not_of("(<[{\"'"), word.size());
    std::string_view text = word.substr(skipped);
    // The end of one that is cut isn't known.
    if (!beginsLikeAddress(text) || text.ends_with(cutMark) || holdsRightToLeft(text))
        return;
    text = withoutMarksAfter(text);
    if (auto address = webAddress(text))
        links.push_back({begin + skipped, text.size(), std::move(*address)});
}

// What an address leads to: the server's name, or the one that mail is for.
std::string_view goalOf(std::string_view address) {
    if (const auto scheme = address.find("://"); scheme != address.npos)
        address.remove_prefix(scheme + 3);
    else
        address.remove_prefix(std::min(address.find(':') + 1, address.size()));
    address = address.substr(0, address.find_first_of("/?#"));
    return address.substr(address.rfind('@') + 1);
}

} // namespace

std::vector<Link> linksIn(std::string_view shown) {
    std::vector<Link> links;
    std::size_t begin = 0, at = 0;
    while (at <= shown.size()) {
        const bool isEnd = at == shown.size();
        const Character character = isEnd ? Character() : firstCharacter(shown.substr(at));
        if (isEnd || divides(character)) {
            addLinkIn(shown.substr(begin, at - begin), begin, links);
            begin = at + (isEnd ? 0 : character.length);
        }
        at += isEnd ? 1 : character.length;
    }
    return links;
}

std::vector<std::string> latestLinks(const Conversation& conversation, std::size_t most) {
    std::vector<std::string> found;
    std::size_t looked = 0;
    const auto& lines = conversation.lines();
    for (auto line = lines.rbegin(); line != lines.rend() && looked < linesLookedAt;
         ++line, ++looked) {
        const std::vector<Link> links = linksIn(wordsOf(*line));
        for (auto link = links.rbegin(); link != links.rend() && found.size() < most; ++link)
            if (std::ranges::find(found, link->address) == found.end())
                found.push_back(link->address);
    }
    return found;
}

std::string questionAbout(std::string_view address) {
    const std::string_view goal = goalOf(address);
    const bool isForeign = !std::ranges::all_of(goal, isAscii);
    return "open " + std::string(address) + " ?\n\nit leads to " + std::string(goal) +
           (isForeign ? ", which has letters beyond a to z: they may look like others" : "");
}

} // namespace larkspin
