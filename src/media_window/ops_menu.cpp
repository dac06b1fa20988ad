#include "media_window/ops_menu.h"

#include "library/playlist_commands.h"
#include "library/playlist_row.h"
#include "media_window/behind_splash.h"
#include "shell/data_directory.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"

namespace larkspin {

namespace {

const FileType playlistType{"larkspin playlist files (*.lkl)", "*.lkl"};

std::string withEnding(std::string name) {
    // A dot at the beginning or the end of a name begins no ending.
    const auto dot = name.rfind('.');
    const bool hasNone = dot == std::string::npos || dot == 0 || dot == name.size() - 1;
    if (hasNone)
        name.append(name.ends_with('.') ? "lkl" : ".lkl");
    return name;
}

} // namespace

void OpsMenu::popUp() {
    desktop_.popUp({.name = "opsz2", .entries = [this] { return entries(); }});
}

// The list is always sorted by its rows, so the sort entries have nothing to do.
std::vector<MenuEntry> OpsMenu::entries() {
    return {
        {.name = "nlis", .caption = "new playlist", .action = [this] { playlists_.startAnew(); }},
        {.name = "loadlis", .caption = "load playlist", .action = [this] { load(); }},
        {.name = "savlis", .caption = "save playlist", .action = [this] { save(); }},
        separator("c"),
        {.name = "sorl",
         .caption = "sort list",
         .children = {{.name = "alphab", .caption = "alphabetical"},
                      {.name = "randp", .caption = "randomize"},
                      {.name = "direc", .caption = "directory"}},
         .isSubmenu = true}};
}

void OpsMenu::load() {
    const auto path = dialogs_.openFile(
        {.title = "load a playlist", .types = {playlistType}, .directory = directory_.path()});
    if (path)
        behindSplash_.run([&] { playlists_.loadFile(*path); });
}

// Whatever directory was chosen, the file goes into the data directory.
void OpsMenu::save() {
    const auto path = dialogs_.saveFile(
        {.title = "save a playlist", .types = {playlistType}, .directory = directory_.path()});
    const std::string name = path ? songOfPath(*path).title() : "";
    if (!name.empty())
        playlists_.saveAs(withEnding(name));
}

} // namespace larkspin
