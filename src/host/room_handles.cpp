#include "host/room_handles.h"

#include "host/room_people.h"
#include "text/row_list.h"
#include "text/wildcard.h"

#include <utility>

namespace larkspin {

namespace {

enum Handle : HostHandle {
    room = 1,
    people,
    ejected,
    ignoreButton,
    ejectButton,
    ejectedButton,
    allowButton,
    peopleButton
};

constexpr struct {
    Handle handle;
    const char* caption;
} buttons[] = {
    {ignoreButton, "Ignore"}, {ejectButton, "Eject Member"}, {ejectedButton, "Ejected Members"},
    {allowButton, "Allow"},   {peopleButton, "People Here"},
};

} // namespace

HostHandle RoomHandles::findChatRoom() const {
    return room;
}

HostHandle RoomHandles::peopleList() const {
    return people;
}

HostHandle RoomHandles::ejectedList() const {
    return ejected;
}

RoomHandles::List* RoomHandles::listOf(HostHandle list) {
    if (list == people)
        return &peopleRows_;
    return list == ejected ? &ejectedRows_ : nullptr;
}

void RoomHandles::readHostList(HostHandle list, RowList& names, const std::string& leftOut) {
    List* const rows = listOf(list);
    if (!rows)
        return;
    const RowList& now = list == people ? people_.people() : people_.ejected();
    rows->read.clear();
    for (int row = 0; row < now.count(); ++row) {
        rows->read.push_back(now.share(row));
        if (leftOut.empty() || now.row(row) != leftOut)
            names.add(now.share(row));
    }
}

void RoomHandles::selectHostRow(HostHandle list, int row) {
    List* const rows = listOf(list);
    if (!rows)
        return;
    const bool isInside = row >= 0 && std::cmp_less(row, rows->read.size());
    rows->selected = isInside ? rows->read[static_cast<std::size_t>(row)].text() : "";
}

HostHandle RoomHandles::findRoomIcon(const std::string& pattern) const {
    for (const auto& button : buttons)
        if (fits(button.caption, pattern))
            return button.handle;
    return noHandle;
}

std::string RoomHandles::controlText(HostHandle icon) const {
    for (const auto& button : buttons)
        if (button.handle == icon)
            return button.caption;
    return {};
}

bool RoomHandles::iconVisible(HostHandle icon) const {
    switch (icon) {
    case ignoreButton:
        return !showsEjected_;
    case ejectButton:
        return !showsEjected_ && people_.ownerMayEject();
    case ejectedButton:
        return people_.ownerMayEject();
    case allowButton:
        return showsEjected_ && people_.ownerMayEject();
    case peopleButton:
        return showsEjected_;
    default:
        return false;
    }
}

void RoomHandles::releaseIcon(HostHandle icon) {
    const HostHandle held = std::exchange(held_, noHandle);
    if (icon != noHandle && held == icon && iconVisible(icon))
        press(icon);
}

void RoomHandles::press(HostHandle icon) {
    const std::string person = peopleRows_.selected, ejectedPerson = ejectedRows_.selected;
    if (icon == ejectedButton)
        showsEjected_ = true;
    else if (icon == peopleButton)
        showsEjected_ = false;
    else if (icon == ignoreButton)
        people_.toggleIgnored(person);
    else if (icon == ejectButton)
        people_.eject(person);
    else if (icon == allowButton)
        people_.allow(ejectedPerson);
}

void RoomHandles::showNewRoom() {
    peopleRows_ = ejectedRows_ = {};
    showsEjected_ = false;
    held_ = noHandle;
}

} // namespace larkspin
