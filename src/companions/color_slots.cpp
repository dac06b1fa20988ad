#include "companions/color_slots.h"

namespace larkspin {

namespace {

constexpr bool atNextStart = true;

// The controls that show each slot's colour. Those of the launcher's window take a new one only at
// the next start.
constexpr ColoredControl titlebarWords[] = {
    {"appz", "Label1", atNextStart},
    {"appz", "Label2", atNextStart},
    {"colors", "Label2"},
    {"colors", "Label3"},
    {"larkmain", "commandsTitle"},
    {"larkmain", "closeLabel"},
    {"mp3s", "mediaCaption"},
    {"mp3s", "closeButton"},
    {"notez", "Label1"},
    {"notez", "Label5"},
};

constexpr ColoredControl titlebars[] = {
    {"appz", "Label1", atNextStart}, {"colors", "Label2"},    {"larkmain", "commandsTitle"},
    {"mp3s", "mediaCaption"},        {"mp3s", "closeButton"}, {"mp3s", "prevButton"},
    {"mp3s", "nextButton"},          {"mp3s", "pauseButton"}, {"mp3s", "playButton"},
    {"mp3s", "openButton"},          {"notez", "Label1"},     {"stops", "label"},
};

constexpr ColoredControl wordsAndLabels[] = {
    {"appz", "Label3", atNextStart},
    {"appz", "List1", atNextStart},
    {"appz", "Text1", atNextStart},
    {"colors", "Combo1"},
    {"colors", "Text1"},
    {"larkmain", "commandNames"},
    {"larkmain", "choiceList"},
    {"larkmain", "commandText"},
    {"mp3s", "playlistView"},
    {"mp3s", "volumeCaption"},
    {"mp3s", "tempoCaption"},
    {"mp3s", "sectionSeconds"},
    {"mp3s", "renameLabel"},
    {"mp3s", "fileCountLabel"},
    {"mp3s", "playlistTitle"},
    {"notez", "List2"},
    {"notez", "Text1"},
    {"notez", "Label2"},
    {"notez", "Label3"},
    {"notez", "Label4"},
    {"notez", "Label6"},
    {"stops", "label"},
};

constexpr std::string_view windowItself = {};

constexpr ColoredControl backgrounds[] = {
    {"appz", "List1", atNextStart},
    {"appz", "Text1", atNextStart},
    {"colors", windowItself},
    {"colors", "Combo1"},
    {"colors", "Text1"},
    {"larkmain", "commandNames"},
    {"larkmain", "choiceList"},
    {"larkmain", "commandText"},
    {"mp3s", windowItself},
    {"mp3s", "playlistView"},
    {"mp3s", "volumeCaption"},
    {"mp3s", "tempoCaption"},
    {"mp3s", "sectionSeconds"},
    {"mp3s", "renameLabel"},
    {"notez", windowItself},
    {"notez", "List2"},
    {"notez", "Text1"},
};

constexpr ColoredControl playControls[] = {
    {"mp3s", "prevButton"}, {"mp3s", "nextButton"}, {"mp3s", "pauseButton"},
    {"mp3s", "playButton"}, {"mp3s", "openButton"},
};

using Kind = ColorSlot::Kind;

// The keys of `titlebars` and `backgrounds` differ from the names of their slots.
constexpr ColorSlot slots[] = {
    {"ascii color", "ascii color", Kind::styleColor},
    {"font color", "font color", Kind::styleColor},
    {"titlebar words", "titlebar words", Kind::foreground, aqua, "mediaCaption", titlebarWords},
    {"titlebars", "titlebar", Kind::background, black, "mediaCaption", titlebars},
    {"words/labels", "words/labels", Kind::foreground, aqua, "playlistView", wordsAndLabels},
    {"backgrounds", "background", Kind::background, black, "playlistView", backgrounds},
    {"play controls", "play controls", Kind::foreground, red, "pauseButton", playControls},
};

} // namespace

std::span<const ColorSlot> colorSlots() {
    return slots;
}

} // namespace larkspin
