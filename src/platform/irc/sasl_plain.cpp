#include "platform/irc/sasl_plain.h"

#include <algorithm>
#include <cstdint>

namespace larkspin {

namespace {

constexpr std::size_t longest = 400;

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
        std::uint32_t group = 0;
        for (std::size_t byte = 0; byte < 3; ++byte)
            group =
                group << 8 | (byte < bytes.size() ? static_cast<unsigned char>(bytes[byte]) : 0);
        for (std::size_t digit = 0; digit < 4; ++digit)
            text += digit <= bytes.size() ? digits[group >> (18 - 6 * digit) & 0x3F] : '=';
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
