// Numbers in text. This unit alone says what is numeric, how a number becomes text and how
// a half rounds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

// Numeric: blanks around, a sign, digits, one decimal point; at least one digit.
std::optional<double> number(std::string_view text);
double numberOrZero(std::string_view text);

// Decimal, without trailing zeros and without an exponent.
std::string numberText(double value);

// To the nearest whole number, a half to the even one. A value beyond the range of 64 bits gives
// the end of that range.
std::int64_t rounded(double value);

// Two hexadecimal digits, capitals.
std::string hexPair(std::uint8_t value);

// The number that these digits spell; nothing for any other text, or outside the bounds.
std::optional<int> plainNumber(std::string_view digits, int least, int most);

// "1 line", "2 lines"; another plural is named. The number can be dressed for the room.
std::string counted(std::int64_t count, std::string_view one);
std::string counted(std::int64_t count, std::string_view one, std::string_view many,
                    std::string_view mark = {}, std::string_view unmark = {});

// A numeric text as a whole number of 16 bits, rounded; nothing when it doesn't fit.
std::optional<std::int16_t> wholeNumber16(std::string_view text);

} // namespace larkspin
