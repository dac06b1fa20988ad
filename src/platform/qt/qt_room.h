// The room of the owner's own on a desktop: the room, its window, the words with a slash, and what
// outlives a run.
#pragma once

#include "host/own_room.h"
#include "host/slash_words.h"
#include "platform/posix/line_history.h"
#include "platform/qt/room_window.h"
#include "shell/data_directory.h"

#include <string>
#include <vector>

namespace larkspin {

class Files;

class QtRoom : private ShownRoom {
public:
    // Lines said in the room come in through `lines`.
    QtRoom(EventLoop& loop, ChatLines& lines, Files& files, const DataDirectory& directory,
           const std::string& screenName);
    ~QtRoom() override { loop_.cancel(keeping_); }

    // What Tab makes of a line that is none of the words with a slash.
    void completeBy(InputLine::Complete complete);

    // With the focus on the line to type in.
    void show() { window.bringForward(); }

    // From now on lines are taken, also those that have been typed before; `/quit` calls the task.
    void open(Task quit);

    // Keeps the typed lines and the window's place for the next run. Needs no window that is still
    // there.
    void keep();

private:
    void take(const std::string& line);
    void help();
    void placeChanged();

    std::string name() const override { return room.roomName(); }
    std::string ownName() const override { return screenName_; }
    const RowList& people() const override { return room.people(); }
    bool isIgnored(std::string_view name) const override { return room.ignores(name); }

    EventLoop& loop_;
    Files& files_;
    std::string placeFile_, screenName_;
    std::string place_; // of the window, when that has changed
    TimerId keeping_ = TimerId::none;
    LineHistory history_;
    bool isOpen_ = false;
    std::vector<std::string> early_; // lines

public:
    RoomWindow window{loop_, *this, history_};
    OwnRoom room;
    SlashWords words;
};

} // namespace larkspin
