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

#include "host/window_tree_host.h"
#include "support/pretend_windows.h"
#include "support/virtual_machine.h"

#include <chrono>
#include <string>
#include <vector>

namespace larkspin {

class PretendHost : public PretendWindows {
public:
    // The machine's next start runs on it.
    explicit PretendHost(VirtualMachine& machine);

    WindowTreeHost host; // the program's side of it

    // The room.
    Lines people{"Owner"}, ejected;
    Lines ignored;             // switched by the button, in the order of the presses
    bool ownsRoom = false;     // whether the button to the ejected people is to be seen
    bool showsEjected = false; // by that button, until the one back to the people
    Lines pressedButtons;      // their captions, of whichever window
    HostHandle room = 0;       // `remove` it and the owner is in none
    HostHandle addRoom();      // another one, behind those that are there, with nobody in it
    HostHandle roomButton(const std::string& caption);
    HostHandle peopleList = 0, ejectedList = 0;

    // The owner signs on, or off with an empty name. His greeting is a window.
    void signOn(const std::string& screenName);
    HostHandle welcome = 0;

    // Where he is led to. Message windows and the clock's notice come after a while, or never.
    Lines keywords;
    std::chrono::milliseconds opening{50};
    bool opensWindows = true;
    std::string clockText = "You have been online for. 12 minutes.";
    HostHandle clockNotice = 0;

    // Private messages: "addressee: body". A switch is answered by a box, any other one goes.
    Lines messages;
    HostHandle addMessageWindow(const std::string& addressee);

    // Windows of transfers and notices; they replace the one before.
    void showModal(const std::string& caption, const std::string& first,
                   const std::string& second = {});
    void hideModal() { remove(modal); }
    void showDownload(const std::string& caption, const std::string& first,
                      const std::string& second = {});
    HostHandle modal = 0, download = 0;

    HostHandle frame, area; // the frame, and in it what holds the children
    HostHandle addChild(const std::string& caption) { return add(area, "AOL Child", caption); }

    int visible(HostHandle window) override;

protected:
    void pressed(HostHandle window) override;
    void entered(HostHandle window) override;

private:
    void pressRoomButton(const std::string& caption);
    void open(const std::string& keyword);
    void sendMessage(HostHandle window);

    VirtualMachine& machine_;
    HostHandle keywordBox_ = 0;
};

} // namespace larkspin
