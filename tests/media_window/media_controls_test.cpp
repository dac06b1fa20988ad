// What stands on the media window: how it is laid out, and what a hand finds there.
#include "media_window/media_frame.h"
#include "shell/window.h"
#include "support/media_machine.h"

#include <numeric>

namespace larkspin {

namespace {

bool overlap(const Place& a, const Place& b) {
    const bool beside = a.left + a.width <= b.left || b.left + b.width <= a.left;
    const bool below = a.top + a.height <= b.top || b.top + b.height <= a.top;
    return !beside && !below;
}

// In twips, on the safe side: of 8 points a blank takes 45, and what is wider than 105 is rare.
int widthOf(const std::string& text) {
    return std::accumulate(text.begin(), text.end(), 0,
                           [](int sum, char letter) { return sum + (letter == ' ' ? 45 : 105); });
}

} // namespace

TEST(MediaControls, StandSideBySideWithinTheWindow) {
    MediaMachine machine;
    AppState& state = machine.state();
    state.volumeCaption = "     volume:  100";
    state.tempoCaption = "       tempo:  200";
    state.fileCountLabel = "32767/32767 files - 1023.99kb";
    state.recCaption = recMarking;
    state.sectionSeconds = "3600";
    const std::vector<Control>& controls = machine.mp3s().controls;
    for (std::size_t one = 0; one < controls.size(); ++one) {
        const Control& control = controls[one];
        SCOPED_TRACE(control.name);
        EXPECT_GE(control.place.left, 0);
        EXPECT_LE(control.place.left + control.place.width, MediaFrame::width);
        EXPECT_LE(control.place.top + control.place.height, MediaFrame::fullHeight);
        if (control.text)
            EXPECT_LE(widthOf(control.text()), control.place.width);
        for (std::size_t other = 0; other < one; ++other)
            EXPECT_FALSE(overlap(control.place, controls[other].place)) << controls[other].name;
    }
    machine.pressTwice("mediaCaption");
    for (const Control& control : controls)
        EXPECT_EQ(isOnWindow(machine.mp3s(), control),
                  control.name == "mediaCaption" || control.name == "closeButton");
}

TEST(MediaControls, TellWhatTheyAreInTheTitle) {
    MediaMachine machine;
    for (const char* name :
         {"prevButton", "nextButton", "pauseButton", "playButton", "openButton"}) {
        EXPECT_TRUE(hover(machine.mp3s(), name));
        EXPECT_EQ(machine.shown("mediaCaption"), "  " + machine.mp3s().control(name).spoken);
        EXPECT_EQ(machine.mp3s().control(name).foreground, red) << name;
    }
    EXPECT_EQ(machine.shown("mediaCaption"), "  open a media file");
    for (const char* name : {"playlistView", "closeButton"}) {
        hover(machine.mp3s(), name);
        EXPECT_EQ(machine.shown("mediaCaption"), "  [double click or press delete]") << name;
    }
}

TEST(MediaControls, OpenTheSortListAsASubmenu) {
    MediaMachine machine;
    machine.press("Command3");
    for (const MenuEntry& entry : machine.desktop.popup->entries())
        EXPECT_EQ(entry.isSubmenu, entry.name == "sorl") << entry.name;
}

TEST(MediaControls, MoveTheSlidersWithinTheirRange) {
    MediaMachine machine;
    moveSlider(machine.mp3s(), "HScroll2", -1);
    EXPECT_TRUE(machine.player.mute);
    moveSlider(machine.mp3s(), "HScroll2", 40);
    EXPECT_EQ(machine.shown("volumeCaption"), "     volume:  40");
    EXPECT_EQ(machine.player.volume, -1800);
    EXPECT_FALSE(machine.player.mute);
    moveSlider(machine.mp3s(), "HScroll3", 201);
    EXPECT_EQ(machine.shown("tempoCaption"), "       tempo:  200");
    EXPECT_DOUBLE_EQ(machine.player.rate, 2);
    machine.owner("'volume 70");
    EXPECT_EQ(machine.mp3s().control("HScroll2").value(), 70);
}

} // namespace larkspin
