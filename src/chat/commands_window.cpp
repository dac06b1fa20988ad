#include "chat/commands_window.h"

#include "chat/reply.h"
#include "shell/app_state.h"

#include <string>

namespace larkspin {

CommandsWindow::CommandsWindow(const Core& core)
    : state_(core.state), loop_(core.loop), reply_(core.reply) {
    larkmain.place = {3000, 3000, 4500, 3600};
    larkmain.controls = controls();
}

std::vector<Control> CommandsWindow::controls() {
    using Kind = Control::Kind;
    return {
        {.name = "commandsTitle",
         .place = {0, 0, 4170, 315},
         .text = [this] { return state_.commandsTitle; },
         .onMouseDown = [this] { dragwindow(loop_, larkmain); }},
        {.name = "closeLabel",
         .place = {4170, 0, 330, 315},
         .spoken = "close",
         .text = [] { return "  X"; },
         .onClick = [this] { close(); }},
        {.name = "commandNames",
         .kind = Kind::list,
         .place = {0, 345, 4500, 2430},
         .rows = &state_.commandNames,
         .onClick = [this] { showHelp(); }},
        {.name = "commandText",
         .kind = Kind::textField,
         .place = {0, 2805, 4500, 795},
         .text = [this] { return state_.commandText; }},
        {.name = "choiceList",
         .kind = Kind::list,
         .place = {0, 345, 4500, 3255},
         .rows = &state_.choiceList,
         .onDoubleClick = [this] { choiceEvents_.onDoubleClick(); },
         .visible = false},
    };
}

void CommandsWindow::coms() {
    showcommands();
    reply_.saychat("viewing <b>" + std::to_string(state_.commandNames.count()) + "</b> commands");
}

void CommandsWindow::showcommands() {
    choiceEvents_.onCommands();
    larkmain.visible = true;
    keepontop(larkmain);
}

void CommandsWindow::showHelp() {
    state_.commandText = state_.commandHelp.row(state_.commandNames.currentIndex());
}

void CommandsWindow::close() {
    choiceEvents_.onClose();
    larkmain.visible = false;
}

void CommandsWindow::showChoices() {
    larkmain.control("commandNames").visible = false;
    larkmain.control("commandText").visible = false;
    larkmain.control("choiceList").visible = true;
    larkmain.visible = true;
    keepontop(larkmain);
}

void CommandsWindow::putCatalogueBack() {
    larkmain.control("commandNames").visible = true;
    larkmain.control("commandText").visible = true;
    larkmain.control("choiceList").visible = false;
}

} // namespace larkspin
