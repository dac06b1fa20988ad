#include "media_window/media_controls.h"

#include "media_window/media_window.h"
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

// A button with a glyph. Screen readers call it by the hint that the title label shows for it.
Control playButton(MediaFrame& frame, int left, std::string called, Control described) {
    described.place = {left, playRow, 330, rowHeight};
    described.foreground = red;
    described.onMouseMove = [&frame, hint = "  " + called] { frame.hint(hint); };
    described.spoken = std::move(called);
    return button(std::move(described));
}

Controls strip(EventLoop& loop, AppState& state, MediaFrame& frame) {
    return {
        titleStrip(loop, frame.mp3s,
                   {.name = "mediaCaption",
                    .text = shows(state.mediaCaption),
                    .onDoubleClick = [&frame] { frame.toggleHeight(); },
                    .onMouseMove = [&frame] { frame.hintOfTitle(); }}),
        closeLabel(frame.mp3s, {.name = "closeButton"}),
    };
}

Controls playButtons(AppState& state, MediaFrame& frame, TransportButtons& buttons) {
    return {
        playButton(frame, 0, "previous song",
                   {.name = "prevButton",
                    .text = caption("  <"),
                    .onClick = [&buttons] { buttons.previous(); }}),
        playButton(frame, 330, "stop/play",
                   {.name = "playButton",
                    .text = shows(state.playMark),
                    .onClick = [&buttons] { buttons.stopOrPlay(); }}),
        playButton(frame, 660, "pause/resume",
                   {.name = "pauseButton",
                    .font = {.family = "Symbol"},
                    .text = shows(state.pauseMark),
                    .onClick = [&buttons] { buttons.pauseOrResume(); }}),
        playButton(frame, 990, "next song",
                   {.name = "nextButton",
                    .text = caption("  >"),
                    .onClick = [&buttons] { buttons.next(); }}),
        playButton(frame, 1320, "open a media file",
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

Controls tools(MediaWindow& window) {
    return {
        button({.name = "Command1",
                .place = {0, toolRow, 420, rowHeight},
                .text = caption("file"),
                .onClick = [&window] { window.fileMenu.popUp(); }}),
        button({.name = "Command2",
                .place = {420, toolRow, 420, rowHeight},
                .text = caption("edit"),
                .onClick = [&window] { window.editMenu.popUp(); }}),
        button({.name = "Command3",
                .place = {840, toolRow, 405, rowHeight},
                .text = caption("ops"),
                .onClick = [&window] { window.opsMenu.popUp(); }}),
        button({.name = "Command5",
                .place = {1245, toolRow, 405, rowHeight},
                .spoken = "refresh",
                .text = caption("ref"),
                .onClick = [&window] { window.refreshButton.press(); }}),
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

// Escape leaves one row of several selected. It doesn't hide the player: whoever strikes it here
// means the rows.
void strikeRows(AppState& state, SongFiles& songFiles, Key key) {
    if (key == Key::del)
        songFiles.deleteShown();
    if (key == Key::escape && !state.playlistView.choose(state.playlistView.currentIndex()))
        state.playlistView.clearSelection();
}

Controls list(AppState& state, MediaWindow& window, Playback& playback) {
    return {
        listBox(
            {.name = "playlistView",
             .place = {0, listTop, MediaFrame::width, lastRow - listTop - 15},
             .spoken = "songs",
             .rows = &state.playlistView,
             .selectsMany = true,
             .markedRow = [&song = playback.songInPlay] { return song.row(); },
             .markedAs = "in play",
             .onClick = [&window] { window.list.tellSize(); },
             .onDoubleClick = [&window] { window.list.startClicked(); },
             .onMouseMove = [&window] { window.frame.hint("  [double click or press delete]"); },
             .onKey = [&state,
                       &files = playback.songFiles](Key key) { strikeRows(state, files, key); },
             .onMenu = [&window] { window.rowMenu.popUp(); },
             .keepsEscape = true}),
        label({.name = "fileCountLabel",
               .place = {0, lastRow, 3750, rowHeight},
               .text = shows(state.fileCountLabel)}),
        button({.name = "renameLabel",
                .place = {3780, lastRow, 720, rowHeight},
                .text = caption(" rename"),
                .onClick = [&files = playback.songFiles] { files.renameShown(); }}),
    };
}

} // namespace

std::vector<Control> mediaControls(const Core& core, MediaWindow& window, Playback& playback) {
    AppState& state = core.state;
    // The controls are listed from top to bottom, which is also the order in which Tab goes through
    // them.
    Controls all;
    for (Controls& part :
         std::vector<Controls>{strip(core.loop, state, window.frame),
                               playButtons(state, window.frame, playback.transportButtons),
                               slidersOf(state, playback.sliders), tools(window),
                               headOfList(state, playback.section), list(state, window, playback)})
        std::move(part.begin(), part.end(), std::back_inserter(all));
    return all;
}

} // namespace larkspin
