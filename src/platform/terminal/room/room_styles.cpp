#include "platform/terminal/room/room_styles.h"

#include "host/readable_color.h"

namespace larkspin {

namespace {

constexpr double borderShare = 0.5, stripShare = 0.14, chosenShare = 0.24, // of the other colour
    litShare = 0.16;

struct Ground {
    Rgb front, ground;
    bool isTerminals; // rather than drawn
};

Ground groundOf(RoomColors colors) {
    switch (colors) {
    case RoomColors::light:
        return {0x1B1B1B, 0xFFFFFF, true};
    case RoomColors::dark:
        return {0xE6E6E6, 0x1B1B1B, true};
    case RoomColors::larkspin:
        break;
    }
    return {0x00FFFF, 0x000000, false};
}

CellStyle withFront(CellStyle style, Rgb color) {
    style.foreground = color;
    return style;
}

CellStyle inBold(CellStyle style) {
    style.bold = true;
    return style;
}

} // namespace

CellStyle RoomStyles::colored(const CellStyle& style, Rgb color) const {
    return withFront(style, readableColor(color, style.background.value_or(ground)));
}

Color asColor(Rgb color) {
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

RoomStyles stylesIn(RoomColors colors) {
    const Ground known = groundOf(colors);
    const Rgb front = known.front, ground = known.ground;
    RoomStyles styles{.front = front, .ground = ground};
    if (!known.isTerminals)
        styles.plain = {.foreground = front, .background = ground};
    styles.dim = withFront(styles.plain, mixedColor(front, ground, dimTextShare));
    styles.name = inBold(styles.plain);
    styles.call = inBold(styles.colored(styles.plain, calling));
    styles.lit = mixedColor(ground, calling, litShare);
    styles.border = withFront(styles.plain, mixedColor(front, ground, borderShare));
    const auto on = [&](double share) {
        return CellStyle{
            .foreground = front, .background = mixedColor(ground, front, share), .isStrip = true};
    };
    styles.strip = on(stripShare);
    styles.stripName = inBold(styles.strip);
    styles.stripDim = withFront(styles.strip, mixedColor(front, ground, dimTextShare));
    styles.stripCall = inBold(styles.colored(styles.strip, calling));
    styles.chosen = inBold(on(chosenShare));
    styles.marked = styles.chosen;
    styles.marked.isStrip = false;
    styles.chosenDim = withFront(on(chosenShare), mixedColor(front, ground, dimTextShare));
    styles.chosenCall = inBold(styles.colored(styles.chosen, calling));
    return styles;
}

} // namespace larkspin
