#include "playback/media_controls.h"

#include "playback/playback.h"
#include "shell/app_state.h"
#include "shell/controls.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace larkspin {

namespace {

using Controls = std::vector<Control>;

// Twips. From the title strip down: playing and loudness, tools and tempo, which playlist it is and
// the section, the list itself, and what is known of the row that was clicked.
constexpr int rowHeight = 285;
constexpr int playRow = 330, toolRow = 630, headRow = 930, listTop = 1230, lastRow = 2235;
constexpr int captionLeft = 1680, captionWidth = 1785;
constexpr int sliderLeft = 3480, sliderWidth = 1020;

// A glyph, which is called by what the title label tells of it.
Control playButton(MediaWindow& window, int left, std::string called, Control described) {
    described.place = {left, playRow, 330, rowHeight};
    described.foreground = red;
    described.onMouseMove = [&window, hint = "  " + called] { window.hint(hint); };
    described.spoken = std::move(called);
    return button(std::move(described));
}

Controls strip(EventLoop& loop, AppState& state, MediaWindow& window) {
    return {
        titleStrip(loop, window.mp3s,
                   {.name = "mediaCaption",
                    .text = shows(state.mediaCaption),
                    .onDoubleClick = [&window] { window.toggleHeight(); },
                    .onMouseMove = [&window] { window.hintOfTitle(); }}),
        closeLabel(window.mp3s, {.name = "closeButton"}),
    };
}

Controls playButtons(AppState& state, MediaWindow& window, TransportButtons& buttons) {
    return {
        playButton(window, 0, "previous song",
                   {.name = "prevButton",
                    .text = caption("  <"),
                    .onClick = [&buttons] { buttons.previous(); }}),
        playButton(window, 330, "stop/play",
                   {.name = "playButton",
                    .text = shows(state.playMark),
                    .onClick = [&buttons] { buttons.stopOrPlay(); }}),
        playButton(window, 660, "pause/resume",
                   {.name = "pauseButton",
                    .font = {.family = "Symbol"},
                    .text = shows(state.pauseMark),
                    .onClick = [&buttons] { buttons.pauseOrResume(); }}),
        playButton(window, 990, "next song",
                   {.name = "nextButton",
                    .text = caption("  >"),
                    .onClick = [&buttons] { buttons.next(); }}),
        playButton(window, 1320, "open a media file",
                   {.name = "openButton",
                    .font = {.family = "Webdings"},
                    .text = caption(" \u00EA"), // a folder in that font
                    .onClick = [&buttons] { buttons.openFile(); }}),
    };
}

Controls slidersOf(AppState& state, Sliders& sliders) {
    return {
        label({.name = "volumeCaption",
               .place = {captionLeft, playRow, captionWidth, rowHeight},
               .text = shows(state.volumeCaption)}),
        slider({.name = "HScroll2",
                .place = {sliderLeft, playRow, sliderWidth, rowHeight},
                .spoken = "volume",
                .value = [&state] { return state.HScroll2; },
                .most = Sliders::mostVolume,
                .onChange = [&sliders](int value) { sliders.moveVolume(value); }}),
        label({.name = "tempoCaption",
               .place = {captionLeft, toolRow, captionWidth, rowHeight},
               .text = shows(state.tempoCaption)}),
        slider({.name = "HScroll3",
                .place = {sliderLeft, toolRow, sliderWidth, rowHeight},
                .spoken = "tempo",
                .value = [&state] { return state.HScroll3; },
                .most = Sliders::mostTempo,
                .onChange = [&sliders](int value) { sliders.moveTempo(value); }}),
    };
}

Controls tools(Playback& p) {
    return {
        button({.name = "Command1",
                .place = {0, toolRow, 420, rowHeight},
                .text = caption("file"),
                .onClick = [&p] { p.fileMenu.popUp(); }}),
        button({.name = "Command2",
                .place = {420, toolRow, 420, rowHeight},
                .text = caption("edit"),
                .onClick = [&p] { p.editMenu.popUp(); }}),
        button({.name = "Command3",
                .place = {840, toolRow, 405, rowHeight},
                .text = caption("ops"),
                .onClick = [&p] { p.opsMenu.popUp(); }}),
        button({.name = "Command5",
                .place = {1245, toolRow, 405, rowHeight},
                .spoken = "refresh",
                .text = caption("ref"),
                .onClick = [&p] { p.refreshButton.press(); }}),
    };
}

Controls headOfList(AppState& state, SectionRepeat& section) {
    return {
        label({.name = "playlistTitle",
               .place = {0, headRow, 3600, rowHeight},
               .text = shows(state.playlistTitle)}),
        button({.name = "Command6",
                .place = {3630, headRow, 420, rowHeight},
                .text = shows(state.recCaption),
                .onClick = [&section] { section.press(); }}),
        label({.name = "sectionSeconds",
               .place = {4080, headRow, 420, rowHeight},
               .text = shows(state.sectionSeconds)}),
    };
}

Controls list(AppState& state, Playback& p) {
    return {
        listBox({.name = "playlistView",
                 .place = {0, listTop, MediaWindow::width, lastRow - listTop - 15},
                 .rows = &state.playlistView,
                 .selectsMany = true,
                 .onClick = [&p] { p.mediaList.tellSize(); },
                 .onDoubleClick = [&p] { p.mediaList.startClicked(); },
                 .onMouseMove = [&p] { p.mediaWindow.hint("  [double click or press delete]"); },
                 .onKey =
                     [&p](Key key) {
                         if (key == Key::del)
                             p.songFiles.deleteShown();
                     },
                 .onDrop = [&p](const auto& paths) { p.fileMenu.addDropped(paths); }}),
        label({.name = "fileCountLabel",
               .place = {0, lastRow, 3750, rowHeight},
               .text = shows(state.fileCountLabel)}),
        button({.name = "renameLabel",
                .place = {3780, lastRow, 720, rowHeight},
                .text = caption(" rename"),
                .onClick = [&p] { p.songFiles.renameShown(); }}),
    };
}

} // namespace

std::vector<Control> mediaControls(const Core& core, Playback& p) {
    AppState& state = core.state;
    Controls all;
    for (Controls& part : std::vector<Controls>{
             strip(core.loop, state, p.mediaWindow),
             playButtons(state, p.mediaWindow, p.transportButtons), slidersOf(state, p.sliders),
             tools(p), headOfList(state, p.section), list(state, p)})
        std::move(part.begin(), part.end(), std::back_inserter(all));
    return all;
}

} // namespace larkspin
