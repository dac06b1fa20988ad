// Any markup as it is said on IRC and comes back: it looks the same, and nothing but the codes that
// all programs know goes out, in pieces of which none is too long.
#include "chat/markup.h"
#include "fuzz/fuzz.h"
#include "irc/protocol/irc_codes.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_pieces.h"
#include "text/utf8.h"

#include <algorithm>

using namespace larkspin;

namespace {

constexpr std::string_view unseen = "\u200C", knownCodes = "\2\3\xF\x1D\x1F";

using Look = std::vector<std::pair<char, MarkupStyle>>;

// One entry per byte that is seen.
Look look(std::string_view markup) {
    Look bytes;
    for (MarkupPiece piece : readMarkup(markup)) {
        for (; !piece.text.empty(); piece.text.remove_prefix(1)) {
            if (piece.text.starts_with(unseen))
                piece.text.remove_prefix(unseen.size() - 1);
            else
                bytes.push_back({piece.text[0], piece.style});
        }
    }
    return bytes;
}

// Colours as the codes name them, and no fonts.
std::string again(const MarkupStyle& style) {
    return ircCodesBetween({}, {style.bold, style.underlined, style.italic, style.color}, "");
}

void demandKnownCodes(std::string_view said) {
    for (const char byte : said) {
        const bool isControl = static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
        demand(!isControl || knownCodes.find(byte) != knownCodes.npos);
    }
}

Look withoutBlanks(Look look) {
    std::erase_if(look, [](const auto& byte) { return byte.first == ' '; });
    return look;
}

// Codes may divide a character's bytes, which come together without them.
std::string withoutUnseen(std::string text) {
    for (auto at = text.find(unseen); at != text.npos; at = text.find(unseen, at))
        text.erase(at, unseen.size());
    return text;
}

std::size_t brokenCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(firstCharacter(text).length))
        count += firstCharacter(text).valid ? 0 : 1;
    return count;
}

void demandPieces(const std::string& codes, std::size_t longest) {
    constexpr std::size_t enoughForCodes = 16;
    Look together;
    std::size_t broken = 0;
    const auto pieces = ircPieces(codes, longest);
    for (const std::string& piece : pieces) {
        demand(!piece.empty() && piece.size() <= longest);
        demandKnownCodes(piece);
        broken += brokenCharacters(piece);
        std::ranges::copy(look(markupOfIrc(piece)), std::back_inserter(together));
    }
    if (longest < enoughForCodes || pieces.size() == mostPieces)
        return;
    demand(withoutBlanks(together) == withoutBlanks(look(markupOfIrc(codes))));
    demand(broken == brokenCharacters(codes));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto longest = input.ConsumeIntegralInRange<std::size_t>(0, 60);
    std::string markup;
    while (input.remaining_bytes() > 0)
        markup += input.PickValueInArray({"<b>", "</b>", "<i>", "<U>", "</u>", "<", "font ", "b>",
                                          "<font color=#FF0000>", "<font color=#", "</html>", ",5",
                                          "\"", " ", "\u20AC",
                                          "\x03"
                                          "4,",
                                          "\x04"
                                          "00FF00",
                                          "\n"}) +
                  input.ConsumeRandomLengthString(6);

    const std::string codes = ircCodes(markup);
    demandKnownCodes(codes);
    Look said = look(markup), back = look(markupOfIrc(codes));
    demand(said.size() >= back.size()); // a control character of two bytes is one blank
    if (said.size() == back.size())
        for (std::size_t at = 0; at < said.size(); ++at)
            demand(again(said[at].second) == again(back[at].second));
    demandPieces(codes, longest);

    const std::string shown = markupOfIrc(markup); // of codes that others make up
    std::string text;
    for (const MarkupPiece& piece : readMarkup(shown))
        text += piece.text;
    demand(withoutUnseen(text) == withoutUnseen(withoutIrcCodes(markup)));
    return 0;
}
