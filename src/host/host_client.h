// The chat client that the owner sits in, as the program works it: its windows, lists and buttons,
// in plain values. Whoever implements it knows how a window is found and pressed; nobody above
// does.
//
// The client may be absent, and anything in it may vanish between two calls: what isn't there has
// the handle 0, a text read from that is empty, and what is done to it does nothing. A handle is
// good for the operation that asked for it and isn't kept. Nothing throws. What is not overridden
// behaves as if there were no client.
#pragma once

#include "chat/room.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace larkspin {

class RowList;

using HostHandle = std::uint64_t;
inline constexpr HostHandle noHandle = 0;

// How long an operation waits for a window or a button of the client's. Events run meanwhile.
// After it the operation gives up: the handle is 0, and what would have followed is left undone.
inline constexpr std::chrono::seconds longestHostWait{10};

// The numbers are those of the client's window manager.
enum class ShowCommand { hide = 0, minimise = 6, restore = 9 };

class HostClient : public Room {
public:
    // The client's own frame, and the room in it.
    virtual HostHandle hostFrame() { return noHandle; }
    virtual HostHandle findChatRoom() { return noHandle; }

    // Hides the window that greets the owner; he stays signed on.
    virtual void hideWelcomeWindow() {}

    // The lists of those who are in the room and those who were put out.
    virtual HostHandle peopleList() { return noHandle; }
    virtual HostHandle ejectedList() { return noHandle; }

    // Appends the names of a list, row by row, to `names`; the owner's own one only if asked for.
    // A list that can't be read adds nothing.
    virtual void readHostList(HostHandle /*list*/, RowList& /*names*/, bool /*includeSelf*/) {}

    // Selects a row, counted from 0, for the button pressed next.
    virtual void selectHostRow(HostHandle /*list*/, int /*row*/) {}

    // The room's button whose caption matches: `*` stands for any run of characters, case counts.
    // Waits for one that isn't there yet, no longer than `longestHostWait`.
    virtual HostHandle findRoomIcon(const std::string& /*pattern*/) { return noHandle; }
    virtual bool iconVisible(HostHandle /*icon*/) { return false; }

    // A press has two halves; the button acts on the second one.
    virtual void holdIcon(HostHandle /*icon*/) {}
    virtual void releaseIcon(HostHandle /*icon*/) {}
    void pressIcon(HostHandle icon) {
        holdIcon(icon);
        releaseIcon(icon);
    }

    // Goes to a keyword or an `aol://` address of the client's. Waits for nothing.
    virtual void gotoKeyword(const std::string& /*keyword*/) {}

    // Sends a private message. Waits for the windows that this takes, each no longer than
    // `longestHostWait`.
    virtual void sendInstantMessage(const std::string& /*addressee*/, const std::string& /*body*/) {
    }

    virtual void closeHost() {}

    // Keystrokes for the window that has the focus. "^" holds Ctrl and "%" holds Alt for the key
    // after it.
    virtual void sendHostKeys(const std::string& /*keys*/) {}

    // What a window or one of its controls says.
    virtual std::string windowCaption(HostHandle /*window*/) { return {}; }
    virtual std::string controlText(HostHandle /*control*/) { return {}; }

    // The client's modal window: a notice, or an upload. And the window of a download.
    virtual HostHandle modalWindow() { return noHandle; }
    virtual HostHandle downloadWindow() { return noHandle; }

    // The first two lines of text in such a window, and its first button.
    struct Statics {
        HostHandle first = noHandle, second = noHandle;
    };
    virtual Statics statics(HostHandle /*window*/) { return {}; }
    virtual HostHandle firstIcon(HostHandle /*window*/) { return noHandle; }
    virtual void showHostWindow(HostHandle /*window*/, ShowCommand /*command*/) {}

    // The notice that tells the time online; waits for it, no longer than `longestHostWait`. And
    // the press by a key that closes it.
    virtual HostHandle waitForClockNotice() { return noHandle; }
    virtual void pressByKey(HostHandle /*icon*/) {}

    // Under which name the client's messenger signs on; empty when it never did.
    virtual std::string messengerAccount() { return {}; }
};

} // namespace larkspin
