#include "app/tray_menu.h"

#include "app/about_boxes.h"
#include "app/menu_parts.h"
#include "app/program.h"

#include <utility>

namespace larkspin {

namespace {

using Entries = std::vector<MenuEntry>;

MenuEntry flag(std::string name, std::string caption, bool& value) {
    return {.name = std::move(name),
            .caption = std::move(caption),
            .action = [&value] { value = !value; },
            .checked = value};
}

Entries aol(Program& p) {
    return {entry("hidewel", "hide welcome", [&p] { p.host.chores.hideWelcome(); }),
            label("hplus", "hide aolplus"), // has never done anything
            separator("z"),
            entry("upzon", "upchat-on", [&p] { p.host.transfers.upzon(); }),
            entry("upzoff", "upchat-off", [&p] { p.host.transfers.upzoff(); }),
            entry("ustatz", "upload stats", [&p] { p.host.transfers.boxUpload(); }),
            separator("y"),
            entry("imo", "ims on", [&p] { p.host.chores.switchMessagesOn(); }),
            entry("imf", "ims off", [&p] { p.host.chores.switchMessagesOff(); })};
}

Entries playerOptions(Program& p) {
    AppState& state = p.shell.state;
    // The modes make their own entries, since choosing one does more than set a flag.
    PlayModes& modes = p.playback.modes;
    return {label("loads", state.loads),
            label("mpp", state.mpp),
            separator("d"),
            flag("silnt", "silent", state.silnt),
            modes.repeatEntry(),
            modes.continuousEntry(),
            modes.shuffleEntry(),
            entry("sinfo", "song info", [&p] { p.status.boxSong(); }),
            separator("e"),
            entry("prtime", "total program runtime", [&p] { p.status.boxRunTime(); }),
            entry("mptime", "total played mp3 time", [&p] { p.status.boxPlayedTime(); })};
}

Entries others(Program& p) {
    AppState& state = p.shell.state;
    return {entry("rstarts", "restart computer", [&p] { p.outside.machine.restartComputer(); }),
            separator("m"),
            entry("pcinf", "computer info", [&p] { p.outside.machine.boxComputer(); }),
            entry("winup", "windows uptime", [&p] { p.outside.machine.boxUptime(); }),
            entry("fload", "first loaded", [&p] { p.status.boxFirstLoad(); }),
            entry("epver", "lks version", [&p] { p.status.boxVersion(); }),
            entry("grtz", "greets", [&p] { boxGreets(p.machine.dialogs); }),
            flag("spcol", "scan pc on load", state.spcol),
            flag("rol", "refresh on load", state.rol),
            entry("cpc", "change colors", [&p] { p.companions.colorsWindow.show(); }),
            separator("j"),
            entry("shdown", "shutdown computer", [&p] { p.outside.machine.shutDownComputer(); })};
}

Entries tree(Program& p) {
    AppState& state = p.shell.state;
    return {label("cancel", "cancel"),
            separator("a"),
            entry("mp3z", state.mp3z,
                  [&p] {
                      p.mediaWindow.list.show();
                      keepontop(p.mediaWindow.frame.mp3s);
                  }),
            entry("noted", state.noted, [&p] { p.companions.notesWindow.show(); }),
            entry("appsz", state.appsz, [&p] { p.companions.launcherWindow.show(); }),
            label("playtz", state.playtz),
            submenu("plsts", "playlists", playlistEntries(p)),
            submenu("aeoel", "aol", aol(p)),
            submenu("pops", "player options", playerOptions(p)),
            submenu("otherz", "other", others(p)),
            submenu("mfilt", "media filter", p.library.mediaFilter.menu()),
            entry("wnew", "what's new", [&p] { boxWhatsNew(p.machine.dialogs); }),
            entry("kissu", "known issues", [&p] { boxKnownIssues(p.machine.dialogs); }),
            entry("scanpcf", state.scanpcf, [&p] { p.library.adding.scanAndOffer(); }),
            entry("comz", "commands", [&p] { p.chat.commandsWindow.showcommands(); }),
            entry("rstartp", "restart program", [&p] { p.restart(); }),
            separator("b"),
            entry("exit", "exit", [&p] { p.exit(); })};
}

void toggleMediaWindow(Program& p) {
    Window& mp3s = p.mediaWindow.frame.mp3s;
    if (isInSight(mp3s))
        mp3s.visible = false;
    else
        p.mediaWindow.list.show();
}

} // namespace

TrayIcon trayIcon(Program& program) {
    return {.menu = {.name = "file", .entries = [&program] { return tree(program); }},
            .onDoubleClick = [&program] { toggleMediaWindow(program); }};
}

} // namespace larkspin
