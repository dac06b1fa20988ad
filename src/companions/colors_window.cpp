#include "companions/colors_window.h"

#include "chat/reply.h"
#include "companions/color_slots.h"
#include "companions/window_colors.h"
#include "shell/controls.h"
#include "shell/dialogs.h"
#include "shell/settings.h"
#include "text/number.h"
#include "text/utf8.h"

#include <string_view>

namespace larkspin {

namespace {

constexpr Place colorsHome = {3600, 3600, 3300, 2370};
constexpr std::string_view tagOpening = "<font color=#";

// Red is in the lowest byte of a colour.
Color colorOf(const std::array<std::uint8_t, 3>& parts) {
    return parts[0] + 256u * parts[1] + 65536u * parts[2];
}

// The digits of the colour in a tag: what stands between the tag's opening and its last character.
// Empty when the owner has edited the tag down to less.
std::string_view digitsOf(std::string_view tag) {
    tag.remove_prefix(prefixLength(tag, tagOpening.size()));
    return withoutLast(tag, 1);
}

} // namespace

ColorsWindow::ColorsWindow(const Core& core, WindowColors& windowColors)
    : settings_(core.settings), loop_(core.loop), dialogs_(core.dialogs), reply_(core.reply),
      windowColors_(windowColors) {
    for (const ColorSlot& slot : colorSlots())
        slots_.add(slot.name);
    colors.place = colorsHome;
    colors.controls = controls();
    reset();
}

std::vector<Control> ColorsWindow::controls() {
    return {
        titleStrip(loop_, colors, {.name = "Label2", .text = caption("          color options")}),
        closeLabel(colors, {.name = "Label3"}),
        combo({.name = "Combo1",
               .place = {60, 375, 3180, 315},
               .spoken = "what gets the color",
               .rows = &slots_}),
        bar("HScroll1", "red", 0),
        bar("HScroll2", "green", 1),
        bar("HScroll3", "blue", 2),
        digits("Label4", "red digits", 0),
        digits("Label5", "green digits", 1),
        digits("Label6", "blue digits", 2),
        swatch({.name = "Label1", .place = {60, 1635, 780, 675}, .spoken = "color"}),
        textField({.name = "Text1",
                   .place = {900, 1635, 2340, 315},
                   .spoken = "font tag",
                   .text = shows(tag_),
                   .onEdit = [this](const std::string& text) { tag_ = text; }}),
        button({.name = "Command1",
                .place = {2400, 2010, 840, 300},
                .text = caption("OK"),
                .onClick = [this] { apply(); }}),
    };
}

Control ColorsWindow::bar(const char* name, const char* spoken, std::size_t part) {
    return slider({.name = name,
                   .place = {60, 750 + 285 * static_cast<int>(part), 2640, 255},
                   .spoken = spoken,
                   .value = [this, part] { return parts_[part]; },
                   .least = 0,
                   .most = 255,
                   .onChange = [this, part](int value) { mix(part, value); }});
}

Control ColorsWindow::digits(const char* name, const char* spoken, std::size_t part) {
    return label({.name = name,
                  .place = {2760, 750 + 285 * static_cast<int>(part), 480, 255},
                  .spoken = spoken,
                  .text = [this, part] { return hexPair(parts_[part]); }});
}

void ColorsWindow::color() {
    if (reply_.refusedInSilence(
            "to use color options in silent mode go to other in the system tray menu"))
        return;
    show();
    reply_.saychat("viewing color options");
}

void ColorsWindow::show() {
    showOnTop(colors);
}

void ColorsWindow::reset() {
    putAway(colors, colorsHome);
    parts_ = {};
    colors.control("Label1").background = colorOf(parts_);
    tag_.clear();
    slots_.setCurrentIndex(slots_.count() - 1); // the play controls
}

void ColorsWindow::mix(std::size_t part, int value) {
    parts_[part] = static_cast<std::uint8_t>(value);
    colors.control("Label1").background = colorOf(parts_);
    // The tag is written anew at each move of a bar, over what the owner may have typed.
    tag_ = tagOpening;
    for (const std::uint8_t each : parts_)
        tag_ += hexPair(each);
    tag_ += '>';
}

void ColorsWindow::apply() {
    if (tag_.empty() || tag_ == "no preset colors") {
        dialogs_.box("you should probably set a color first");
        return;
    }
    for (const ColorSlot& slot : colorSlots()) {
        if (slot.name != slots_.currentRow())
            continue;
        // A style's colour is kept as the digits of a font tag. A window's colour is kept as a
        // number, and shows at once.
        if (slot.kind == ColorSlot::Kind::styleColor) {
            settings_.put(slot.key, digitsOf(tag_));
        } else {
            const Color chosen = colors.control("Label1").background;
            windowColors_.giveAtOnce(slot, chosen);
            settings_.put(slot.key, numberText(chosen));
        }
    }
}

} // namespace larkspin
