#include "irc/client/irc_order_words.h"

#include "host/conversations.h"
#include "irc/channels/irc_ignore_list.h"
#include "irc/client/irc_client.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <string>

namespace larkspin {

namespace {

constexpr int mostPeopleAskedFor = 1'000'000;

bool isEmpty(std::string_view rest) {
    return withoutBlanks(rest).empty();
}

std::string trimmed(std::string_view rest) {
    return std::string(withoutBlanks(rest));
}

std::string wordOf(std::string_view& rest) {
    return std::string(takeWord(rest));
}

} // namespace

std::vector<SlashWord> IrcOrderWords::words() const {
    std::vector<SlashWord> all;
    for (auto&& words : {about("rooms", wordsAboutRooms()), about("people", wordsAboutPeople()),
                         about("network", wordsAboutNetwork())})
        all.insert(all.end(), words.begin(), words.end());
    return all;
}

IrcOrderWords::Run IrcOrderWords::by(bool (IrcOrderWords::*work)(std::string_view) const) const {
    return [self = *this, work](std::string_view rest) { return (self.*work)(rest); };
}

IrcOrderWords::Run IrcOrderWords::ranks(char sign, char letter) const {
    return [self = *this, sign, letter](std::string_view rest) {
        std::vector<std::string> names;
        for (std::string name = wordOf(rest); !name.empty(); name = wordOf(rest))
            names.push_back(std::move(name));
        if (!names.empty())
            self.network_().orders().rank(sign, letter, names);
        return !names.empty();
    };
}

std::vector<SlashWord> IrcOrderWords::wordsAboutRooms() const {
    using Self = IrcOrderWords;
    const auto mode = [network = network_](std::string_view rest) {
        network().orders().mode(rest);
        return true;
    };
    const auto who = [network = network_](std::string_view rest) {
        network().orders().who(trimmed(rest));
        return true;
    };
    return {
        {"list", "[PATTERN] [LEAST]", "tells which rooms there are, those with most people first",
         by(&Self::list)},
        {"mode", "[#ROOM|NAME] [MODES]",
         "tells or changes the modes of the room, or yours; b tells "
         "who is kept out",
         mode},
        {"invite", "NAME [#ROOM]", "invites somebody into the room", by(&Self::invite)},
        {"who", "[MASK]", "tells who is in the room, and from where", who},
    };
}

std::vector<SlashWord> IrcOrderWords::wordsAboutPeople() const {
    using Self = IrcOrderWords;
    const auto whowas = [network = network_](std::string_view rest) {
        if (!isEmpty(rest))
            network().orders().whowas(trimmed(rest));
        return !isEmpty(rest);
    };
    const auto away = [network = network_](std::string_view rest) {
        network().orders().away(isEmpty(rest) ? "away" : trimmed(rest));
        return true;
    };
    const auto back = [network = network_](std::string_view) {
        network().orders().away({});
        return true;
    };
    return {
        {"whois", "[NAME]", "tells who somebody is", by(&Self::whois), {"w", "wi", "wii"}},
        {"whowas", "NAME", "tells who somebody was who has gone", whowas, {"ww"}},
        {"away", "[REASON]", "tells whoever writes to you that you are away", away},
        {"back", "", "ends that", back},
        {"op", "NAME...", "makes people operators of the room", ranks('+', 'o')},
        {"deop", "NAME...", "takes that back", ranks('-', 'o')},
        {"voice", "NAME...", "lets people speak in a room where not all may", ranks('+', 'v')},
        {"devoice", "NAME...", "takes that back", ranks('-', 'v')},
        {"kick",
         "[#ROOM] NAME [REASON]",
         "puts somebody out of the room, who may come back",
         by(&Self::kick),
         {"k"}},
        {"ban",
         "[NAME|MASK]",
         "puts somebody out and keeps him out, as 'ban; or tells whom the "
         "room keeps out",
         by(&Self::ban),
         {"kickban", "kb"}},
        {"unban", "NAME|MASK", "lets him back in", by(&Self::unban)},
        {"ignore", "[NAME|MASK]", "neither shows nor hears somebody; or tells who that is",
         by(&Self::ignore)},
        {"unignore", "NAME|MASK|NUMBER", "hears him again", by(&Self::unignore)},
    };
}

std::vector<SlashWord> IrcOrderWords::wordsAboutNetwork() const {
    const auto quote = [network = network_](const std::string& command) {
        return [network, command](std::string_view rest) {
            if (command.empty() && isEmpty(rest))
                return false;
            network().orders().quote(command + trimmed(rest));
            return true;
        };
    };
    const auto oper = [quote](std::string_view rest) {
        return !isEmpty(rest) && quote("OPER ")(rest);
    };
    return {
        {"quote",
         "LINE",
         "sends the server a line of the protocol, and tells its answer",
         quote(""),
         {"raw"}},
        {"motd", "", "tells the server's message of the day", quote("MOTD ")},
        {"oper", "NAME PASSWORD", "makes you an operator of the network", oper},
    };
}

// In a private talk it is about whom he talks to.
bool IrcOrderWords::whois(std::string_view rest) const {
    const Conversation& front = conversations_.front();
    std::string name = wordOf(rest);
    if (name.empty() && front.kind() == Conversation::Kind::person)
        name = front.name();
    network_().orders().whois(name);
    return true;
}

bool IrcOrderWords::list(std::string_view rest) const {
    std::string pattern = wordOf(rest), least = wordOf(rest);
    if (least.empty() && plainNumber(pattern, 0, mostPeopleAskedFor))
        std::swap(pattern, least);
    const auto people = least.empty() ? 0 : plainNumber(least, 0, mostPeopleAskedFor);
    if (!people || !isEmpty(rest))
        return false;
    network_().orders().list(pattern, *people);
    return true;
}

bool IrcOrderWords::invite(std::string_view rest) const {
    const std::string name = wordOf(rest), room = wordOf(rest);
    if (name.empty() || !isEmpty(rest))
        return false;
    network_().orders().invite(name, room);
    return true;
}

bool IrcOrderWords::kick(std::string_view rest) const {
    std::string name = wordOf(rest), room;
    if (network_().orders().meansRoom(name)) {
        room = name;
        name = wordOf(rest);
    }
    if (!name.empty())
        network_().orders().kick(room, name, trimmed(rest));
    return !name.empty();
}

// Each in an event of its own, since it may wait.
bool IrcOrderWords::ban(std::string_view rest) const {
    const std::string name = trimmed(rest);
    if (name.find(' ') != name.npos)
        return false;
    if (name.empty())
        network_().orders().mode("b");
    else
        loop_.post([network = network_, name] { network().orders().ban(name); });
    return true;
}

bool IrcOrderWords::unban(std::string_view rest) const {
    const std::string name = trimmed(rest);
    if (name.empty() || name.find(' ') != name.npos)
        return false;
    loop_.post([network = network_, name] { network().orders().unban(name); });
    return true;
}

bool IrcOrderWords::ignore(std::string_view rest) const {
    std::string_view others = rest;
    const std::string word = wordOf(others);
    if (isEmpty(others) && (word.empty() || equalFolded(word, "list")))
        return tellIgnored(), true;
    if (!isEmpty(others) && equalFolded(word, "del"))
        return unignore(others);
    if (!isEmpty(others) && equalFolded(word, "add"))
        rest = others;
    const std::string given = trimmed(rest), mask = IrcIgnoreList::maskOf(given);
    if (mask.empty())
        return false;
    if (!ignored_.add(mask))
        return tell_("you ignore too many"), true;
    tell_(visibleName(mask) + " is ignored");
    network_().peopleChanged();
    return true;
}

void IrcOrderWords::tellIgnored() const {
    const auto names = network_().moderation().ignoredNames();
    if (ignored_.masks().empty() && names.empty())
        tell_("you ignore nobody");
    int number = 0;
    for (const std::string& mask : ignored_.masks())
        tell_(std::to_string(++number) + "  " + visibleName(mask));
    for (const std::string& name : names)
        tell_(visibleName(name) + ", until larkspin ends");
}

bool IrcOrderWords::unignore(std::string_view rest) const {
    std::string given = trimmed(rest);
    if (given.empty())
        return false;
    const auto& masks = ignored_.masks();
    if (const auto number = plainNumber(given, 1, static_cast<int>(masks.size())))
        given = masks[static_cast<std::size_t>(*number) - 1];
    const bool wasNamed = network_().moderation().hear(given);
    const bool isHeard = ignored_.remove(IrcIgnoreList::maskOf(given)) || wasNamed;
    tell_(visibleName(given) + (isHeard ? " is heard again" : " isn't ignored"));
    network_().peopleChanged();
    return true;
}

} // namespace larkspin
