// A room's people as the chat client would show them: two lists of which one shows, a selected row
// in each, and buttons that act on it. So whatever works the client's room works this one
// unchanged.
#pragma once

#include "host/host_client.h"
#include "text/row.h"

#include <string>
#include <vector>

namespace larkspin {

class RoomPeople;

class RoomHandles {
public:
    explicit RoomHandles(RoomPeople& people) : people_(people) {}

    // As the client's own operations; a handle that is none of these does nothing.
    HostHandle findChatRoom() const;
    HostHandle peopleList() const;
    HostHandle ejectedList() const;
    void readHostList(HostHandle list, RowList& names, const std::string& leftOut);
    void selectHostRow(HostHandle list, int row);
    HostHandle findRoomIcon(const std::string& pattern) const; // never waits
    bool iconVisible(HostHandle icon) const;
    void holdIcon(HostHandle icon) { held_ = icon; }
    void releaseIcon(HostHandle icon);
    std::string controlText(HostHandle icon) const;

    // The owner has gone to another room: the people show, and what was read in the last one counts
    // no more.
    void showNewRoom();

private:
    // A row stands for whoever stood in it when the list was read: when others come or go after
    // that, the press must not hit the next one.
    struct List {
        std::vector<Row> read;
        std::string selected;
    };

    List* listOf(HostHandle list);
    void press(HostHandle icon);

    RoomPeople& people_;
    List peopleRows_, ejectedRows_;
    bool showsEjected_ = false;
    HostHandle held_ = noHandle;
};

} // namespace larkspin
