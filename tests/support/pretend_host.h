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

#include "host/window_tree/window_tree_host.h"
#include "support/pretend_windows.h"
#include "support/virtual_machine.h"

namespace larkspin {

class PretendHost : public PretendWindows {
public:
    // The machine's next start runs on it.
    explicit PretendHost(VirtualMachine& machine);

    WindowTreeHost host; // the program's side of it

    // The room. The button to the ejected people is to be seen by whoever owns it.
    Lines people{"Owner"}, ejected, ignored;
    bool ownsRoom = false;
    HostHandle addRoom(); // another one, after those that are there, with nobody in it
    Lines pressedButtons; // their captions, of whichever window

    // The owner signs on, or off with an empty name. His greeting is a window.
    void signOn(const std::string& screenName);

    // Where he is led to. Message windows and the clock's notice come after a while, or never.
    Lines keywords;
    std::chrono::milliseconds opening{50};
    bool opensWindows = true;
    std::string clockText = "You have been online for. 12 minutes.";

    // Private messages: "addressee: body". One to a switch is answered by a box.
    Lines messages;
    HostHandle addMessageWindow(const std::string& addressee);

    // Windows of transfers and notices, in place of the one before.
    void showModal(const std::string& caption, const Lines& texts);
    void showDownload(const std::string& caption, const Lines& texts);

    // `remove` the room and the owner is in none, the frame and the client is gone.
    HostHandle frame, area, room = 0, peopleList = 0, ejectedList = 0;
    HostHandle welcome = 0, modal = 0, download = 0;
    HostHandle addChild(const std::string& caption) { return add(area, "AOL Child", caption); }

    int visible(HostHandle window) override;

protected:
    void pressed(HostHandle button) override;
    void entered(HostHandle field) override;

private:
    void addAll(HostHandle to, const std::string& className, const Lines& texts);
    void pressInRoom(const std::string& button);
    void open(const std::string& place);
    void sendMessage(HostHandle window);

    VirtualMachine& machine_;
};

} // namespace larkspin
