#include "outside/byte_units.h"

namespace larkspin {

namespace {

constexpr std::uint64_t kb = 1024, mb = 1024 * kb, gb = 1024 * mb;

struct Fraction {
    std::uint64_t numerator, denominator;
};

// The fraction in units of the last decimal, rounded. By long division, because a double would turn
// some values that aren't halves into halves, and the other way round.
std::uint64_t decimalUnits(Fraction of, int decimals) {
    // The rest is multiplied by ten below, which must fit into 64 bits. A number of bytes as large
    // as this can lose its lowest bits without a change in the digits that are shown.
    for (; of.denominator >> 59 != 0; of.denominator >>= 1)
        of.numerator >>= 1;
    std::uint64_t units = of.numerator / of.denominator;
    std::uint64_t rest = of.numerator % of.denominator;
    for (int digit = 0; digit < decimals; ++digit) {
        rest *= 10;
        units = units * 10 + rest / of.denominator;
        rest %= of.denominator;
    }
    const bool up = rest * 2 > of.denominator || (rest * 2 == of.denominator && units % 2 != 0);
    return up ? units + 1 : units;
}

std::string hundredthsText(std::uint64_t hundredths) {
    // Without trailing zeros: 150 hundredths are "1.5".
    std::string text = std::to_string(hundredths / 100);
    const std::uint64_t rest = hundredths % 100;
    if (rest != 0)
        text += "." + std::to_string(rest / 10);
    if (rest % 10 != 0)
        text += std::to_string(rest % 10);
    return text;
}

} // namespace

std::string readable(std::uint64_t bytes) {
    const auto in = [bytes](std::uint64_t unit, const char* name) {
        return "<b>" + hundredthsText(decimalUnits({bytes, unit}, 2)) + "</b> " + name;
    };
    if (bytes >= gb)
        return in(gb, "gb");
    if (bytes >= mb)
        return in(mb, "mb");
    return bytes >= kb ? in(kb, "kb") : in(1, "bytes");
}

std::string percentage(std::uint64_t part, std::uint64_t whole) {
    return hundredthsText(decimalUnits({part, whole}, 4)); // in hundredths of a percent
}

} // namespace larkspin
