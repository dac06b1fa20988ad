#include "irc/client/window_words.h"

#include "host/conversations.h"
#include "host/room_words.h"
#include "host/window_room/window_room.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace larkspin {

namespace {

bool isBlank(std::string_view rest) {
    return withoutBlanks(rest).empty();
}

bool meansWindows(std::string_view rest) {
    return equalFolded(withoutBlanks(rest), WindowRoom::word);
}

// A room on a network is named, which can't be the client's.
bool meansNetwork(std::string_view rest) {
    return withoutBlanks(rest).starts_with('#');
}

// Words that are about the room or the people in front, and what stands for them in the client.
struct Missing {
    std::string_view name, instead{};
    bool asksAlone = false; // with nothing after it, which holds anywhere
};

constexpr std::string_view inClient = "private messages are sent in the client itself";
constexpr Missing missing[] = {
    {"me"},
    {"msg", inClient},
    {"query", inClient},
    {"notice", inClient},
    {"whisper", inClient},
    {"again", "the arrow up brings a line back"},
    {"kick", "'ban NAME puts somebody out"},
    {"ban", "'ban NAME puts somebody out"},
    {"unban", "'unban NAME lets somebody back in"},
    {"ignore", "'x NAME ignores somebody", true},
    {"nick"},
    {"away", "'idle REASON tells the room that you are away"},
    {"back", "'idleoff ends that you are away"},
    {"topic"},
    {"invite"},
    {"mode"},
    {"who", "/names tells who is there"},
    {"whois"},
    {"whowas"},
    {"op"},
    {"deop"},
    {"voice"},
    {"devoice"},
    {"as"},
    {"bye"},
};

} // namespace

// Each of these tells whether it has taken the word.
std::vector<SlashWord> WindowWords::over(std::vector<SlashWord> words) {
    const std::pair<const char*, Run> own[] = {
        {"connect", &WindowWords::connect},       {"reconnect", &WindowWords::connect},
        {"disconnect", &WindowWords::disconnect}, {"networks", &WindowWords::networks},
        {"leave", &WindowWords::leave},           {"names", &WindowWords::names},
    };
    for (SlashWord& each : words)
        for (const auto& [name, run] : own)
            if (each.name == name)
                each.run = [this, run = run, others = each.run](std::string_view rest) {
                    return (this->*run)(rest) || others(rest);
                };
    return without(std::move(words));
}

// What is said to somebody here must not reach one of that name on a network.
std::vector<SlashWord> WindowWords::without(std::vector<SlashWord> words) const {
    for (SlashWord& each : words) {
        const auto found = std::ranges::find(missing, each.name, &Missing::name);
        if (found == std::end(missing))
            continue;
        std::string text = "the chat client has no /" + each.name;
        if (!found->instead.empty())
            text.append(": ").append(found->instead);
        each.run = [this, text, asksAlone = found->asksAlone,
                    others = each.run](std::string_view rest) {
            if (!isInFront() || meansNetwork(rest) || (asksAlone && isBlank(rest)))
                return others(rest);
            tell_(text);
            return true;
        };
    }
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

} // namespace larkspin
