// A room of the owner's own: what he types is said under his login name, and so is what the
// program says for him. `/as NAME TEXT` lets somebody else speak.
#pragma once

#include "chat/room.h"
#include "chat/scanner.h"
#include "platform/terminal/terminal_screen.h"

#include <functional>
#include <string>

namespace larkspin {

class TerminalRoom : public Room {
public:
    TerminalRoom(EventLoop& loop, TerminalScreen& screen, std::string screenName)
        : loop_(loop), screen_(screen), screenName_(std::move(screenName)) {}

    std::string currentScreenName() override { return screenName_; }
    void sendChatLine(const std::string& line) override;
    void clearChatInput() override {} // what the owner is typing is nobody else's

    // Who hears what is said here.
    void connect(Scanner::Handler hear) { hear_ = std::move(hear); }

    // A line that the owner has typed. `isShown`: it stands on the screen already.
    void typed(const std::string& line, bool isShown);

private:
    EventLoop& loop_;
    TerminalScreen& screen_;
    std::string screenName_;
    Scanner::Handler hear_;
};

} // namespace larkspin
