#include "support/pretend_host.h"

#include "host/window_tree/host_bytes.h"

namespace larkspin {

PretendHost::PretendHost(VirtualMachine& machine)
    : host(*this, machine.loop), frame(add(0, "AOL Frame25", "America  Online")),
      area(add(frame, "MDIClient")), machine_(machine) {
    const HostHandle strip = add(add(frame, "AOL Toolbar"), "_AOL_Toolbar");
    add(add(strip, "_AOL_Combobox"), "Edit");
    signOn("Owner");
    room = addRoom();
    peopleList = host.peopleList();
    ejectedList = host.ejectedList();
    (*this)[peopleList].rows = &people;
    (*this)[ejectedList].rows = &ejected;
    machine.host = &host;
}

void PretendHost::addAll(HostHandle to, const std::string& className, const Lines& texts) {
    for (const std::string& text : texts)
        add(to, className, text);
}

HostHandle PretendHost::addRoom() {
    const HostHandle added = addChild("Town Square");
    for (const char* control : {"_AOL_Static", "RICHCNTLREADONLY", "RICHCNTL", "_AOL_Combobox",
                                "_AOL_Listbox", "_AOL_Listbox"})
        add(added, control);
    addAll(added, "_AOL_Icon",
           {"Find", "Ignore Member", "Eject Member", "Ejected List", "Allow Entry", "People List"});
    return added;
}

void PretendHost::signOn(const std::string& screenName) {
    remove(welcome);
    welcome = screenName.empty() ? 0 : addChild("Welcome, " + screenName + "! ");
    machine_.room.screenName = screenName;
}

void PretendHost::showModal(const std::string& caption, const Lines& texts) {
    remove(modal);
    modal = add(0, "_AOL_Modal", caption);
    addAll(modal, "_AOL_Static", texts);
    add(modal, "_AOL_Icon", "OK");
}

void PretendHost::showDownload(const std::string& caption, const Lines& texts) {
    remove(download);
    download = addChild(caption);
    add(download, "_AOL_Gauge");
    addAll(download, "_AOL_Static", texts);
    add(download, "_AOL_Icon", "Finish Later");
    add(download, "_AOL_Checkbox");
}

HostHandle PretendHost::addMessageWindow(const std::string& addressee) {
    const HostHandle window = addChild("Send Instant Message");
    add(window, "Edit", addressee);
    add(window, "RICHCNTL");
    addAll(window, "_AOL_Icon", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "Send"});
    return window;
}

int PretendHost::visible(HostHandle window) {
    const bool isHidden = !ownsRoom && caption(window) == "Ejected List";
    return isHidden ? 0 : PretendWindows::visible(window);
}

// In a room's input line, or in the box for keywords.
void PretendHost::entered(HostHandle field) {
    const std::string text = std::exchange((*this)[field].text, {});
    if ((*this)[field].className == "Edit")
        open(text);
    else
        machine_.room.sendChatLine(fromSingleByte(text));
}

void PretendHost::open(const std::string& place) {
    keywords.push_back(place);
    if (!opensWindows)
        return;
    machine_.loop.once(opening, [this, place] {
        const std::string toMessage = "aol://9293:";
        if (has(area) && place.starts_with(toMessage))
            addMessageWindow(place.substr(toMessage.size()));
        if (!has(area) || place != "online clock")
            return;
        const HostHandle notice = addChild("America Online");
        add(notice, "_AOL_Static", clockText);
        add(notice, "_AOL_Icon", "OK");
    });
}

void PretendHost::pressed(HostHandle button) {
    const HostHandle window = (*this)[button].parent;
    const std::string caption = (*this)[button].text;
    pressedButtons.push_back(caption);
    if (window == room)
        pressInRoom(caption);
    else if (caption == "Send")
        sendMessage(window);
    else if (caption == "OK")
        remove(window);
}

void PretendHost::sendMessage(HostHandle window) {
    const std::string to = (*this)[findChild(window, 0, "Edit")].text;
    messages.push_back(to + ": " + (*this)[findChild(window, 0, "RICHCNTL")].text);
    if (to.starts_with("$"))
        add(add(0, "#32770", "America Online"), "Button", "OK");
    else
        remove(window);
}

static void move(Lines& from, std::size_t row, Lines& to) {
    if (row >= from.size())
        return;
    to.push_back(from[row]);
    from.erase(from.begin() + static_cast<std::ptrdiff_t>(row));
}

void PretendHost::pressInRoom(const std::string& button) {
    const std::size_t person = (*this)[peopleList].row;
    if (button == "Ignore Member" && person < people.size() &&
        std::erase(ignored, people[person]) == 0)
        ignored.push_back(people[person]);
    if (button == "Eject Member")
        move(people, person, ejected);
    if (button == "Allow Entry")
        move(ejected, (*this)[ejectedList].row, people);
}

} // namespace larkspin
