#include "playback/media_controls.h"

#include "library/adding.h"
#include "library/removing.h"
#include "playback/behind_splash.h"
#include "playback/media_window.h"
#include "playback/ops_menu.h"
#include "playback/refresh_button.h"
#include "playback/section_repeat.h"
#include "playback/song_files.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"

namespace larkspin {

std::vector<Control> MediaControls::list() {
    using Kind = Control::Kind;
    Window& mp3s = window_.mp3s;
    return {
        {.name = "mediaCaption",
         .place = {0, 0, 4170, 315},
         .text = [this] { return state_.mediaCaption; },
         .onDoubleClick = [this] { window_.toggleHeight(); },
         .onMouseDown = [this, &mp3s] { dragwindow(loop_, mp3s); },
         .onMouseMove = [this] { hint(resizeHint); }},
        {.name = "closeButton",
         .kind = Kind::button,
         .place = {4170, 0, 330, 315},
         .spoken = "close",
         .text = [] { return "  X"; },
         .onClick = [&mp3s] { mp3s.visible = false; }},
        {.name = "openButton",
         .kind = Kind::button,
         .place = {0, 345, 330, 285},
         .spoken = "open a media file",
         .font = {.family = "Webdings"},
         .foreground = red,
         .text = [] { return " \u00EA"; }, // a folder in that font
         .onClick = [this] { openFile(); },
         .onMouseMove = [this] { hint("  open a media file"); }},
        {.name = "Command1",
         .kind = Kind::button,
         .place = {360, 345, 420, 285},
         .text = [] { return "file"; },
         .onClick = [this] { popUpFileMenu(); }},
        {.name = "Command2",
         .kind = Kind::button,
         .place = {810, 345, 420, 285},
         .text = [] { return "edit"; },
         .onClick = [this] { popUpEditMenu(); }},
        {.name = "Command3",
         .kind = Kind::button,
         .place = {1260, 345, 420, 285},
         .text = [] { return "ops"; },
         .onClick = [this] { opsMenu_.popUp(); }},
        {.name = "Command5",
         .kind = Kind::button,
         .place = {1710, 345, 420, 285},
         .spoken = "refresh",
         .text = [] { return "ref"; },
         .onClick = [this] { refreshButton_.Command5_Click(); }},
        {.name = "renameLabel",
         .kind = Kind::button,
         .place = {2160, 345, 690, 285},
         .text = [] { return " rename"; },
         .onClick = [this] { songFiles_.renameShown(); }},
        {.name = "fileCountLabel",
         .place = {0, 2235, 4500, 285},
         .text = [this] { return state_.fileCountLabel; }},
        {.name = "sectionSeconds",
         .place = {3600, 345, 420, 285},
         .text = [this] { return state_.sectionSeconds; }},
        {.name = "Command6",
         .kind = Kind::button,
         .place = {4050, 345, 450, 285},
         .text = [this] { return state_.recCaption; },
         .onClick = [this] { section_.press(); }},
        {.name = "playlistView",
         .kind = Kind::list,
         .place = {0, 660, 4500, 1545},
         .rows = &state_.playlistView,
         .selectsMany = true,
         .onMouseMove = [this] { hint("  [double click or press delete]"); },
         .onKey =
             [this](Key key) {
                 if (key == Key::del)
                     songFiles_.deleteShown();
             }},
    };
}

// In the mini height the title label tells the song instead.
void MediaControls::hint(std::string_view text) {
    if (!window_.isMini())
        state_.mediaCaption = text;
}

void MediaControls::openFile() {
    const auto path = dialogs_.openFile(
        {.title = "Open a media file",
         .types = {{"media files (*.mid, *.mp3, *.wav, *.wma)", "*.mid;*.mp3;*.wav;*.wma"}}});
    if (path)
        transport_.openFromDisk(*path);
}

void MediaControls::popUpFileMenu() {
    desktop_.popUp({.name = "filez2", .entries = [this] {
                        return std::vector<MenuEntry>{{.name = "adstr",
                                                       .caption = "add string",
                                                       .action = [this] { addString(); }}};
                    }});
}

void MediaControls::addString() {
    const auto text = dialogs_.askText(
        {.title = "string adder", .prompt = "what string would you like to add to the playlist?"});
    if (text)
        behindSplash(loop_, splash_, window_.mp3s, [&] { adding_.addString(*text); });
}

void MediaControls::popUpEditMenu() {
    desktop_.popUp({.name = "editz2", .entries = [this] {
                        return std::vector<MenuEntry>{
                            {.name = "remfil",
                             .caption = "remove file(s)",
                             .action = [this] { removing_.removeSelected(); }},
                            {.name = "remal",
                             .caption = "remove all",
                             .action = [this] { removing_.removeAll(); }},
                            separator("e"),
                            {.name = "remstr", .caption = "remove string", .action = [this] {
                                 removeString();
                             }}};
                    }});
}

void MediaControls::removeString() {
    const auto text =
        dialogs_.askText({.title = "string remover",
                          .prompt = "what string would you like to remove to the playlist?"});
    if (text)
        behindSplash(loop_, splash_, window_.mp3s, [&] { removing_.removeString(*text); });
}

} // namespace larkspin
