#include "chat/reply.h"

#include "chat/room.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/settings.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::string_view opening = "</html><font face=\"";

// A style holds whatever its owner has stored, by hand too, and all of it goes out as it stands but
// for what would end the line.
bool endsLine(char byte) {
    return std::string_view("\n\v\f\r\0", 5).find(byte) != std::string_view::npos;
}

} // namespace

bool isReply(std::string_view line) {
    return line.starts_with(opening);
}

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
    std::string line(opening);
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
    std::replace_if(line.begin(), line.end(), endsLine, ' ');
    return line;
}

} // namespace larkspin
