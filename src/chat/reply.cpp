#include "chat/reply.h"

#include "chat/room.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/settings.h"
#include "text/number.h"

namespace larkspin {

namespace {

struct Style {
    Choice choice;
    std::string_view key;
    std::string_view fallback;
};

constexpr Style styles[] = {
    {Choice::openingFont, "afont", "arial narrow"},
    {Choice::openingColor, "ascii color", "5083A9"},
    {Choice::opening, "ascii", "'\u00AClks -"},
    {Choice::font, "font", "arial narrow"},
    {Choice::fontColor, "font color", "0066BB"},
    {Choice::played, "played", "0"},
    {Choice::playpath, "playpath", ""},
    {Choice::play, "play", ""},
    {Choice::closing, "eascii", ""},
    {Choice::closingFont, "efont", " "},
    {Choice::closingColor, "eascii color", ""},
};

} // namespace

void Reply::saychat(std::string_view text) {
    if (!state_.silnt)
        room_.sendChatLine(styled(text));
}

void Reply::sayOrBox(const std::string& text) {
    if (state_.silnt)
        dialogs_.box(text);
    else
        saychat(text);
}

bool Reply::refusedInSilence(const std::string& refusal) {
    if (!state_.silnt)
        return false;
    dialogs_.box(refusal);
    return true;
}

std::string Reply::yochoose(Choice choice) {
    for (const Style& style : styles) {
        if (style.choice != choice)
            continue;
        std::string value = settings_.get(style.key);
        if (choice == Choice::played) {
            if (!number(value))
                value = style.fallback;
            state_.mpp = "mp3s played:  " + value;
        }
        return value.empty() ? std::string(style.fallback) : value;
    }
    return {};
}

std::string Reply::styled(std::string_view message) {
    std::string line = "</html><font face=\"";
    line += yochoose(Choice::openingFont);
    line += "\" color=#";
    line += yochoose(Choice::openingColor);
    line += ">";
    line += yochoose(Choice::opening);
    line += " <font face=\"";
    line += yochoose(Choice::font);
    line += "\" color=#";
    line += yochoose(Choice::fontColor);
    line += ">";
    line += message;
    line += "</b><font face=\"";
    line += yochoose(Choice::closingFont);
    line += "\" color=#";
    line += yochoose(Choice::closingColor);
    line += "> ";
    line += yochoose(Choice::closing);
    return line;
}

} // namespace larkspin
