#include "irc/connection/irc_sts.h"

#include "text/number.h"
#include "text/parts.h"

namespace larkspin {

namespace {

constexpr int longestSts = 365 * 24 * 60 * 60; // in seconds; what is told beyond that is cut

std::optional<std::chrono::seconds> readDuration(std::string_view digits) {
    if (const auto seconds = plainNumber(digits, 0, longestSts))
        return std::chrono::seconds(*seconds);
    const bool isLonger = !digits.empty() && digits.find_first_not_of("0123456789") == digits.npos;
    return isLonger ? std::optional(std::chrono::seconds(longestSts)) : std::nullopt;
}

} // namespace

IrcSts readSts(std::string_view value) {
    IrcSts sts;
    while (!value.empty()) {
        const auto [key, text, hasValue] = partedAt(takePart(value, ','), '=');
        if (key == "port") {
            if (const auto port = plainNumber(text, 1, 65535))
                sts.port = static_cast<std::uint16_t>(*port);
        } else if (key == "duration") {
            sts.duration = readDuration(text);
        }
    }
    return sts;
}

} // namespace larkspin
