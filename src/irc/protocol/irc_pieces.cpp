#include "irc/protocol/irc_pieces.h"

#include "irc/protocol/irc_codes.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

// A place between two characters, and the style that holds there.
struct Place {
    std::size_t at = 0;
    MarkupStyle style;
};

void takeCodes(std::string_view& text, MarkupStyle& style) {
    while (const std::size_t code = takeIrcCode(text, style))
        text.remove_prefix(code);
}

// Whether nothing of a word follows, whatever codes do.
bool endsWord(std::string_view rest) {
    MarkupStyle ignored;
    takeCodes(rest, ignored);
    return rest.empty() || rest.front() == ' ';
}

// The last place up to which the text fits: a blank after a word if there is one.
Place endOfPiece(std::string_view text, const MarkupStyle& style, std::size_t longest) {
    Place here{0, style}, blank;
    bool isAfterWord = false;
    while (here.at < text.size()) {
        const std::string_view rest = text.substr(here.at);
        Place next = here;
        const std::size_t code = takeIrcCode(rest, next.style);
        next.at += code > 0 ? code : firstCharacter(rest).length;
        const bool isBlank = rest.front() == ' ';
        if (isBlank && isAfterWord)
            blank = here;
        if (next.at > longest)
            return blank.at == 0 || endsWord(rest) ? here : blank;
        isAfterWord |= code == 0 && !isBlank;
        here = next;
    }
    return here;
}

} // namespace

// If its codes leave no room for a single character, a piece goes without them. A character that
// has no room at all is left out.
std::vector<std::string> ircPieces(std::string_view codes, std::size_t longest) {
    std::vector<std::string> pieces;
    MarkupStyle style;
    for (takeCodes(codes, style); !codes.empty() && pieces.size() < mostPieces;
         takeCodes(codes, style)) {
        const std::size_t shortest = firstCharacter(codes).length;
        if (shortest > longest) {
            codes.remove_prefix(shortest);
            continue;
        }
        std::string piece = ircCodesBetween({}, style, codes);
        if (piece.size() + shortest > longest)
            piece.clear();
        const Place end = endOfPiece(codes, style, longest - piece.size());
        pieces.push_back(piece.append(codes.substr(0, end.at)));
        codes.remove_prefix(end.at);
        style = end.style;
        takeCodes(codes, style);
        if (codes.starts_with(' '))
            codes.remove_prefix(1);
    }
    return pieces;
}

} // namespace larkspin
