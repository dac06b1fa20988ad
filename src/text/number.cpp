#include "text/number.h"

#include "text/blanks.h"
#include "text/characters.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace larkspin {

namespace {

bool isDigitsAndPoint(std::string_view text) {
    const auto point = text.find('.');
    return text.find_first_not_of("0123456789.") == std::string_view::npos &&
           text.find_first_of("0123456789") != std::string_view::npos &&
           (point == std::string_view::npos || text.find('.', point + 1) == std::string_view::npos);
}

} // namespace

std::optional<double> number(std::string_view text) {
    text = withoutBlanks(text);
    // The sign is read here, since from_chars takes no plus sign.
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    if (!isDigitsAndPoint(text))
        return std::nullopt;
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc())
        return std::nullopt;
    return negative ? -value : value;
}

double numberOrZero(std::string_view text) {
    return number(text).value_or(0);
}

std::string numberText(double value) {
    if (value == 0)
        return "0";   // also the negative one
    char buffer[400]; // the largest double has 309 digits
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return written.ec == std::errc() ? std::string(buffer, written.ptr) : "0";
}

std::int64_t rounded(double value) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (value >= limit)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -limit)
        return std::numeric_limits<std::int64_t>::min();
    const double whole = std::floor(value), rest = value - whole;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0);
    return static_cast<std::int64_t>(up ? whole + 1 : whole);
}

std::string hexPair(std::uint8_t value) {
    constexpr char digits[] = "0123456789ABCDEF";
    return {digits[value >> 4], digits[value & 0xF]};
}

std::optional<int> plainNumber(std::string_view digits, int least, int most) {
    int number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, number);
    // from_chars would take a minus sign as well
    const bool isPlain = !digits.empty() && isDigit(digits.front()) && last == end;
    if (!isPlain || error != std::errc() || number < least || number > most)
        return std::nullopt;
    return number;
}

std::string counted(std::int64_t count, std::string_view one) {
    return counted(count, one, std::string(one) + 's');
}

std::string counted(std::int64_t count, std::string_view one, std::string_view many,
                    std::string_view mark, std::string_view unmark) {
    const std::string number = std::to_string(count);
    return std::string(mark).append(number).append(unmark).append(" ").append(count == 1 ? one
                                                                                         : many);
}

std::optional<std::int16_t> wholeNumber16(std::string_view text) {
    const auto value = number(text);
    if (!value)
        return std::nullopt;
    const auto whole = rounded(*value);
    if (whole < std::numeric_limits<std::int16_t>::min() ||
        whole > std::numeric_limits<std::int16_t>::max())
        return std::nullopt;
    return static_cast<std::int16_t>(whole);
}

} // namespace larkspin
