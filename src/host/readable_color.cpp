#include "host/readable_color.h"

#include <algorithm>
#include <cmath>

namespace larkspin {

namespace {

constexpr double leastContrast = 5.2;    // that of plain red
constexpr double contrastOfBlack = 0.05; // which is added to every light
constexpr std::uint32_t black = 0, white = 0xFFFFFF;

int partOf(std::uint32_t color, int shift) {
    return static_cast<int>((color >> shift) & 0xFF);
}

// The light and the contrast of colours are computed as for the web's rules on accessibility.
double lightOfPart(std::uint32_t color, int shift) {
    const double part = partOf(color, shift) / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double lightOf(std::uint32_t color) {
    return 0.2126 * lightOfPart(color, 16) + 0.7152 * lightOfPart(color, 8) +
           0.0722 * lightOfPart(color, 0) + contrastOfBlack;
}

} // namespace

std::uint32_t mixedColor(std::uint32_t first, std::uint32_t second, double share) {
    std::uint32_t mixed = 0;
    for (const int shift : {16, 8, 0}) {
        const int from = partOf(first, shift), to = partOf(second, shift);
        mixed |= static_cast<std::uint32_t>(std::lround(from + (to - from) * share)) << shift;
    }
    return mixed;
}

// Steps towards white or black, whichever differs more from the ground. One of them always does.
std::uint32_t readableColor(std::uint32_t color, std::uint32_t ground) {
    const double under = lightOf(ground);
    const auto contrast = [under](std::uint32_t front) {
        const double light = lightOf(front);
        return std::max(light, under) / std::min(light, under);
    };
    const std::uint32_t far = contrast(white) > contrast(black) ? white : black;
    const double least = std::min(leastContrast, contrast(far));
    std::uint32_t seen = color;
    for (double share = 0.02; contrast(seen) < least && share <= 1; share += 0.02)
        seen = mixedColor(color, far, share);
    return seen;
}

} // namespace larkspin
