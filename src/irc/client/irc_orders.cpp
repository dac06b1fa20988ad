#include "irc/client/irc_orders.h"

#include "host/conversations.h"
#include "host/shown_room.h"
#include "irc/channels/irc_moderation.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

using Question = IrcAnswers::Question;

bool isMask(std::string_view text) {
    return text.find_first_of("!@*?") != text.npos || text.starts_with('$') ||
           text.starts_with('~');
}

// Somebody in the list, by his whole name.
const Person* personIn(const People& people, std::string_view name, const IrcSession& session) {
    const auto found = std::ranges::find_if(
        people, [&](const Person& person) { return session.isSame(person.name, name); });
    return found == people.end() ? nullptr : &*found;
}

} // namespace

IrcOrders::IrcOrders(EventLoop& loop, IrcSession& session, IrcChannels& channels,
                     const Conversations& conversations, IrcModeration& moderation,
                     const RoomDisplay& shown)
    : session_(session), channels_(channels), conversations_(conversations),
      moderation_(moderation), shown_(shown),
      answers_(loop, session, [this](const std::string& text) { shown_.tell(text); }) {}

bool IrcOrders::tellWithoutServer() const {
    if (!session_.isWelcomed())
        shown_.tell("you are not connected");
    return !session_.isWelcomed();
}

bool IrcOrders::tellWithoutRoom() const {
    if (channels_.here())
        return false;
    const Conversation& front = conversations_.front();
    if (!tellWithoutServer())
        shown_.tell(front.kind() == Conversation::Kind::person
                        ? "this is a private talk with " + visibleName(front.name())
                        : "you are in no room");
    return true;
}

std::string IrcOrders::here() const {
    return tellWithoutRoom() ? "" : channels_.here()->channel.name();
}

// In its turn among what he types.
void IrcOrders::ask(std::string_view command, const std::vector<std::string>& parameters,
                    Expected answer) {
    const auto leaves = [this, answer] {
        if (answer)
            answers_.expect(answer->first, answer->second);
        return std::string();
    };
    if (!tellWithoutServer() &&
        !session_.send(IrcOutgoing::Kind::typed, ircLine(command, parameters), leaves))
        shown_.tell("too much waits to be said");
}

bool IrcOrders::meansRoom(std::string_view word) const {
    return session_.features().isChannel(word) && (word.front() != '+' || isInRoom(word));
}

bool IrcOrders::isInRoom(std::string_view name) const {
    return channels_.find(name, session_.features()) != nullptr;
}

void IrcOrders::whois(const std::string& name) {
    const std::string who = name.empty() ? session_.nick() : name;
    ask("WHOIS", {who}, {{Question::person, who}});
}

void IrcOrders::whowas(const std::string& name) {
    ask("WHOWAS", {name}, {{Question::formerPerson, name}});
}

void IrcOrders::who(const std::string& mask) {
    const std::string about = mask.empty() ? here() : mask;
    if (!about.empty())
        ask("WHO", {about}, {{Question::people, ""}});
}

void IrcOrders::names(const std::string& room) {
    ask("NAMES", {room}, {{Question::names, room}});
}

void IrcOrders::away(const std::string& why) {
    ask("AWAY", why.empty() ? std::vector<std::string>() : std::vector<std::string>{why},
        {{Question::away, ""}});
}

void IrcOrders::list(const std::string& pattern, int leastPeople) {
    if (tellWithoutServer())
        return;
    if (const auto parameters = answers_.expectRooms(pattern, leastPeople))
        ask("LIST", *parameters);
    else
        shown_.tell("the list of rooms is on its way");
}

void IrcOrders::quote(std::string_view line) {
    if (const auto message = readIrcMessage(line))
        ask(message->command, message->parameters, {{Question::anything, ""}});
}

void IrcOrders::invite(const std::string& name, const std::string& room) {
    if (const std::string to = room.empty() ? here() : room; !to.empty())
        ask("INVITE", {name, to});
}

// A list of masks is asked for by its letter alone.
IrcOrders::Expected IrcOrders::answerToModes(const std::string& about,
                                             const std::vector<std::string>& modes) const {
    const bool isRoom = session_.features().isChannel(about);
    if (modes.empty())
        return {{isRoom ? Question::roomModes : Question::ownModes, isRoom ? about : ""}};
    std::string_view letters = modes.front();
    if (letters.starts_with('+'))
        letters.remove_prefix(1);
    if (isRoom && modes.size() == 1 && letters.size() == 1 &&
        session_.features().listModes.find(letters) != std::string::npos)
        return {{Question::masks, about}};
    return {};
}

void IrcOrders::mode(std::string_view words) {
    std::vector<std::string> parameters;
    for (std::string_view rest = words;;) {
        const std::string_view word = takeWord(rest);
        if (word.empty())
            break;
        parameters.emplace_back(word);
    }
    const bool hasTarget = !parameters.empty() &&
                           (meansRoom(parameters.front()) || session_.isSelf(parameters.front()));
    const std::string about = hasTarget ? parameters.front() : here();
    if (about.empty())
        return;
    if (hasTarget)
        parameters.erase(parameters.begin());
    const Expected answer = answerToModes(about, parameters);
    parameters.insert(parameters.begin(), about);
    ask("MODE", parameters, answer);
}

void IrcOrders::rank(char sign, char letter, const std::vector<std::string>& names) {
    const std::string room = here();
    const std::size_t inLine = std::max<std::size_t>(session_.features().modesInLine, 1);
    for (std::size_t next = 0; !room.empty() && next < names.size(); next += inLine) {
        const std::size_t count = std::min(inLine, names.size() - next);
        std::vector<std::string> parameters{room, sign + std::string(count, letter)};
        const auto from = names.begin() + static_cast<std::ptrdiff_t>(next);
        parameters.insert(parameters.end(), from, from + static_cast<std::ptrdiff_t>(count));
        ask("MODE", parameters);
    }
}

void IrcOrders::kick(const std::string& room, const std::string& name, const std::string& reason) {
    std::vector<std::string> parameters{room.empty() ? here() : room, name};
    if (parameters.front().empty())
        return;
    if (!reason.empty())
        parameters.push_back(reason);
    ask("KICK", parameters);
}

void IrcOrders::ban(const std::string& nameOrMask) {
    const std::string room = here();
    if (room.empty())
        return;
    if (isMask(nameOrMask))
        return ask("MODE", {room, "+b", nameOrMask});
    const People people = moderation_.listPeople();
    const Person* const person = personIn(people, nameOrMask, session_);
    if (!moderation_.ownerMayEject())
        shown_.tell("you may not put anybody out of " + visibleName(room));
    else if (!person)
        shown_.tell(visibleName(nameOrMask) + " isn't here");
    else
        moderation_.eject(*person);
}

void IrcOrders::unban(const std::string& nameOrMask) {
    const std::string room = here();
    if (room.empty())
        return;
    const auto ejected = moderation_.beginAllowing();
    const Person* const person = ejected ? personIn(*ejected, nameOrMask, session_) : nullptr;
    if (!person && isMask(nameOrMask))
        return ask("MODE", {room, "-b", nameOrMask});
    if (!person)
        shown_.tell(visibleName(nameOrMask) + " isn't kept out");
    else if (moderation_.allow(*person) != Deed::done)
        shown_.tell("you may not let anybody back into " + visibleName(room));
}

} // namespace larkspin
