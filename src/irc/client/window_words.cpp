#include "irc/client/window_words.h"

#include "host/conversations.h"
#include "host/room_words.h"
#include "host/window_room/window_room.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <string>

namespace larkspin {

namespace {

bool isBlank(std::string_view rest) {
    return withoutBlanks(rest).empty();
}

bool meansWindows(std::string_view rest) {
    return equalFolded(withoutBlanks(rest), WindowRoom::word);
}

} // namespace

// Each of these tells whether it has taken the word.
std::vector<SlashWord> WindowWords::over(std::vector<SlashWord> words) {
    const std::pair<const char*, Run> own[] = {
        {"connect", &WindowWords::connect},
        {"reconnect", &WindowWords::connect},
        {"disconnect", &WindowWords::disconnect},
        {"networks", &WindowWords::networks},
        {"leave", &WindowWords::leave},
        {"names", &WindowWords::names},
        {"me", &WindowWords::me},
    };
    for (SlashWord& each : words)
        for (const auto& [name, run] : own)
            if (each.name == name)
                each.run = [this, run = run, others = each.run](std::string_view rest) {
                    return (this->*run)(rest) || others(rest);
                };
    return words;
}

bool WindowWords::isInFront() const {
    return windows_.owns(conversations_.front());
}

bool WindowWords::connect(std::string_view rest) {
    const bool isMeant = meansWindows(rest) || (isBlank(rest) && isInFront());
    if (isMeant)
        windows_.connect();
    return isMeant;
}

bool WindowWords::disconnect(std::string_view rest) {
    const bool isMeant = meansWindows(rest) || (isBlank(rest) && isInFront());
    if (isMeant)
        windows_.disconnect();
    return isMeant;
}

// Beside what is told of networks.
bool WindowWords::networks(std::string_view rest) {
    if (isBlank(rest) && windows_.isOn())
        tell_(std::string(WindowRoom::word) + "  a chat client's windows" +
              (windows_.ownName().empty() ? "" : ", as " + visibleName(windows_.ownName())) +
              (windows_.isUp() ? " (on)" : ""));
    return false;
}

bool WindowWords::leave(std::string_view rest) {
    const bool isMeant = isInFront() && isBlank(rest);
    if (isMeant)
        windows_.leave();
    return isMeant;
}

bool WindowWords::names(std::string_view rest) {
    const bool isMeant = isInFront() && isBlank(rest);
    if (isMeant)
        tellRoom(windows_, RowList(), &visibleName, tell_);
    return isMeant;
}

bool WindowWords::me(std::string_view) {
    if (isInFront())
        tell_("the chat client knows no such lines");
    return isInFront();
}

} // namespace larkspin
