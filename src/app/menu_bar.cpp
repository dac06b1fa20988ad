#include "app/menu_bar.h"

#include "app/about_boxes.h"
#include "app/first_steps.h"
#include "app/menu_parts.h"
#include "app/program.h"
#include "companions/launching.h"
#include "irc/client/all_rooms.h"
#include "shell/dialogs.h"
#include "text/visible.h"

#include <utility>

namespace larkspin {

namespace {

using BarEntries = std::vector<MenuEntry>;

constexpr int volumeStep = 10;

Task running(const MenuBarNeeds& needs, std::string line) {
    return [run = needs.run, line = std::move(line)] { run(line); };
}

// A network is one of those that there are as the menu opens, and may have gone when it is chosen:
// the words look it up by its name.
BarEntries networkEntries(const MenuBarNeeds& needs) {
    BarEntries entries;
    for (const auto& network : needs.rooms.networks.all()) {
        if (!network->isKnown())
            continue;
        const bool isOn = network->client.isOn();
        const std::string& name = network->name();
        const std::string number = std::to_string(entries.size());
        MenuEntry each =
            submenu("network" + number, visibleName(name) + (isOn ? " (on)" : ""),
                    {isOn ? entry("off" + number, "leave it", running(needs, "/disconnect " + name))
                          : entry("on" + number, "go there", running(needs, "/connect " + name))});
        if (!isOn)
            each.children.push_back(
                entry("forget" + number, "forget it", running(needs, "/networks forget " + name)));
        entries.push_back(std::move(each));
    }
    if (entries.empty())
        entries.push_back(label("nonetwork", "none is known yet"));
    return entries;
}

void join(const MenuBarNeeds& needs) {
    const auto room =
        needs.program.machine.dialogs.askText({.title = "join a room",
                                               .prompt = "which room? after it may stand its key",
                                               .preset = "#"});
    if (room)
        needs.run("/join " + *room);
}

MenuEntry switchEntry(const MenuBarNeeds& needs, const char* word, const char* caption, bool isOn) {
    MenuEntry each =
        entry(word, caption, running(needs, '/' + std::string(word) + (isOn ? " off" : " on")));
    each.checked = isOn;
    return each;
}

// For a front end without a dialog for them.
BarEntries preferenceEntries(const MenuBarNeeds& needs) {
    const Preferences& preferences = needs.rooms.preferences;
    BarEntries colors;
    for (const char* const name : roomColorNames) {
        colors.push_back(entry(name, name, running(needs, "/colours " + std::string(name))));
        colors.back().checked = name == roomColorNames[static_cast<int>(preferences.colors())];
    }
    return {switchEntry(needs, "stamps", "show when a line was said", preferences.showsStamps()),
            switchEntry(needs, "namecolours", "a colour for each name", preferences.colorsNames()),
            switchEntry(needs, "notifications", "tell when you are called", preferences.notifies()),
            switchEntry(needs, "log", "write what is said down in a log", needs.rooms.log.isOn()),
            submenu("colours", "colours", std::move(colors))};
}

BarEntries roomEntries(const MenuBarNeeds& needs) {
    AllRooms& rooms = needs.rooms;
    BarEntries entries;
    if (needs.connect)
        entries.push_back(entry("connect", "connect...", needs.connect));
    entries.push_back(submenu("networks", "networks", networkEntries(needs)));
    const bool hasWindows = rooms.windows.isOn();
    entries.push_back(
        entry("windows", hasWindows ? "leave the client in Wine" : "a client in Wine",
              running(needs, hasWindows ? "/disconnect windows" : "/connect windows")));
    if (rooms.networks.isOnAny())
        entries.push_back(entry("join", "join a room...", [needs] { join(needs); }));
    const Conversation& front = rooms.conversations.front();
    if (!front.isAtHome() && !(rooms.windows.owns(front) && front.isOpen))
        entries.push_back(entry("leave", "leave " + rooms.conversations.fullName(front),
                                running(needs, "/leave")));
    entries.insert(entries.end(),
                   {separator("r1"),
                    needs.preferences
                        ? entry("preferences", "preferences...", needs.preferences)
                        : submenu("preferences", "preferences", preferenceEntries(needs)),
                    separator("r2"), entry("quit", "quit", running(needs, "/quit"))});
    return entries;
}

BarEntries playlistMenu(Program& p) {
    BarEntries entries = playlistEntries(p);
    for (MenuEntry& each :
         BarEntries{separator("pl"),
                    entry("newlist", "new", [&p] { p.library.playlistCommands.startAnew(); }),
                    entry("loadlist", "load...", [&p] { p.mediaWindow.opsMenu.load(); }),
                    entry("savelist", "save...", [&p] { p.mediaWindow.opsMenu.save(); })})
        entries.push_back(std::move(each));
    return entries;
}

BarEntries musicEntries(const MenuBarNeeds& needs) {
    Program& p = needs.program;
    return {entry("addfolder", "add folder...", running(needs, FirstSteps::addingWord)),
            entry("addfiles", "add files...", [&p] { p.library.adding.addFiles(); }),
            separator("m1"),
            submenu("playlists", "playlists", playlistMenu(p)),
            submenu("filter", "filter", p.library.mediaFilter.menu()),
            entry("refresh", "refresh", [&p] { p.mediaWindow.refreshButton.press(); })};
}

BarEntries volumeEntries(Program& p) {
    const int now = p.playback.remote.view().volume;
    BarEntries entries;
    for (int volume = Sliders::mostVolume; volume >= 0; volume -= volumeStep) {
        MenuEntry each = entry("volume" + std::to_string(volume), std::to_string(volume),
                               [&p, volume] { p.playback.sliders.moveVolume(volume); });
        each.checked = volume == now;
        entries.push_back(std::move(each));
    }
    return entries;
}

BarEntries playEntries(Program& p) {
    SongInPlay& song = p.playback.songInPlay; // as the bar in the room has it
    const bool plays = song.view().status == SongView::Status::playing;
    PlayModes& modes = p.playback.modes;
    return {entry("previous", "previous", [&song] { song.previous(); }),
            entry("playpause", plays ? "pause" : "play", [&song] { song.playOrPause(); }),
            entry("next", "next", [&song] { song.next(); }),
            entry("stop", "stop", [&p] { p.playback.remote.stop(); }),
            separator("s1"),
            submenu("volume", "volume", volumeEntries(p)),
            separator("s2"),
            modes.repeatEntry(),
            modes.shuffleEntry(),
            modes.continuousEntry()};
}

// The stop window and the splash come and go by themselves. So choosing these only hides them.
BarEntries windowEntries(Program& p) {
    const std::pair<const char*, Task> kinds[] = {
        {"media", [&p] { p.mediaWindow.list.show(); }},
        {"commands", [&p] { p.chat.commandsWindow.showcommands(); }},
        {"stop", [] {}},
        {"notes", [&p] { p.companions.notesWindow.show(); }},
        {"apps", [&p] { p.companions.launcherWindow.show(); }},
        {"colors", [&p] { p.companions.colorsWindow.show(); }},
        {"splash", [] {}},
    };
    BarEntries entries;
    for (Window* const window : p.windows()) {
        const auto& [caption, show] = kinds[entries.size()];
        const bool isSeen = isInSight(*window);
        MenuEntry each = entry(window->name, caption, [window, isSeen, show = show] {
            if (isSeen)
                window->visible = false;
            else
                show();
        });
        each.checked = isSeen;
        entries.push_back(std::move(each));
    }
    return entries;
}

void openManual(const MenuBarNeeds& needs) {
    const bool isOpened =
        !needs.manual.empty() && needs.program.machine.launching.open(needs.manual);
    if (!isOpened)
        needs.program.machine.dialogs.box("the manual couldn't be opened: it is the file "
                                          "docs/manual.md of larkspin");
}

BarEntries helpEntries(const MenuBarNeeds& needs) {
    Program& p = needs.program;
    return {entry("firststeps", "first steps",
                  [&steps = needs.firstSteps] { steps.askFor(!steps.areAskedFor()); }),
            entry("topics", "words by topics", running(needs, "/help")),
            entry("commands", "all commands", [&p] { p.chat.commandsWindow.showcommands(); }),
            entry("manual", "the manual", [needs] { openManual(needs); }),
            separator("h1"),
            entry("about", "about larkspin", [&p] { boxAbout(p.machine.dialogs); })};
}

} // namespace

std::vector<Menu> menuBar(const MenuBarNeeds& needs) {
    return {{.name = "room", .entries = [needs] { return roomEntries(needs); }},
            {.name = "music", .entries = [needs] { return musicEntries(needs); }},
            {.name = "play", .entries = [&p = needs.program] { return playEntries(p); }},
            {.name = "windows", .entries = [&p = needs.program] { return windowEntries(p); }},
            {.name = "help", .entries = [needs] { return helpEntries(needs); }}};
}

} // namespace larkspin
