#include "host/window_tree/window_people.h"

#include "host/window_tree/window_names.h"
#include "host/window_tree/window_tree_host.h"
#include "shell/event_loop.h"
#include "shell/pause.h"
#include "text/row_list.h"

namespace larkspin {

static constexpr double aroundHolding = 0.03; // seconds: the client needs them to take a press in

People WindowPeople::listPeople() {
    return read(&WindowTreeHost::peopleList);
}

// The owner's own name is included, so that each name's row is the client's row.
People WindowPeople::read(List list) {
    const HostHandle from = (host_.*list)();
    RowList names;
    host_.readHostList(from, names, true);
    return listed(names, from);
}

bool WindowPeople::ownerMayEject() {
    return host_.findChatRoom() != noHandle &&
           host_.iconVisible(host_.findRoomIcon(window::ejectedButton));
}

Deed WindowPeople::toggleIgnored(const Person& person) {
    return press(window::ignoreButton, &WindowTreeHost::peopleList, person);
}

Deed WindowPeople::eject(const Person& person) {
    return press(window::ejectButton, &WindowTreeHost::peopleList, person);
}

Deed WindowPeople::allow(const Person& person) {
    return press(window::allowButton, &WindowTreeHost::ejectedList, person);
}

// Without a room nothing is pressed, and what is said of it is lost as well; but the room may come
// back for the next person. In another room, to which the owner may have turned in the search, the
// row is somebody else's; and it may have become that by somebody's coming or going.
Deed WindowPeople::press(const char* button, List list, const Person& person) {
    if (host_.findChatRoom() == noHandle)
        return Deed::done;
    const HostHandle icon = host_.findRoomIcon(button);
    if (icon == noHandle || (host_.*list)() != person.list)
        return Deed::over;
    const auto row = rowOf(person);
    if (!row)
        return Deed::undone;
    const Pause pause(loop_);
    host_.selectHostRow(person.list, *row);
    loop_.serveTurn();
    pause(aroundHolding);
    host_.holdIcon(icon);
    pause(aroundHolding);
    loop_.serveTurn();
    host_.releaseIcon(icon);
    return Deed::done;
}

// Where he stands in the list now.
std::optional<int> WindowPeople::rowOf(const Person& person) const {
    RowList names;
    host_.readHostList(person.list, names, true);
    if (person.row < names.count() && names.row(person.row) == person.name)
        return person.row;
    for (int row = 0; row < names.count(); ++row)
        if (names.row(row) == person.name)
            return row;
    return std::nullopt;
}

// Shows those who were put out. Without them in view a button would be pressed for a row of the
// other list.
std::optional<People> WindowPeople::beginAllowing() {
    People ejected = read(&WindowTreeHost::ejectedList);
    const HostHandle toEjected = host_.findRoomIcon(window::ejectedButton);
    if (toEjected == noHandle)
        return std::nullopt;
    host_.pressIcon(toEjected);
    return ejected;
}

void WindowPeople::endAllowing() {
    host_.pressIcon(host_.findRoomIcon(window::peopleButton));
}

} // namespace larkspin
