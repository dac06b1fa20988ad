#include "irc/client/conversation_words.h"

#include "host/conversations.h"
#include "host/new_lines.h"
#include "host/own_room.h"
#include "host/room_words.h"
#include "host/window_room/window_room.h"
#include "irc/client/irc_networks.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <algorithm>
#include <optional>
#include <span>

namespace larkspin {

namespace {

constexpr int usualLines = 100, mostFound = 100;
constexpr int mostNumber = 99'999; // of a conversation

// As it is read.
std::string readOf(const KeptLine& line) {
    const bool isSaid = line.kind == KeptLine::Kind::said;
    return (isSaid ? visibleName(line.speaker) + ": " : "") + visibleText(wordsOf(line), " ");
}

} // namespace

// On a network the owner can't speak for others, and conversations have numbers, too.
std::vector<SlashWord> ConversationWords::words() {
    std::vector<SlashWord> words = roomWords(own_, tell_);
    for (SlashWord& word : words) {
        const bool isRoom = word.name == "room";
        if (isRoom) {
            word.arguments = "[NAME|NUMBER]";
            word.help = "tells of the conversations, or goes to another one; 0 is at home";
        }
        word.run = [this, isRoom, atHome = word.run](std::string_view rest) {
            const bool isAtHome = conversations_.front().isAtHome();
            if (isAtHome && !(isRoom && isMoreThanHome()))
                return atHome(rest);
            if (isRoom)
                return room(rest);
            tell_("on a network others come, go and speak by themselves");
            return true;
        };
    }
    words.push_back({"lines",
                     "[NUMBER]",
                     "shows the last lines of where you are once more",
                     [this](std::string_view rest) { return lines(withoutBlanks(rest)); },
                     {},
                     "rooms"});
    words.push_back({"find",
                     "TEXT",
                     "shows the lines of where you are that hold that text",
                     [this](std::string_view rest) { return find(withoutBlanks(rest)); },
                     {"lastlog", "grep"},
                     "rooms"});
    return words;
}

bool ConversationWords::isMoreThanHome() const {
    return networks_.isOnAny() || conversations_.numbered(1);
}

// Other programs have "+1", "goto 2" and "list" after such a word.
bool ConversationWords::lines(std::string_view rest) {
    const auto number = rest.empty()
                            ? std::optional(usualLines)
                            : plainNumber(rest, 1, static_cast<int>(Conversation::mostLines));
    if (number)
        conversations_.showAgain(*number);
    return number.has_value();
}

// What was told for the asking isn't looked through, or each answer would be found by the next.
bool ConversationWords::find(std::string_view text) const {
    if (text.empty())
        return false;
    const std::string wanted = foldCase(text);
    std::vector<std::string> found;
    for (const KeptLine& line : conversations_.front().lines())
        if (line.kind != KeptLine::Kind::answer)
            if (const std::string read = readOf(line); foldCase(read).find(wanted) != read.npos)
                found.push_back("  " + stampOf(line, loop_) + ' ' + read);
    const std::size_t shown = std::min<std::size_t>(found.size(), mostFound);
    for (const std::string& each : std::span(found).last(shown))
        tell_(each);
    if (found.empty())
        tell_("no line here holds " + visibleText(text, " "));
    else if (found.size() > shown)
        tell_("those are the last of " + std::to_string(found.size()));
    return true;
}

bool ConversationWords::room(std::string_view rest) {
    std::string_view wanted = takeWord(rest);
    if (equalFolded(wanted, "goto"))
        wanted = takeWord(rest);
    if (!withoutBlanks(rest).empty())
        return false;
    if (wanted.empty() || equalFolded(wanted, "list"))
        tellConversations();
    else if (wanted == "+1" || wanted == "-1")
        goOn(wanted == "+1" ? 1 : -1);
    else
        enter(std::string(wanted));
    return true;
}

// In a circle, with home.
void ConversationWords::goOn(int steps) {
    int last = 0;
    for (const auto& each : conversations_.all())
        last = std::max(last, conversations_.numberOf(*each));
    const int next = conversations_.numberOf(conversations_.front()) + steps;
    enter(std::to_string(next < 0 ? last : next > last ? 0 : next));
}

void ConversationWords::enter(const std::string& wanted) {
    Conversation* found = conversations_.home().name() == wanted ? &conversations_.home() : nullptr;
    if (const auto number = plainNumber(wanted, 0, mostNumber)) {
        found = *number == 0 ? &conversations_.home() : conversations_.numbered(*number);
        if (!found)
            return tell_("there is no room " + wanted);
    } else if (equalFolded(wanted, "home")) {
        found = &conversations_.home();
    } else if (enterChannel(wanted)) {
        return;
    }
    for (const auto& each : conversations_.all())
        if (!found && equalFolded(each->name(), wanted))
            found = each.get();
    if (found)
        goTo(*found);
    else
        tell_("you are not in " + visibleName(wanted));
}

void ConversationWords::goTo(Conversation& conversation) {
    if (windows_.owns(conversation))
        windows_.enter(conversation);
    else if (IrcNetwork* const network = networks_.of(conversation))
        network->client.enter(conversation);
    else
        own_.enterRoom(conversation.name());
}

// The one of that name on the network where the owner is; else on any other.
bool ConversationWords::enterChannel(const std::string& name) {
    if (networks_.atHand().client.enterRoom(name))
        return true;
    return std::ranges::any_of(networks_.all(), [&](const auto& each) {
        return each.get() != &networks_.atHand() && each->client.enterRoom(name);
    });
}

void ConversationWords::tellConversations() const {
    for (const auto& each : conversations_.all()) {
        const int number = conversations_.numberOf(*each);
        if (number == 0 && each.get() != &conversations_.home())
            continue;
        const bool isHome = each->kind() == Conversation::Kind::home;
        std::string line =
            std::to_string(number) + "  " + (isHome ? "home" : conversations_.fullName(*each));
        if (each.get() == &conversations_.front())
            line += " (here)";
        else if (each->unread() > 0)
            line += " (" + counted(each->unread(), "line") +
                    (each->unreadForOwner() > 0
                         ? ", " + std::to_string(each->unreadForOwner()) + " for you)"
                         : ")");
        tell_(line + (each->isOpen ? "" : " (left)"));
    }
}

} // namespace larkspin
