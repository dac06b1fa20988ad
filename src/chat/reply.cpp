#include "chat/reply.h"

#include "chat/markup.h"
#include "chat/room.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/settings.h"
#include "text/line_breaks.h"

namespace larkspin {

namespace {

constexpr std::string_view opening = "</html><font face=\"";

// Characters that would end the line in which a style value stands. The owner may have written
// anything into the settings by hand; all other characters go out as they are.
constexpr std::string_view styleBreaks("\n\v\f\r\0", 5);

} // namespace

bool isReply(std::string_view line) {
    return line.starts_with(opening);
}

void Reply::saychat(std::string_view text) {
    if (!state_.silnt)
        sayAlways(text);
}

void Reply::tellOwner(const std::string& text) {
    if (!room_.tellOwner(text))
        saychat(text);
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

std::string Reply::style(Choice choice) {
    return breaksAsBlanks(settings_.yochoose(choice), styleBreaks);
}

// The style is read from the settings for each line, so a change shows from the next line on.
std::string Reply::styled(std::string_view message) {
    std::string line(opening);
    line += style(Choice::openingFont);
    line += "\" color=#";
    line += style(Choice::openingColor);
    line += ">";
    line += style(Choice::opening);
    line += " <font face=\"";
    line += style(Choice::font);
    line += "\" color=#";
    line += style(Choice::fontColor);
    line += ">";
    line += asSeenInMarkup(message);
    line += "</b><font face=\"";
    line += style(Choice::closingFont);
    line += "\" color=#";
    line += style(Choice::closingColor);
    line += "> ";
    line += style(Choice::closing);
    return line;
}

} // namespace larkspin
