#include "app/help_command.h"

#include "chat/reply.h"
#include "host/slash_help.h"
#include "shell/app_state.h"

namespace larkspin {

void HelpCommand::about(const std::string& word) {
    if (show_)
        show_(word);
    else
        tellHelp(
            {nullptr, state_.trigger, [this](const std::string& line) { reply_.tellOwner(line); }},
            word);
}

} // namespace larkspin
