// The chat client as a tree of windows: what it does for the owner is done by finding its windows
// by class and caption, reading their texts, and sending them what a hand would. The operations on
// windows are told by their handles, which are good for a moment: nothing in the tree lasts. What
// isn't there has the handle 0, a text read from that is empty, and what is done to it does
// nothing.
//
// A wait ends early, with nothing found, when the window in which the awaited thing would come
// isn't there: the room for a button of it, the client's frame for all else.
#pragma once

#include "host/host_client.h"
#include "host/window_tree/host_windows.h"
#include "host/window_tree/instant_messages.h"
#include "host/window_tree/window_notices.h"
#include "host/window_tree/window_people.h"

#include <functional>
#include <optional>
#include <string>

namespace larkspin {

class EventLoop;
class RowList;
class WindowCalls;

// The numbers are those of the client's window manager.
enum class ShowCommand { hide = 0, minimise = 6, restore = 9 };

class WindowTreeHost : public HostClient, public ClientErrands {
public:
    WindowTreeHost(WindowCalls& calls, EventLoop& loop) : calls_(calls), loop_(loop) {}
    WindowTreeHost(const WindowTreeHost&) = delete;
    WindowTreeHost& operator=(const WindowTreeHost&) = delete;

    RoomPeople& roomPeople() override { return people_; }
    ClientErrands& errands() override { return *this; }
    WindowNotices& notices() override { return notices_; }

    std::string currentScreenName() override;
    void sendChatLine(const std::string& line) override;
    void clearChatInput() override;
    void bringHostForward() override;

    void gotoKeyword(const std::string& keyword) override; // waits for nothing
    void enterPrivateRoom(const std::string& name) override;
    bool hasMail() const override { return true; }
    void openMail(Mail mail) override;
    void signOff() override;
    void closeHost() override;
    void hideWelcomeWindow() override;
    void takePrivateMessages(bool areTaken) override;
    std::optional<std::string> timeOnline() override;
    std::string messengerAccount() override;

    // The same, if the client still shows the room that it showed there, also after the turn of the
    // events that it takes. False if it doesn't.
    using Still = std::function<bool()>;
    bool sendChatLineIn(HostHandle room, const std::string& caption, const std::string& line,
                        const Still& isSameRoom);

    // The client's own frame, and the room in it.
    HostHandle hostFrame() { return windows_.frame(); }
    HostHandle findChatRoom() { return windows_.room().window; }

    // The lists of those who are in the room and those who were put out. Their names are appended
    // row by row, the owner's own one only if asked for; a list that can't be read adds nothing. A
    // row is selected, counted from 0, for the button pressed next.
    HostHandle peopleList();
    HostHandle ejectedList();
    void readHostList(HostHandle list, RowList& names, bool includeSelf);
    void selectHostRow(HostHandle list, int row);

    // The room's button whose caption fits. Waits for one that isn't there yet, no longer than
    // `longestHostWait`.
    HostHandle findRoomIcon(const std::string& pattern);
    bool iconVisible(HostHandle icon);

    // A press has two halves; the button acts on the second one. Or it is done by a key.
    void pressIcon(HostHandle icon);
    void holdIcon(HostHandle icon);
    void releaseIcon(HostHandle icon);
    void pressByKey(HostHandle icon);

    // Waits for the windows that this takes, each no longer than `longestHostWait`.
    void sendInstantMessage(const std::string& addressee, const std::string& body);

    // For the window that has the focus.
    void sendHostKeys(const std::string& keys);

    // What a window or one of its controls says.
    std::string windowCaption(HostHandle window);
    std::string controlText(HostHandle control);

    // The client's modal window: a notice, or an upload. The window of a download. And the notice
    // that tells the time online; waits for it, no longer than `longestHostWait`.
    HostHandle modalWindow();
    HostHandle downloadWindow();
    HostHandle waitForClockNotice();

    // The first two lines of text in such a window, as far as it has them, and its first button.
    struct Statics {
        std::optional<std::string> first{}, second{};
    };
    Statics statics(HostHandle window);
    HostHandle firstIcon(HostHandle window);
    void showHostWindow(HostHandle window, ShowCommand command);

private:
    bool enterKeyword(const std::string& keyword);
    bool sayBy(HostHandle input, const std::string& line, const Still& isSameRoom);
    void setRoomInput(HostHandle input, const std::string& text);

    WindowCalls& calls_;
    EventLoop& loop_;
    HostWindows windows_{calls_};
    InstantMessages messages_{calls_, windows_, loop_,
                              [this](const std::string& address) { return enterKeyword(address); }};
    WindowPeople people_{*this, loop_};
    WindowNotices notices_{*this};
    unsigned inputsSet_ = 0; // how often the program has written into a room's input line
    unsigned clearings_ = 0; // and has cleared it
    std::string lastSet_;    // what it has written there last
};

} // namespace larkspin
