// The colours of the windows, and the window that sets them.
#include "app/program.h"
#include "shell/control_events.h"
#include "support/talk.h"

#include <algorithm>

namespace larkspin {

namespace {

// A slot of the window, from its third one on, and what takes its colour; a window without a
// control for its own background. The launcher's controls take it at a start only.
struct Slot {
    std::string key;
    bool isForeground;
    Color design;
    Lines atOnce, launcher;
};

const std::vector<Slot> slots{
    {"titlebar words",
     true,
     aqua,
     {"colors.Label2", "colors.Label3", "larkmain.closeLabel", "larkmain.commandsTitle",
      "mp3s.closeButton", "mp3s.mediaCaption", "notez.Label1", "notez.Label5"},
     {"appz.Label1", "appz.Label2"}},
    {"titlebar",
     false,
     black,
     {"colors.Label2", "larkmain.commandsTitle", "mp3s.closeButton", "mp3s.mediaCaption",
      "mp3s.nextButton", "mp3s.openButton", "mp3s.pauseButton", "mp3s.playButton",
      "mp3s.prevButton", "notez.Label1", "stops.label"},
     {"appz.Label1"}},
    {"words/labels",
     true,
     aqua,
     {"colors.Combo1", "colors.Text1", "larkmain.choiceList", "larkmain.commandNames",
      "larkmain.commandText", "mp3s.fileCountLabel", "mp3s.playlistTitle", "mp3s.playlistView",
      "mp3s.renameLabel", "mp3s.sectionSeconds", "mp3s.tempoCaption", "mp3s.volumeCaption",
      "notez.Label2", "notez.Label3", "notez.Label4", "notez.Label6", "notez.List2", "notez.Text1",
      "stops.label"},
     {"appz.Label3", "appz.List1", "appz.Text1"}},
    {"background",
     false,
     black,
     {"colors", "colors.Combo1", "colors.Text1", "larkmain.choiceList", "larkmain.commandNames",
      "larkmain.commandText", "mp3s", "mp3s.playlistView", "mp3s.renameLabel",
      "mp3s.sectionSeconds", "mp3s.tempoCaption", "mp3s.volumeCaption", "notez", "notez.List2",
      "notez.Text1"},
     {"appz.List1", "appz.Text1"}},
    {"play controls",
     true,
     red,
     {"mp3s.nextButton", "mp3s.openButton", "mp3s.pauseButton", "mp3s.playButton",
      "mp3s.prevButton"},
     {}},
};

Lines everything(const Slot& slot) {
    Lines all = slot.launcher;
    all.insert(all.end(), slot.atOnce.begin(), slot.atOnce.end());
    return all; // in order: the launcher's window is the first one by name
}

// What shows that colour, in order; the swatch aside.
Lines showing(VirtualMachine& machine, const Slot& slot, Color color) {
    Lines found;
    for (const Window* window : machine.program->windows()) {
        if (!slot.isForeground && window->background == color)
            found.push_back(window->name);
        for (const Control& control : window->controls) {
            const bool isSwatch = control.kind == Control::Kind::swatch;
            const Color shown = slot.isForeground ? control.foreground : control.background;
            if (shown == color && !isSwatch)
                found.push_back(window->name + "." + control.name);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string settingsWith(const std::string& value) {
    std::string settings = "[lark]\nload=1\ntrigger='\n";
    for (const Slot& slot : slots)
        settings += slot.key + "=" + value + "\n";
    return settings;
}

Color colorOf(VirtualMachine& machine, const Slot& slot) {
    const Control& control =
        machine.window("mp3s").control(slot.key.starts_with("title")             ? "mediaCaption"
                                       : slot.isForeground && slot.design == red ? "openButton"
                                                                                 : "playlistView");
    return slot.isForeground ? control.foreground : control.background;
}

Color mixed(int bluePart) {
    return 7 + 256 * 8 + 65536 * static_cast<Color>(bluePart);
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
    for (int index = 0; index < 5; ++index) {
        const Slot& slot = slots[static_cast<std::size_t>(index)];
        const Color color = mixed(index + 1);
        mix(colors, 7, 8, index + 1);
        EXPECT_TRUE(chooseRow(colors, "Combo1", index + 2));
        EXPECT_TRUE(press(colors, "Command1"));
        EXPECT_EQ(showing(machine, slot, color), slot.atOnce);
        EXPECT_EQ(machine.setting(slot.key), std::to_string(color));
    }
    for (const bool isRestart : {true, false}) {
        if (isRestart) {
            machine.restart();
        } else {
            machine.owner("'exit");
            machine.start();
        }
        for (std::size_t index = 0; index < 5; ++index) {
            const Color color = mixed(static_cast<int>(index) + 1);
            EXPECT_EQ(showing(machine, slots[index], color), everything(slots[index]));
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
    for (const std::string good : {"16777215", "+16777215.0"}) {
        machine.writeDataFile("larkspin.ini", settingsWith(good));
        machine.start();
        for (const Slot& slot : slots)
            EXPECT_EQ(colorOf(machine, slot), 16777215u) << slot.key << "=" << good;
    }
    machine.loop.once(300ms, [&] { machine.writeDataFile("larkspin.ini", settingsWith("")); });
    machine.restart();
    for (const Slot& slot : slots)
        EXPECT_EQ(colorOf(machine, slot), slot.design) << slot.key << ": gone behind the save";
}

TEST(ColorsWindow, MixesAColor) {
    VirtualMachine machine(Lines{});
    Window& colors = machine.window("colors");
    machine.chooseFromTray("cpc");
    const struct {
        int bars[3];
        std::string digits[3];
        Color swatch;
    } mixtures[] = {
        {{0, 0, 255}, {"00", "00", "FF"}, 0xFF0000},
        {{1, 10, 16}, {"01", "0A", "10"}, 0x100A01},
        {{-70'000, 256, 70'000}, {"00", "FF", "FF"}, 0xFFFF00},
        {{0, 0, 0}, {"00", "00", "00"}, 0},
    };
    for (const auto& [bars, digits, swatch] : mixtures) {
        mix(colors, bars[0], bars[1], bars[2]);
        EXPECT_EQ(colors.control("Label4").text(), digits[0]);
        EXPECT_EQ(colors.control("Label5").text(), digits[1]);
        EXPECT_EQ(colors.control("Label6").text(), digits[2]);
        EXPECT_EQ(colors.control("Text1").text(),
                  "<font color=#" + digits[0] + digits[1] + digits[2] + ">");
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
    EXPECT_EQ(machine.setting("play controls"), "");
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
