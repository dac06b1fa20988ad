// The choices: the hits of a search that wait for the owner to take one, or the song last started
// as their only entry. What of them is in the state belongs to this unit: choiceList,
// commandsTitle, whether NiteScan2 listens for the answer, and stopsCaption but for the clicks on
// the stop window. So does what the windows `larkmain` and `stops` show of them. Others read it.
#pragma once

#include "chat/core.h"
#include "shell/window.h"

#include <string>
#include <string_view>

namespace larkspin {

class CommandsWindow;
class Scanner;

class Choices {
public:
    Choices(const Core& core, Scanner& NiteScan2, CommandsWindow& commandsWindow)
        : state_(core.state), NiteScan2_(NiteScan2), commandsWindow_(commandsWindow) {}

    bool areOpen() const;     // more than one: the owner has yet to choose
    bool areOnShow() const;   // in the commands window
    bool wereRecited() const; // or are being recited, since the owner has said yes to it

    // A started song becomes the only entry, unless the owner has yet to choose.
    void offer(const std::string& title);
    // The same in any case: the owner has chosen.
    void replace(const std::string& title);
    // The same for a song that was picked at random, which also becomes the current entry.
    void take(const std::string& title);
    // None: there is no song to work on.
    void clear();

    // A search has found new ones, and the owner is asked what to do with them.
    void ask();
    // Shows them in the commands window, in place of the catalogue.
    void show();
    // The same with the stop window above it, which offers to recite them.
    void showWithStopWindow();
    // Gives the catalogue its place back. The stop window then leads to the choices again.
    void giveWay();
    // Ends what shows of a selection: the choice list and the stop window.
    void closeselection();
    void hideStopWindow();

    // Mark that the owner has said yes to a recital, or that it is over. The window's title alone
    // tells this.
    void markRecited();
    void markNormal();

    // A recital begins and takes the place of the one before. It is current until another one
    // begins or its choices are gone.
    unsigned beginRecital() { return ++recital_; }
    bool isCurrent(unsigned recital) const { return recital == recital_ && areOpen(); }
    void showStopWindow();
    void awaitAnswer(); // all have been told
    void stopListening();

    void load();
    void unload();

    Window stops{.name = "stops", .spoken = "larkspin choice", .place = {3000, 2700, 900, 270}};

private:
    AppState& state_;
    Scanner& NiteScan2_;
    CommandsWindow& commandsWindow_;
    unsigned recital_ = 0; // goes up when one begins, and when a selection ends; wraps around
};

} // namespace larkspin
