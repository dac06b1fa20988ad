// The rooms on a desktop: the one that the owner is in, its window, the words with a slash, and
// what outlives a run.
#pragma once

#include "host/line_history.h"
#include "host/slash_words.h"
#include "irc/client/all_rooms.h"
#include "irc/client/owners_lines.h"
#include "irc/client/password_prompt.h"
#include "irc/client/people_menu.h"
#include "platform/qt/room/room_looks.h"
#include "platform/qt/room/room_window.h"
#include "shell/data_directory.h"

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class KeptFiles;

class QtRoom : private PasswordPrompt {
public:
    // Lines said in the rooms come in through `lines`. Networks are reached by such connections.
    QtRoom(EventLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
           KeptFiles& files, const DataDirectory& directory, const std::string& screenName);
    ~QtRoom() override { loop_.cancel(keeping_); }

    // What Tab makes of a line that isn't one of the words with a slash.
    void completeBy(LineTyping::Complete complete);

    // Shows the window, with the focus on the line to type in.
    void show() { window.bringForward(); }

    // From now on lines are taken, also those that have been typed before; `/quit` calls the task.
    // A network that the last run was on is connected to.
    void open(Task quit);

    // Whether the window can be brought back from a tray, where closing is to hide it there.
    void hideInTrayIf(std::function<bool()> hasTray) { hasTray_ = std::move(hasTray); }

    // Before `open`: which trigger the words for songs have.
    void triggerBy(std::function<std::string()> trigger) { trigger_ = std::move(trigger); }

    // Does what a line with a slash says, or says it, as if it had been typed.
    void does(const std::string& line) { lines_.does(line); }

    // What a click on a line means that is shown to be typed: it is said at home, and put into the
    // line to type in elsewhere.
    void offer(const std::string& line);

    // What the front end has to say itself.
    void tell(const std::string& text);

    // To be called as the process ends.
    void close();

    // Keeps the typed lines and the window's place for the next run, even if the window itself has
    // gone.
    void keep();

private:
    void placeChanged();
    void closeWindow();

    void ask(const std::string& prompt, std::function<void(std::string)> answered) override {
        window.askPassword(prompt, std::move(answered));
    }
    void dismiss() override { window.dismissPassword(); }

    EventLoop& loop_;
    KeptFiles& files_;
    std::string placeFile_;
    std::string place_; // of the window, when that has changed
    TimerId keeping_ = TimerId::none;
    LineHistory history_;
    std::function<std::string()> trigger_ = [] { return std::string("'"); };
    std::function<bool()> hasTray_ = [] { return false; };

public:
    AllRooms rooms;
    RoomWindow window{loop_, rooms.room, rooms.conversations, history_};
    RoomLooks looks{window, rooms.preferences};
    SlashWords words;

private:
    OwnersLines lines_{loop_, rooms, words};

public:
    PeopleMenu peopleMenu{rooms.conversations, rooms.own, rooms.networks,
                          [this](const std::string& line) { lines_.act(line); }};
};

} // namespace larkspin
