#include "chat/commands_window.h"

#include "chat/reply.h"
#include "shell/app_state.h"
#include "shell/controls.h"

#include <string>

namespace larkspin {

CommandsWindow::CommandsWindow(const Core& core)
    : state_(core.state), loop_(core.loop), reply_(core.reply) {
    larkmain.place = {3000, 3000, 4500, 3600};
    larkmain.controls = controls();
}

std::vector<Control> CommandsWindow::controls() {
    return {
        titleStrip(loop_, larkmain, {.name = "commandsTitle", .text = shows(state_.commandsTitle)}),
        closeLabel(larkmain, {.name = "closeLabel", .onClick = [this] { close(); }}),
        listBox({.name = "commandNames",
                 .place = {0, 345, 4500, 2430},
                 .rows = &state_.commandNames,
                 .onClick = [this] { showHelp(); }}),
        textField({.name = "commandText",
                   .place = {0, 2805, 4500, 795},
                   .text = shows(state_.commandText)}),
        listBox({.name = "choiceList",
                 .place = {0, 345, 4500, 3255},
                 .rows = &state_.choiceList,
                 .onDoubleClick = [this] { choiceEvents_.onDoubleClick(); },
                 .visible = false}),
    };
}

void CommandsWindow::coms() {
    showcommands();
    reply_.saychat("viewing <b>" + std::to_string(state_.commandNames.count()) + "</b> commands");
}

void CommandsWindow::showcommands() {
    choiceEvents_.onCommands();
    showOnTop(larkmain);
}

void CommandsWindow::showHelp() {
    state_.commandText = state_.commandHelp.row(state_.commandNames.currentIndex());
}

void CommandsWindow::close() {
    choiceEvents_.onClose();
    larkmain.visible = false;
}

void CommandsWindow::showChoices() {
    // The catalogue and the choices share a place, and one of them shows at a time.
    larkmain.control("commandNames").visible = false;
    larkmain.control("commandText").visible = false;
    larkmain.control("choiceList").visible = true;
    showOnTop(larkmain);
}

void CommandsWindow::putCatalogueBack() {
    larkmain.control("commandNames").visible = true;
    larkmain.control("commandText").visible = true;
    larkmain.control("choiceList").visible = false;
}

} // namespace larkspin
