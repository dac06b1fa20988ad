// The colours of the windows, and the window that sets them.
#include "app/program.h"
#include "shell/control_events.h"
#include "support/talk.h"

#include <set>
#include <tuple>

namespace larkspin {

namespace {

// A slot of the window, from its third one on, and what takes its colour, in order; a window
// without a control for its own background. The launcher's controls take it at a start only.
struct Slot {
    std::string key, sample; // one of the media window's
    bool isForeground;
    Color design;
    std::string launcher, atOnce;
};

const Slot slots[] = {
    {"titlebar words", "mediaCaption", true, aqua, "appz.Label1 appz.Label2 ",
     "colors.Label2 colors.Label3 larkmain.closeLabel larkmain.commandsTitle mp3s.closeButton "
     "mp3s.mediaCaption notez.Label1 notez.Label5 "},
    {"titlebar", "mediaCaption", false, black, "appz.Label1 ",
     "colors.Label2 larkmain.commandsTitle mp3s.closeButton mp3s.mediaCaption mp3s.nextButton "
     "mp3s.openButton mp3s.pauseButton mp3s.playButton mp3s.prevButton notez.Label1 stops.label "},
    {"words/labels", "playlistView", true, aqua, "appz.Label3 appz.List1 appz.Text1 ",
     "colors.Combo1 colors.Text1 larkmain.choiceList larkmain.commandNames larkmain.commandText "
     "mp3s.fileCountLabel mp3s.playlistTitle mp3s.playlistView mp3s.renameLabel "
     "mp3s.sectionSeconds mp3s.tempoCaption mp3s.volumeCaption notez.Label2 notez.Label3 "
     "notez.Label4 notez.Label6 notez.List2 notez.Text1 stops.label "},
    {"background", "playlistView", false, black, "appz.List1 appz.Text1 ",
     "colors colors.Combo1 colors.Text1 larkmain.choiceList larkmain.commandNames "
     "larkmain.commandText mp3s mp3s.playlistView mp3s.renameLabel mp3s.sectionSeconds "
     "mp3s.tempoCaption mp3s.volumeCaption notez notez.List2 notez.Text1 "},
    {"play controls", "openButton", true, red, "",
     "mp3s.nextButton mp3s.openButton mp3s.pauseButton mp3s.playButton mp3s.prevButton "},
};

// What shows that colour, in order; the swatch aside.
std::string showing(VirtualMachine& machine, const Slot& slot, Color color) {
    std::set<std::string> found;
    for (const Window* window : machine.program->windows()) {
        if (!slot.isForeground && window->background == color)
            found.insert(window->name);
        for (const Control& control : window->controls)
            if ((slot.isForeground ? control.foreground : control.background) == color &&
                control.kind != Control::Kind::swatch)
                found.insert(window->name + "." + control.name);
    }
    std::string names;
    for (const std::string& name : found)
        names += name + ' ';
    return names;
}

std::string settingsWith(const std::string& value) {
    std::string settings = "[lark]\nload=1\ntrigger='\n";
    for (const Slot& slot : slots)
        settings += slot.key + "=" + value + "\n";
    return settings;
}

Color colorOf(VirtualMachine& machine, const Slot& slot) {
    const Control& control = machine.window("mp3s").control(slot.sample);
    return slot.isForeground ? control.foreground : control.background;
}

// Moves the three bars.
void mix(Window& colors, int redPart, int greenPart, int bluePart) {
    EXPECT_TRUE(moveSlider(colors, "HScroll1", redPart));
    EXPECT_TRUE(moveSlider(colors, "HScroll2", greenPart));
    EXPECT_TRUE(moveSlider(colors, "HScroll3", bluePart));
}

} // namespace

TEST(Colors, GoToTheirControlsAndStay) {
    VirtualMachine machine(Lines{});
    machine.owner("'color");
    Window& colors = machine.window("colors");
    int bluePart = 0;
    for (const Slot& slot : slots) {
        mix(colors, 7, 8, ++bluePart);
        const Color color = colors.control("Label1").background;
        EXPECT_TRUE(chooseRow(colors, "Combo1", bluePart + 1));
        EXPECT_TRUE(press(colors, "Command1"));
        EXPECT_EQ(showing(machine, slot, color), slot.atOnce);
        EXPECT_EQ(machine.setting(slot.key), std::to_string(color));
    }
    for (const bool isSameProcess : {true, false}) {
        if (!isSameProcess)
            machine.owner("'exit");
        isSameProcess ? machine.restart() : machine.start();
        bluePart = 0;
        for (const Slot& slot : slots) {
            const auto color = static_cast<Color>(7 + 256 * 8 + 65536 * ++bluePart);
            EXPECT_EQ(showing(machine, slot, color), slot.launcher + slot.atOnce);
        }
    }
}

TEST(Colors, AreThoseOfTheDesignWithoutAColorInTheSettings) {
    VirtualMachine machine;
    for (const std::string bad :
         {"", "red", "-1", "16777216", "1.5", "0x10", "1e2", "9999999999999"}) {
        machine.writeDataFile("larkspin.ini", settingsWith(bad));
        machine.start();
        for (const Slot& slot : slots)
            EXPECT_EQ(colorOf(machine, slot), slot.design) << slot.key << "=" << bad;
    }
    machine.writeDataFile("larkspin.ini", settingsWith("16777215.0"));
    machine.start();
    EXPECT_EQ(colorOf(machine, slots[0]), 16777215u);
    machine.loop.once(300ms, [&] { machine.writeDataFile("larkspin.ini", settingsWith("")); });
    machine.restart();
    for (const Slot& slot : slots)
        EXPECT_EQ(colorOf(machine, slot), slot.design) << slot.key << ": gone after the save";
}

TEST(ColorsWindow, MixesAColor) {
    VirtualMachine machine(Lines{});
    Window& colors = machine.window("colors");
    machine.chooseFromTray("cpc");
    const std::tuple<int, int, int, std::string, Color> mixtures[] = {
        {0, 0, 255, "0000FF", 0xFF0000},
        {1, 10, 16, "010A10", 0x100A01},
        {-70'000, 256, 70'000, "00FFFF", 0xFFFF00},
        {0, 0, 0, "000000", 0},
    };
    for (const auto& [redPart, greenPart, bluePart, digits, swatch] : mixtures) {
        mix(colors, redPart, greenPart, bluePart);
        EXPECT_EQ(colors.control("Label4").text(), digits.substr(0, 2));
        EXPECT_EQ(colors.control("Label5").text(), digits.substr(2, 2));
        EXPECT_EQ(colors.control("Label6").text(), digits.substr(4));
        EXPECT_EQ(colors.control("Text1").text(), "<font color=#" + digits + ">");
        EXPECT_EQ(colors.control("Label1").background, swatch);
    }
}

TEST(ColorsWindow, TakesStyleColorsFromTheText) {
    VirtualMachine machine(Lines{});
    Window& colors = machine.window("colors");
    machine.chooseFromTray("cpc");
    const std::pair<std::string, std::string> tags[] = {
        {"<font color=#00fF00>", "00fF00"},
        {"<font color=#>", ""},
        {"<font color=#1", ""},
        {"<font color=#1>", "1"},
        {"short", ""},
        {"<font color=#\u00E9a\u00E9", "\u00E9a"},
        {"<font color=#a\r\nb>", "a  b"},
        {"\u00E9\u00E9\u00E9\u00E9olor=#0102030405>", "2030405"},
    };
    const std::pair<int, std::string> styles[] = {{0, "ascii color"}, {1, "font color"}};
    for (const auto& [row, key] : styles) {
        chooseRow(colors, "Combo1", row);
        for (const auto& [tag, digits] : tags) {
            EXPECT_TRUE(editText(colors, "Text1", tag));
            EXPECT_TRUE(press(colors, "Command1"));
            EXPECT_EQ(machine.setting(key), digits) << tag;
        }
    }
    machine.forget();
    for (const char* nothing : {"", "no preset colors"}) {
        editText(colors, "Text1", nothing);
        press(colors, "Command1");
        EXPECT_EQ(std::exchange(machine.dialogs.boxes, {}),
                  Lines{"you should probably set a color first"});
    }
    EXPECT_EQ(machine.setting("font color"), "2030405");
}

TEST(ColorsWindow, BeginsEachRunAnew) {
    VirtualMachine machine(Lines{});
    Window& colors = machine.window("colors");
    converse(machine,
             {Turn("'color", "viewing color options"), Turn("'silent", "silent mode - <b>on")});
    EXPECT_TRUE(colors.visible);
    EXPECT_TRUE(colors.onTop);
    EXPECT_TRUE(press(colors, "Label3"));
    EXPECT_EQ(machine.answer("'color"),
              "[box] to use color options in silent mode go to other in the system tray menu");
    EXPECT_FALSE(colors.visible);
    machine.chooseFromTray("cpc");
    mouseDown(colors, "Label2");
    EXPECT_TRUE(colors.dragged);
    colors.place.left = 1;
    mix(colors, 1, 2, 3);
    chooseRow(colors, "Combo1", 0);
    machine.restart();
    EXPECT_FALSE(colors.visible);
    EXPECT_GT(colors.place.left, 1);
    EXPECT_EQ(colors.control("HScroll1").value(), 0);
    EXPECT_EQ(colors.control("Label1").background, black);
    EXPECT_EQ(colors.control("Text1").text(), "");
    EXPECT_EQ(colors.control("Combo1").rows->currentRow(), "play controls");
}

} // namespace larkspin
