// The choices: the hits of a search that wait for the owner to take one, or the song last started
// as their only entry. What of them is in the state belongs to this unit: choiceList,
// commandsTitle, stopsCaption, and whether NiteScan2 listens for the answer. Others read them.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class Scanner;

class Choices {
public:
    Choices(const Core& core, Scanner& NiteScan2) : state_(core.state), NiteScan2_(NiteScan2) {}

    // More than one: the owner has yet to choose.
    bool areOpen() const;

    // A started song becomes the only entry, unless the owner has yet to choose.
    void offer(const std::string& title);
    // The same in any case: the owner has chosen.
    void replace(const std::string& title);
    // The same for a song that was picked at random, which also becomes the current entry.
    void take(const std::string& title);
    // None: there is no song to work on.
    void clear();

    // Shows them in the commands window.
    void show();
    // Ends what shows of a selection: the choice list and the stop window.
    void closeselection();
    // An answer doesn't count any longer.
    void stopListening();

private:
    AppState& state_;
    Scanner& NiteScan2_;
};

} // namespace larkspin
