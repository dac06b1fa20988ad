// A chat client for a program to work, made of pretend windows: a room with people in it, where the
// owner is signed on as "Owner".
//
//     VirtualMachine machine;
//     PretendHost host(machine);
//     machine.start();
//     host.people = {"Owner", "somebody"};
//     machine.answer("'x some");
//
// What is said in the room stands in machine.room.lines, as always. Names and texts are single
// bytes.
#pragma once

#include "chat/markup.h"
#include "host/window_tree/host_bytes.h"
#include "host/window_tree/window_tree_host.h"
#include "support/pretend_windows.h"
#include "support/virtual_machine.h"

namespace larkspin {

class PretendHost : public PretendWindows {
public:
    // The machine's next start runs on it.
    explicit PretendHost(VirtualMachine& machine) : host(*this, machine.loop), machine_(machine) {
        add(add(add(add(frame, "AOL Toolbar"), "_AOL_Toolbar"), "_AOL_Combobox"), "Edit");
        signOn("Owner");
        room = addRoom();
        peopleList = host.peopleList();
        ejectedList = host.ejectedList();
        (*this)[peopleList].rows = &people;
        (*this)[ejectedList].rows = &ejected;
        machine.host = &host;
    }

    WindowTreeHost host; // the program's side of it

    // `remove` the room and the owner is in none, the frame and the client is gone.
    HostHandle frame = add(0, "AOL Frame25", "America  Online"), area = add(frame, "MDIClient");
    HostHandle room = 0, peopleList = 0, ejectedList = 0, welcome = 0, modal = 0, download = 0;
    HostHandle addChild(const std::string& caption) { return add(area, "AOL Child", caption); }

    // The room. The button to the ejected people is to be seen by whoever owns it.
    Lines people{"Owner"}, ejected, ignored;
    bool ownsRoom = false;
    std::function<void(HostHandle button)> asked = [](HostHandle) {}; // whether it is visible
    Lines pressedButtons;  // their captions, of whichever window
    HostHandle addRoom() { // another one, after those that are there, with nobody in it
        const HostHandle added = addChild("Town Square");
        for (const char* control : {"_AOL_Static", "RICHCNTLREADONLY", "RICHCNTL", "_AOL_Combobox",
                                    "_AOL_Listbox", "_AOL_Listbox"})
            add(added, control);
        addAll(added, "_AOL_Icon",
               {"Find", "Ignore Member", "Eject Member", "Ejected List", "Allow Entry",
                "People List"});
        return added;
    }

    // What is said in the room, in its running text. In a client that talks the owner's own lines
    // come there as well, without their tags; else they are recorded by the machine.
    bool talks = false;
    void say(const std::string& speaker, const std::string& text) {
        addToText(speaker + ":\t" + text + "\r\n");
    }
    void addToText(const std::string& text) {
        (*this)[first(room, "RICHCNTLREADONLY")].text += text;
        machine_.loop.post([this] { look(); });
    }

    // The owner signs on, or off with an empty name. His greeting is a window.
    void signOn(const std::string& screenName) {
        remove(welcome);
        welcome = screenName.empty() ? 0 : addChild("Welcome, " + screenName + "! ");
        machine_.room.screenName = screenName;
    }

    // Where he is led to. Message windows and the clock's notice come after a while, or never.
    Lines keywords;
    bool opensWindows = true;
    std::string clockText = "You have been online for. 12 minutes.";

    // Private messages: "addressee: body". One to a switch is answered by a box.
    Lines messages;
    HostHandle addMessageWindow(const std::string& addressee) {
        const HostHandle window = addChild("Send Instant Message");
        add(window, "Edit", addressee);
        add(window, "RICHCNTL");
        addAll(window, "_AOL_Icon", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "Send"});
        return window;
    }

    // Windows of transfers and notices, in place of the one before.
    void showModal(const std::string& caption, const Lines& texts) {
        remove(modal);
        modal = add(0, "_AOL_Modal", caption);
        addAll(modal, "_AOL_Static", texts);
        add(modal, "_AOL_Icon", "OK");
    }
    void showDownload(const std::string& caption, const Lines& texts) {
        remove(download);
        download = addChild(caption);
        add(download, "_AOL_Gauge");
        addAll(download, "_AOL_Static", texts);
        add(download, "_AOL_Icon", "Finish Later");
        add(download, "_AOL_Checkbox");
    }

    int visible(HostHandle window) override {
        const bool isHidden = !ownsRoom && caption(window) == "Ejected List";
        const int answer = isHidden ? 0 : PretendWindows::visible(window);
        asked(window);
        return answer;
    }

protected:
    void pressed(HostHandle button) override {
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
    void entered(HostHandle field) override { // a room's input line, or the box for keywords
        const std::string text = std::exchange((*this)[field].text, {});
        if ((*this)[field].className == "Edit")
            open(text);
        else if (talks)
            say(machine_.room.screenName, toSingleByte(plainMarkup(fromSingleByte(text))));
        else
            machine_.room.sendChatLine(fromSingleByte(text));
    }

private:
    void addAll(HostHandle to, const std::string& className, const Lines& texts) {
        for (const std::string& text : texts)
            add(to, className, text);
    }
    void open(const std::string& place) {
        keywords.push_back(place);
        if (!opensWindows)
            return;
        machine_.loop.once(50ms, [this, place] {
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
    void sendMessage(HostHandle window) {
        const std::string to = (*this)[first(window, "Edit")].text;
        messages.push_back(to + ": " + (*this)[first(window, "RICHCNTL")].text);
        if (to.starts_with("$"))
            add(add(0, "#32770", "America Online"), "Button", "OK");
        else
            remove(window);
    }
    void pressInRoom(const std::string& button) {
        const auto move = [](Lines& from, std::size_t row, Lines& to) {
            if (row >= from.size())
                return;
            to.push_back(from[row]);
            from.erase(from.begin() + static_cast<std::ptrdiff_t>(row));
        };
        const std::size_t person = (*this)[peopleList].row;
        if (button == "Ignore Member" && person < people.size() &&
            std::erase(ignored, people[person]) == 0)
            ignored.push_back(people[person]);
        if (button == "Eject Member")
            move(people, person, ejected);
        if (button == "Allow Entry")
            move(ejected, (*this)[ejectedList].row, people);
    }

    VirtualMachine& machine_;
};

} // namespace larkspin
