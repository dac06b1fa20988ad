#include "irc/protocol/sasl_plain.h"

#include <cstdint>

namespace larkspin {

namespace {

constexpr std::size_t longest = 400;

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view three = bytes.substr(at, 3);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8 | (i < three.size() ? static_cast<unsigned char>(three[i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= three.size() ? digits[bits >> (18 - 6 * i) & 63] : '=';
    }
    return text;
}

} // namespace

std::vector<std::string> saslPlainLines(std::string_view account, std::string_view password) {
    std::string both(1, '\0'); // as nobody but the account itself
    both.append(account).append(1, '\0').append(password);
    const std::string text = base64(both);
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size(); at += longest)
        lines.push_back(text.substr(at, longest));
    if (lines.back().size() == longest)
        lines.emplace_back("+");
    return lines;
}

} // namespace larkspin
