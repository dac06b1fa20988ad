#include "support/pretend_host.h"

#include "host/host_bytes.h"

#include <algorithm>

namespace larkspin {

namespace {

const std::string messageAddress = "aol://9293:";

} // namespace

PretendHost::PretendHost(VirtualMachine& machine)
    : host(*this, machine.loop), frame(add(0, "AOL Frame25", "America  Online")),
      area(add(frame, "MDIClient")), machine_(machine) {
    const HostHandle strip = add(add(frame, "AOL Toolbar"), "_AOL_Toolbar");
    keywordBox_ = add(add(strip, "_AOL_Combobox"), "Edit");
    signOn("Owner");
    room = addRoom();
    peopleList = findChild(room, 0, "_AOL_Listbox");
    ejectedList = findChild(room, peopleList, "_AOL_Listbox");
    (*this)[peopleList].rows = &people;
    (*this)[ejectedList].rows = &ejected;
    machine.host = &host;
}

HostHandle PretendHost::addRoom() {
    const HostHandle added = addChild("Town Square");
    for (const char* control : {"_AOL_Static", "RICHCNTLREADONLY", "RICHCNTL", "_AOL_Combobox",
                                "_AOL_Listbox", "_AOL_Listbox"})
        add(added, control);
    for (const char* button :
         {"Find", "Ignore Member", "Eject Member", "Ejected List", "Allow Entry", "People List"})
        add(added, "_AOL_Icon", button);
    return added;
}

void PretendHost::signOn(const std::string& screenName) {
    remove(welcome);
    welcome = screenName.empty() ? 0 : addChild("Welcome, " + screenName + "! ");
    machine_.room.screenName = screenName;
}

HostHandle PretendHost::roomButton(const std::string& caption) {
    for (const HostHandle child : has(room) ? (*this)[room].children : std::vector<HostHandle>())
        if ((*this)[child].className == "_AOL_Icon" && (*this)[child].text == caption)
            return child;
    return 0;
}

void PretendHost::showModal(const std::string& caption, const std::string& first,
                            const std::string& second) {
    remove(modal);
    modal = add(0, "_AOL_Modal", caption);
    add(modal, "_AOL_Static", first);
    if (!second.empty())
        add(modal, "_AOL_Static", second);
    add(modal, "_AOL_Icon", "OK");
}

void PretendHost::showDownload(const std::string& caption, const std::string& first,
                               const std::string& second) {
    remove(download);
    download = addChild(caption);
    add(download, "_AOL_Gauge");
    add(download, "_AOL_Static", first);
    add(download, "_AOL_Static", second);
    add(download, "_AOL_Icon", "Finish Later");
    add(download, "_AOL_Checkbox");
}

HostHandle PretendHost::addMessageWindow(const std::string& addressee) {
    const HostHandle window = addChild("Send Instant Message");
    add(window, "Edit", addressee);
    add(window, "RICHCNTL");
    for (int icon = 1; icon < 10; ++icon)
        add(window, "_AOL_Icon", "style");
    add(window, "_AOL_Icon", "Send");
    return window;
}

int PretendHost::visible(HostHandle window) {
    const int answer = PretendWindows::visible(window);
    return has(window) && (*this)[window].text == "Ejected List" && !ownsRoom ? 0 : answer;
}

// The return key, in the room's input line or in the box for keywords.
void PretendHost::entered(HostHandle window) {
    const std::string text = std::exchange((*this)[window].text, {});
    if (window == keywordBox_)
        open(text);
    else
        machine_.room.sendChatLine(fromSingleByte(text));
}

void PretendHost::open(const std::string& keyword) {
    keywords.push_back(keyword);
    if (!opensWindows)
        return;
    machine_.loop.once(opening, [this, keyword] {
        if (!has(area))
            return;
        if (keyword.starts_with(messageAddress))
            addMessageWindow(keyword.substr(messageAddress.size()));
        if (keyword == "online clock") {
            clockNotice = addChild("America Online");
            add(clockNotice, "_AOL_Static", clockText);
            add(clockNotice, "_AOL_Icon", "OK");
        }
    });
}

void PretendHost::pressed(HostHandle button) {
    const std::string caption = (*this)[button].text;
    const HostHandle window = (*this)[button].parent;
    pressedButtons.push_back(caption);
    if (window == room)
        pressRoomButton(caption);
    else if (caption == "Send")
        sendMessage(window);
    else if (caption == "OK")
        remove(window);
}

static void move(Lines& from, std::size_t row, Lines& to) {
    to.push_back(from[row]);
    from.erase(from.begin() + static_cast<std::ptrdiff_t>(row));
}

void PretendHost::pressRoomButton(const std::string& caption) {
    const auto person = static_cast<std::size_t>((*this)[peopleList].row);
    const auto outside = static_cast<std::size_t>((*this)[ejectedList].row);
    if (caption == "Ejected List" || caption == "People List")
        showsEjected = caption == "Ejected List";
    if (caption == "Ignore Member" && person < people.size() &&
        std::erase(ignored, people[person]) == 0)
        ignored.push_back(people[person]);
    if (caption == "Eject Member" && person < people.size())
        move(people, person, ejected);
    if (caption == "Allow Entry" && outside < ejected.size())
        move(ejected, outside, people);
}

void PretendHost::sendMessage(HostHandle window) {
    const std::string addressee = (*this)[findChild(window, 0, "Edit")].text;
    messages.push_back(addressee + ": " + (*this)[findChild(window, 0, "RICHCNTL")].text);
    if (addressee.starts_with("$"))
        add(add(0, "#32770", "America Online"), "Button", "OK");
    else
        remove(window);
}

} // namespace larkspin
