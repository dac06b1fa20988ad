#include "irc/client/irc_words.h"

#include "host/conversations.h"
#include "host/own_room.h"
#include "host/room_words.h"
#include "irc/client/irc_client.h"
#include "text/blanks.h"
#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <optional>
#include <utility>

namespace larkspin {

namespace {

constexpr const char* nowhere = "you are on no network: /connect leads to one";
constexpr int mostNumber = 99'999; // of a conversation
constexpr auto followsWithin = std::chrono::milliseconds(500);

bool isBlank(std::string_view rest) {
    return withoutBlanks(rest).empty();
}

} // namespace

IrcWords::IrcWords(EventLoop& loop, Conversations& conversations, OwnRoom& own, IrcClient& irc,
                   PasswordPrompt& prompt, IrcAccountFile& file, Files& disk, SlashWords::Tell tell)
    : loop_(loop), conversations_(conversations), own_(own), irc_(irc), file_(file), tell_(tell),
      access_(loop, irc, prompt, file, disk, tell,
              [this] {
                  SlashWords words(tell_);
                  words.add(wordsInside());
                  words.add(talk_.words());
                  return words;
              }),
      talk_(
          conversations, own, [this]() -> IrcClient& { return irc_; }, tell) {
    irc_.limitSaid(file_.account().linesPerMinute);
}

IrcWords::~IrcWords() {
    loop_.cancel(following_);
}

std::vector<SlashWord> IrcWords::words() {
    std::vector<SlashWord> all = wordsOfOwnRoom();
    for (auto&& words : {access_.words(), wordsInside(), talk_.words()})
        all.insert(all.end(), words.begin(), words.end());
    all.push_back(
        {"disconnect", "", "leaves the network, for your own room", [this](std::string_view rest) {
             if (!isBlank(rest))
                 return false;
             if (irc_.isOn())
                 irc_.disconnect();
             else
                 tell_(nowhere);
             return true;
         }});
    return all;
}

std::vector<SlashWord> IrcWords::wordsInside() {
    using Self = IrcWords;
    const auto by = [this](bool (Self::*work)(std::string_view)) {
        return [this, work](std::string_view rest) { return (this->*work)(rest); };
    };
    // For words that mean something on a network only.
    const auto there = [this](std::function<bool(std::string_view)> work) {
        return [this, work = std::move(work)](std::string_view rest) {
            if (irc_.isOn())
                return work(rest);
            tell_(nowhere);
            return true;
        };
    };
    const auto join = [this](std::string_view rest) {
        const std::string name(takeWord(rest));
        const std::string key(takeWord(rest));
        if (name.empty() || !isBlank(rest))
            return false;
        irc_.join(name, key);
        return true;
    };
    const auto topic = [this](std::string_view rest) {
        irc_.topic(isBlank(rest) ? std::nullopt : std::optional(textAfter(rest)));
        return true;
    };
    const auto leave = [this](std::string_view rest) {
        if (isBlank(rest))
            irc_.leave();
        return isBlank(rest);
    };
    const auto names = [this](std::string_view rest) {
        if (isBlank(rest))
            irc_.names();
        return isBlank(rest);
    };
    return {
        {"join", "#ROOM [KEY]", "goes into a room, which waits behind the one you are in",
         there(join)},
        {"leave", "", "leaves the room, or ends the private talk",
         [this, leave, there = there(leave)](std::string_view rest) {
             return conversations_.front().isAtHome() ? there(rest) : leave(rest);
         }},
        {"names", "", "tells who is in the room", there(names)},
        {"topic", "[TEXT]", "tells the room's topic, or sets it", there(topic)},
        {"msg", "NAME TEXT", "sends somebody a private message", there(by(&Self::message))},
        {"query", "NAME [TEXT]", "talks to somebody in private, in a conversation of its own",
         there(by(&Self::query))},
        {"nick", "NAME", "asks for another name", there(by(&Self::changeNick))},
        {"limit", "[LINES]", "how many lines a minute are said at most; 0 for as many as may",
         by(&Self::limit)},
    };
}

// On a network the owner can't speak for others, and conversations have numbers, too.
std::vector<SlashWord> IrcWords::wordsOfOwnRoom() {
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
    return words;
}

bool IrcWords::isMoreThanHome() const {
    return irc_.isOn() || conversations_.numbered(1);
}

void IrcWords::takeUpAgain() {
    if (file_.account().isWanted)
        loop_.post([this] { access_.connectAgain(); });
}

bool IrcWords::message(std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty() || isBlank(rest))
        return false;
    irc_.message(name, textAfter(rest));
    return true;
}

bool IrcWords::changeNick(std::string_view rest) {
    const std::string_view nick = takeWord(rest);
    if (!canBeIrcNick(nick) || !isBlank(rest))
        return false;
    irc_.changeNick(std::string(nick));
    return true;
}

bool IrcWords::query(std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty())
        return false;
    irc_.talkTo(name);
    if (!isBlank(rest))
        irc_.message(name, textAfter(rest));
    return true;
}

bool IrcWords::room(std::string_view rest) {
    const std::string_view wanted = takeWord(rest);
    if (!isBlank(rest))
        return false;
    if (wanted.empty())
        tellConversations();
    else
        enter(std::string(wanted));
    return true;
}

void IrcWords::enter(const std::string& wanted) {
    Conversation* found = conversations_.home().name() == wanted ? &conversations_.home() : nullptr;
    if (const auto number = plainNumber(wanted, 0, mostNumber)) {
        found = *number == 0 ? &conversations_.home() : conversations_.numbered(*number);
        if (!found)
            return tell_("there is no room " + wanted);
    } else if (equalFolded(wanted, "home")) {
        found = &conversations_.home();
    } else if (irc_.enterRoom(wanted)) {
        return;
    }
    for (const auto& each : conversations_.all())
        if (!found && equalFolded(each->name(), wanted))
            found = each.get();
    if (!found)
        tell_("you are not in " + visibleName(wanted));
    else if (found->isAtHome())
        own_.enterRoom(found->name());
    else
        irc_.enter(*found);
}

void IrcWords::tellConversations() const {
    for (const auto& each : conversations_.all()) {
        const int number = conversations_.numberOf(*each);
        if (number == 0 && each.get() != &conversations_.home())
            continue;
        const bool isHome = each->kind() == Conversation::Kind::home;
        std::string line =
            std::to_string(number) + "  " + (isHome ? "home" : visibleName(each->name()));
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

bool IrcWords::limit(std::string_view rest) {
    const std::string_view lines = takeWord(rest);
    IrcAccount account = file_.account();
    if (!lines.empty()) {
        const auto wanted = plainNumber(lines, 0, mostLinesPerMinute);
        if (!wanted || !isBlank(rest))
            return false;
        account.linesPerMinute = *wanted;
        irc_.limitSaid(*wanted);
        file_.keep(account);
    }
    if (account.linesPerMinute == 0)
        tell_("larkspin says as many lines as the server allows");
    else
        tell_("larkspin says at most " + counted(account.linesPerMinute, "line") + " a minute");
    return true;
}

// Changes are written together, after a moment, so that no server can make the file be written
// again and again.
void IrcWords::roomChanged() {
    wasOn_ = wasOn_ || irc_.isOn();
    if (following_ == TimerId::none)
        following_ = loop_.once(followsWithin, [this] { follow(); });
}

void IrcWords::follow() {
    loop_.cancel(std::exchange(following_, TimerId::none));
    const bool isOn = irc_.isOn();
    // If there was no network before and there is none now, there is nothing new to keep.
    if (!std::exchange(wasOn_, isOn) && !isOn)
        return;
    IrcAccount account = file_.account();
    const std::string &room = irc_.wantedRoom(), &nick = irc_.wantedNick();
    if (room.empty() || canBeIrcWord(room))
        account.room = room;
    if (canBeIrcNick(nick))
        account.nick = nick;
    account.isWanted = isOn;
    if (account != file_.account())
        file_.keep(std::move(account));
}

} // namespace larkspin
