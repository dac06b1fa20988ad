#include "irc/protocol/irc_markup.h"

#include "irc/protocol/irc_codes.h"
#include "text/characters.h"
#include "text/number.h"
#include "text/utf8.h"

#include <algorithm>
#include <vector>

namespace larkspin {

namespace {

void appendWithoutControls(std::string& to, std::string_view text) {
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const bool isShown = !character.valid || !isControl(character.code);
        to += !isShown ? " " : text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
}

struct Run {
    std::string text;
    MarkupStyle style;
};

// The text in runs of one style each. None is empty, and each has another style than the one before
// it.
std::vector<Run> runsOf(std::string_view codes) {
    std::vector<Run> runs;
    MarkupStyle style;
    while (!codes.empty()) {
        const std::size_t code = takeIrcCode(codes, style);
        if (code == 0) {
            if (runs.empty() || runs.back().style != style)
                runs.push_back({{}, style});
            runs.back().text += codes.front();
        }
        codes.remove_prefix(std::max<std::size_t>(code, 1));
    }
    return runs;
}

std::string fontTag(std::optional<std::uint32_t> color) {
    if (!color)
        return "</font>";
    const auto part = [&](int shift) {
        return hexPair(static_cast<std::uint8_t>(*color >> shift));
    };
    return "<font color=#" + part(16) + part(8) + part(0) + '>';
}

// Tags needn't nest: in the client's markup each of them switches one thing on or off.
std::string tagsBetween(const MarkupStyle& from, const MarkupStyle& to) {
    std::string tags;
    if (from.bold != to.bold)
        tags += to.bold ? "<b>" : "</b>";
    if (from.italic != to.italic)
        tags += to.italic ? "<i>" : "</i>";
    if (from.underlined != to.underlined)
        tags += to.underlined ? "<u>" : "</u>";
    if (from.color != to.color)
        tags += fontTag(to.color);
    return tags;
}

} // namespace

std::string ircCodes(std::string_view markup) {
    std::string codes;
    MarkupStyle last;
    for (const MarkupPiece& piece : readMarkup(markup)) {
        codes += ircCodesBetween(last, piece.style, piece.text);
        appendWithoutControls(codes, withoutTagBreaks(piece.text));
        last = piece.style;
    }
    return codes;
}

std::string markupOfIrc(std::string_view codes) {
    std::string markup;
    MarkupStyle last;
    for (const Run& run : runsOf(codes)) {
        markup += tagsBetween(last, run.style);
        markup += withoutTags(run.text);
        last = run.style;
    }
    return markup;
}

std::string withoutIrcCodes(std::string_view codes) {
    std::string text;
    for (const Run& run : runsOf(codes))
        text += run.text;
    return text;
}

} // namespace larkspin
