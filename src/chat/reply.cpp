#include "chat/reply.h"

#include "chat/room.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/settings.h"

namespace larkspin {

void Reply::saychat(std::string_view text) {
    if (!state_.silnt)
        sayAlways(text);
}

void Reply::sayAlways(std::string_view text) {
    room_.sendChatLine(styled(text));
}

void Reply::sayOrBox(const std::string& said, const std::string& boxed) {
    if (state_.silnt)
        dialogs_.box(boxed);
    else
        saychat(said);
}

bool Reply::refusedInSilence(const std::string& refusal) {
    if (!state_.silnt)
        return false;
    dialogs_.box(refusal);
    return true;
}

std::string Reply::styled(std::string_view message) {
    std::string line = "</html><font face=\"";
    line += settings_.yochoose(Choice::openingFont);
    line += "\" color=#";
    line += settings_.yochoose(Choice::openingColor);
    line += ">";
    line += settings_.yochoose(Choice::opening);
    line += " <font face=\"";
    line += settings_.yochoose(Choice::font);
    line += "\" color=#";
    line += settings_.yochoose(Choice::fontColor);
    line += ">";
    line += message;
    line += "</b><font face=\"";
    line += settings_.yochoose(Choice::closingFont);
    line += "\" color=#";
    line += settings_.yochoose(Choice::closingColor);
    line += "> ";
    line += settings_.yochoose(Choice::closing);
    return line;
}

} // namespace larkspin
