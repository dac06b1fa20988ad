// The owner's errands in the client: keywords, addresses, private rooms, mail, signing off, private
// messages on and off.
#pragma once

#include "chat/core.h"
#include "host/host_client.h"
#include "host/in_turn.h"

#include <string>

namespace larkspin {

class Launcher;

class Chores {
public:
    Chores(const Core& core, HostClient& client, Launcher& launcher)
        : core_(core), client_(client), launcher_(launcher), inTurn_(core.state) {}

    // The commands.
    void kw(const std::string& keyword);
    // An address as `url` opens it, without a word.
    void openAddress(const std::string& address);
    void url(const std::string& address);
    void pr(const std::string& room);
    void newMail();
    void oldMail();
    void sentMail();
    void signoff();
    void closeaol();
    void imson();
    void imsoff();
    void aim();
    void hidewelc();

    // The same from the tray, without a word.
    void switchMessagesOn();
    void switchMessagesOff();
    void hideWelcome();

private:
    bool announce(const std::string& text, double wait = 0);
    void openMail(ClientErrands::Mail mail, const std::string& said);
    void switchMessages(bool areTaken, const std::string& said = {});

    Core core_;
    HostClient& client_;
    Launcher& launcher_;
    InTurn inTurn_;
};

} // namespace larkspin
