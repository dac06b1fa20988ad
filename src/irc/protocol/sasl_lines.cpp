#include "irc/protocol/sasl_lines.h"

#include "irc/protocol/base64.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestSaslPiece = 400, longestSaslText = 8000;

} // namespace

std::vector<std::string> saslLines(std::string_view bytes) {
    const std::string text = base64(bytes);
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size(); at += longestSaslPiece)
        lines.push_back(text.substr(at, longestSaslPiece));
    if (lines.empty() || lines.back().size() == longestSaslPiece)
        lines.emplace_back("+");
    return lines;
}

bool SaslInput::add(std::string_view piece) {
    if (piece != "+" && text_.size() <= longestSaslText)
        text_ += piece;
    if (piece.size() == longestSaslPiece)
        return false;
    const std::string text = std::exchange(text_, {});
    message_ = text.size() <= longestSaslText ? fromBase64(text) : std::nullopt;
    return true;
}

std::string saslPlain(std::string_view account, std::string_view password) {
    std::string both(1, '\0');
    return both.append(account).append(1, '\0').append(password);
}

} // namespace larkspin
