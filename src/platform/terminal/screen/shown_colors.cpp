#include "platform/terminal/screen/shown_colors.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

// As terminals come with them.
constexpr Rgb firstColors[] = {0x000000, 0xCD0000, 0x00CD00, 0xCDCD00, 0x0000EE, 0xCD00CD,
                               0x00CDCD, 0xE5E5E5, 0x7F7F7F, 0xFF0000, 0x00FF00, 0xFFFF00,
                               0x5C5CFF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
constexpr int ownersColors = fewColors;
constexpr int black = 0, white = 7;
constexpr int leastHue = 32;   // between the parts of what isn't gray
constexpr int leastLight = 50; // between a text and its ground
constexpr int cubeSides = 6, grays = 24;

int partOf(Rgb color, int shift) {
    return static_cast<int>(color >> shift & 0xFF);
}

// Up to 255, to an eye.
int lightOf(Rgb color) {
    return (3 * partOf(color, 16) + 6 * partOf(color, 8) + partOf(color, 0)) / 10;
}

bool isGray(Rgb color) {
    const auto [least, most] = std::minmax({partOf(color, 16), partOf(color, 8), partOf(color, 0)});
    return most - least < leastHue;
}

constexpr int levelOf(int step) {
    return step == 0 ? 0 : 55 + 40 * step;
}

int nearestStep(int part) {
    return part < 48 ? 0 : part < 115 ? 1 : (part - 35) / 40;
}

Rgb rgbOf(int red, int green, int blue) {
    return static_cast<Rgb>(red << 16 | green << 8 | blue);
}

// Of a cube of colours, and a row of grays.
int nearestOf256(Rgb color) {
    const int red = nearestStep(partOf(color, 16)), green = nearestStep(partOf(color, 8)),
              blue = nearestStep(partOf(color, 0));
    const int inCube = ownersColors + (red * cubeSides + green) * cubeSides + blue;
    const int bright = (partOf(color, 16) + partOf(color, 8) + partOf(color, 0)) / 3;
    const int gray = std::clamp((bright - 3) / 10, 0, grays - 1);
    const int level = 8 + 10 * gray;
    const bool isNearerGray =
        colorDifference(color, rgbOf(level, level, level)) <
        colorDifference(color, rgbOf(levelOf(red), levelOf(green), levelOf(blue)));
    return isNearerGray ? ownersColors + cubeSides * cubeSides * cubeSides + gray : inCube;
}

} // namespace

// It sees green best.
int colorDifference(Rgb one, Rgb other) {
    const auto squared = [&](int shift) {
        const int apart = partOf(one, shift) - partOf(other, shift);
        return apart * apart;
    };
    return 3 * squared(16) + 6 * squared(8) + squared(0);
}

int nearestColor(Rgb color, int colors) {
    if (colors >= 256)
        return nearestOf256(color);
    const auto end = std::begin(firstColors) + std::clamp(colors, 1, ownersColors);
    const auto nearest =
        std::min_element(std::begin(firstColors), end, [color](Rgb one, Rgb other) {
            return colorDifference(one, color) < colorDifference(other, color);
        });
    return static_cast<int>(nearest - std::begin(firstColors));
}

ShownColors shownColors(const CellStyle& style, int colors) {
    const CellColor foreground = style.foreground, background = style.background;
    const auto number = [colors](CellColor color) {
        return color ? nearestColor(*color, colors) : -1;
    };
    ShownColors shown{number(foreground), number(background)};
    if (colors > ownersColors || !foreground)
        return shown;
    if (!background && colors < ownersColors && isGray(*foreground))
        shown.foreground = -1;
    if (!background)
        return shown;
    const int ground = lightOf(firstColors[shown.background]);
    if (std::abs(lightOf(firstColors[shown.foreground]) - ground) < leastLight)
        shown.foreground = ground < 128 ? white : black;
    if (style.isStrip)
        std::swap(shown.foreground, shown.background);
    return shown;
}

} // namespace larkspin
