// The commands window `larkmain`: the catalogue, with the help of the selected command, or in its
// place the choices that a search has found. What becomes of choices belongs to whoever offers
// them.
#pragma once

#include "chat/core.h"
#include "shell/window.h"

#include <utility>
#include <vector>

namespace larkspin {

class CommandsWindow {
public:
    // What the owner does about choices that are on show.
    struct ChoiceEvents {
        Task onDoubleClick = [] {}; // on the current one
        Task onClose = [] {};       // the window is closed, also when none are on show
        Task onCommands = [] {};    // the commands are to be shown, also when they are already
    };

    explicit CommandsWindow(const Core& core);
    void connect(ChoiceEvents events) { choiceEvents_ = std::move(events); }

    // The command, and the tray's entry, which does the same without saying anything.
    void coms();
    void showcommands();

    // Shows the window, with the choices in place of the catalogue.
    void showChoices();
    // Puts the catalogue back, whether the window shows or not.
    void putCatalogueBack();

    Window larkmain{.name = "larkmain", .spoken = "larkspin commands"};

private:
    std::vector<Control> controls();
    void showHelp();
    void close();

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    ChoiceEvents choiceEvents_;
};

} // namespace larkspin
