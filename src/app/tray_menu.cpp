#include "app/tray_menu.h"

#include "app/program.h"

#include <utility>

namespace larkspin {

namespace {

using Entries = std::vector<MenuEntry>;

MenuEntry submenu(std::string name, std::string caption, Entries children) {
    return {.name = std::move(name),
            .caption = std::move(caption),
            .children = std::move(children),
            .isSubmenu = true};
}

// Shows something; choosing it only closes the menu.
MenuEntry label(std::string name, std::string caption) {
    return {.name = std::move(name), .caption = std::move(caption)};
}

MenuEntry flag(std::string name, std::string caption, bool& value) {
    return {.name = std::move(name),
            .caption = std::move(caption),
            .action = [&value] { value = !value; },
            .checked = value};
}

void showMediaWindow(Program& p) {
    p.shell.state.setMasterIndex(p.playback.transport.resumeRow());
    p.playback.mediaWindow.mp3s.visible = true;
}

// Element 0 of the array is the separator; no two entries may bear one name.
Entries playlists(Program& p) {
    const AppState& state = p.shell.state;
    Entries entries{label("numl", state.numl), separator("p0")};
    for (const std::string& name : state.p)
        entries.push_back({.name = "p" + std::to_string(entries.size() - 1),
                           .caption = name,
                           .action = [&p, name] { p.library.playlistFiles.load(name); }});
    return entries;
}

Entries playerOptions(Program& p) {
    AppState& state = p.shell.state;
    PlayModes& modes = p.playback.modes;
    return {label("loads", state.loads),
            label("mpp", state.mpp),
            separator("d"),
            flag("silnt", "silent", state.silnt),
            modes.repeatEntry(),
            modes.continuousEntry(),
            modes.shuffleEntry(),
            {.name = "sinfo", .caption = "song info", .action = [&p] { p.status.boxSong(); }},
            separator("e"),
            {.name = "prtime",
             .caption = "total program runtime",
             .action = [&p] { p.status.boxRunTime(); }},
            {.name = "mptime", .caption = "total played mp3 time", .action = [&p] {
                 p.status.boxPlayedTime();
             }}};
}

Entries tree(Program& p) {
    AppState& state = p.shell.state;
    return {
        label("cancel", "cancel"),
        separator("a"),
        {.name = "mp3z",
         .caption = state.mp3z,
         .action =
             [&p] {
                 showMediaWindow(p);
                 keepontop(p.playback.mediaWindow.mp3s);
             }},
        label("playtz", state.playtz),
        submenu("plsts", "playlists", playlists(p)),
        submenu("pops", "player options", playerOptions(p)),
        submenu(
            "otherz", "other",
            {{.name = "fload",
              .caption = "first loaded",
              .action = [&p] { p.status.boxFirstLoad(); }},
             {.name = "epver", .caption = "lks version", .action = [&p] { p.status.boxVersion(); }},
             flag("spcol", "scan pc on load", state.spcol),
             flag("rol", "refresh on load", state.rol)}),
        submenu("mfilt", "media filter", p.library.mediaFilter.menu()),
        {.name = "scanpcf",
         .caption = state.scanpcf,
         .action = [&p] { p.library.adding.scanAndOffer(); }},
        {.name = "comz",
         .caption = "commands",
         .action = [&p] { p.chat.commandsWindow.showcommands(); }},
        {.name = "rstartp", .caption = "restart program", .action = [&p] { p.restart(); }},
        separator("b"),
        {.name = "exit", .caption = "exit", .action = [&p] { p.exit(); }},
    };
}

void toggleMediaWindow(Program& p) {
    Window& mp3s = p.playback.mediaWindow.mp3s;
    if (mp3s.visible)
        mp3s.visible = false;
    else
        showMediaWindow(p);
}

} // namespace

TrayIcon trayIcon(Program& program) {
    return {.menu = {.name = "file", .entries = [&program] { return tree(program); }},
            .onDoubleClick = [&program] { toggleMediaWindow(program); }};
}

} // namespace larkspin
