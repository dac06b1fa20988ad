// The chat client as a tree of windows: what the program does in it is done by finding its windows
// by class and caption, reading their texts, and sending them what a hand would.
//
// A wait ends early, with nothing found, when the window in which the awaited thing would come
// isn't there: the room for a button of it, the client's frame for all else.
#pragma once

#include "host/host_client.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"

#include <string>

namespace larkspin {

class EventLoop;
class WindowCalls;

class WindowTreeHost : public HostClient {
public:
    WindowTreeHost(WindowCalls& calls, EventLoop& loop) : calls_(calls), loop_(loop) {}

    std::string currentScreenName() override;
    void sendChatLine(const std::string& line) override;
    void clearChatInput() override;
    void bringHostForward() override;

    HostHandle hostFrame() override;
    HostHandle findChatRoom() override;
    void hideWelcomeWindow() override;

    HostHandle peopleList() override;
    HostHandle ejectedList() override;
    void readHostList(HostHandle list, RowList& names, bool includeSelf) override;
    void selectHostRow(HostHandle list, int row) override;

    HostHandle findRoomIcon(const std::string& pattern) override;
    bool iconVisible(HostHandle icon) override;
    void holdIcon(HostHandle icon) override;
    void releaseIcon(HostHandle icon) override;
    void pressByKey(HostHandle icon) override;

    void gotoKeyword(const std::string& keyword) override;
    void sendInstantMessage(const std::string& addressee, const std::string& body) override;
    void closeHost() override;
    void sendHostKeys(const std::string& keys) override;

    std::string windowCaption(HostHandle window) override;
    std::string controlText(HostHandle control) override;
    HostHandle modalWindow() override;
    HostHandle downloadWindow() override;
    Statics statics(HostHandle window) override;
    HostHandle firstIcon(HostHandle window) override;
    void showHostWindow(HostHandle window, ShowCommand command) override;

    HostHandle waitForClockNotice() override;
    std::string messengerAccount() override;

private:
    bool enterKeyword(const std::string& keyword);
    HostHandle roomInput() const;
    void setRoomInput(HostHandle input, const std::string& text);

    WindowCalls& calls_;
    EventLoop& loop_;
    HostWindows windows_{calls_};
    InstantMessages messages_{calls_, windows_, loop_,
                              [this](const std::string& address) { return enterKeyword(address); }};
    unsigned inputsSet_ = 0; // how often the program has written into a room's input line
};

} // namespace larkspin
