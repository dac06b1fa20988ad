// The rooms on a terminal's screen: the one that the owner is in, how it is seen, the words with a
// slash, and what outlives a run.
#pragma once

#include "host/line_history.h"
#include "irc/client/all_rooms.h"
#include "irc/client/owners_lines.h"
#include "irc/client/password_prompt.h"
#include "irc/client/people_menu.h"
#include "platform/terminal/room/room_layer.h"
#include "platform/terminal/terminal_commands.h"
#include "platform/terminal/terminal_desktop.h"
#include "shell/data_directory.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class KeptFiles;

// What the room does with the screen that it is on.
struct RoomScreen {
    Layers& layers; // must live on
    std::function<void(const std::string& title)> setTitle;
    std::function<void(bool takes)> takeMouse; // rather than leave it to the terminal
    Task ring;
    std::function<void(const Menu& menu, const Cursor& at)> popUp;
    std::function<void(std::vector<Menu> bar, int row)> openMenus; // in a row of the screen
    Task pressed;                                                  // the owner presses something
};

class ScreenRoom : private PasswordPrompt {
public:
    // Lines said in the rooms come in through `lines`. Networks are reached by such connections.
    ScreenRoom(EventLoop& loop, RoomScreen screen, ChatLines& lines,
               IrcNetworks::MakeConnection connections, KeptFiles& files,
               const DataDirectory& directory, const std::string& screenName);

    // What Tab makes of a line that isn't one of the words with a slash.
    void completeBy(LineTyping::Complete complete);

    // From now on lines are taken, also those that have been typed before; their words work these
    // windows, and `/quit` calls the task. A network that the last run was on is connected to.
    void open(std::vector<Window*> windows, Task quit);

    // Does what a line with a slash says, or says it, as if it had been typed.
    void does(const std::string& line) { lines_.does(line); }

    // What a click on a line means that is shown to be typed: it is said at home, and put into the
    // line to type in elsewhere.
    void offer(const std::string& line);

    // Tells of a word with a slash, and begins a line with it if there is none yet.
    void helpToType(const std::string& word);

    // What the front end has to say itself, to the owner alone.
    void tell(const std::string& text);

    // The room's menus, in their order, and what opens a link.
    void setMenus(std::vector<Menu> menus) { menus_ = std::move(menus); }
    void openLinksBy(std::function<void(const std::string& address)> open) {
        openLink_ = std::move(open);
    }

    // To be called as the process ends. Gives what the owner is told only then, such as of lines
    // that couldn't be said any more: he doesn't see it here.
    std::vector<std::string> close();

private:
    RoomLayer::Tasks layerTasks();
    void begin(const std::string& line);
    SlashWord mouseWord();
    void tellHowToLeave();
    void showLooks();

    void ask(const std::string& prompt, std::function<void(std::string)> answered) override {
        layer.askPassword(prompt, std::move(answered));
    }
    void dismiss() override { layer.dismissPassword(); }

    RoomScreen screen_;
    LineHistory history_;
    std::vector<Menu> menus_;
    std::function<void(const std::string&)> openLink_ = [](const std::string&) {};
    bool takesMouse_ = true;

public:
    AllRooms rooms;
    TerminalDesktop desktop; // by words
    TerminalCommands commands;

private:
    OwnersLines lines_;

public:
    PeopleMenu peopleMenu;
    RoomLayer layer;
};

} // namespace larkspin
