#include "irc/client/irc_words.h"

#include "host/own_room.h"
#include "host/room_words.h"
#include "irc/client/irc_client.h"
#include "irc/client/password_prompt.h"
#include "shell/dialogs.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/parts.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <optional>
#include <utility>

namespace larkspin {

namespace {

constexpr auto followsWithin = std::chrono::milliseconds(500);

bool isBlank(std::string_view rest) {
    return withoutBlanks(rest).empty();
}

} // namespace

IrcWords::IrcWords(EventLoop& loop, OwnRoom& own, IrcClient& irc, PasswordPrompt& prompt,
                   IrcAccountFile& file, SlashWords::Tell tell)
    : loop_(loop), own_(own), irc_(irc), prompt_(prompt), file_(file), tell_(std::move(tell)) {
    irc_.limitSaid(file_.account().linesPerMinute);
}

IrcWords::~IrcWords() {
    loop_.cancel(unanswered_);
    loop_.cancel(following_);
}

std::vector<SlashWord> IrcWords::words() {
    using Self = IrcWords;
    const auto by = [this](bool (Self::*work)(std::string_view)) {
        return [this, work](std::string_view rest) { return (this->*work)(rest); };
    };
    // For words that mean something on a network only.
    const auto there = [this](std::function<bool(std::string_view)> work) {
        return [this, work = std::move(work)](std::string_view rest) {
            if (irc_.isOn())
                return work(rest);
            tell_("you are on no network: /connect leads to one");
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
    const auto disconnect = [this](std::string_view rest) {
        if (!isBlank(rest))
            return false;
        irc_.disconnect();
        return true;
    };
    std::vector<SlashWord> all = wordsOfOwnRoom();
    const std::vector<SlashWord> more{
        {"connect", "[[plain] SERVER[:PORT] NICK [#ROOM]]",
         "goes to a network, by TLS unless plain; or to the last one once more",
         by(&Self::connect)},
        {"login", "USER [keep]", "asks for the password of an account, and may keep it",
         by(&Self::login)},
        {"join", "#ROOM [KEY]", "goes into a room, which waits behind the one you are in",
         there(join)},
        {"leave", "", "leaves the room", there(leave)},
        {"names", "", "tells who is in the room", there(names)},
        {"topic", "[TEXT]", "tells the room's topic, or sets it", there(topic)},
        {"msg", "NAME TEXT", "sends somebody a private message", there(by(&Self::message))},
        {"nick", "NAME", "asks for another name", there(by(&Self::changeNick))},
        {"limit", "[LINES]", "how many lines a minute are said at most; 0 for as many as may",
         by(&Self::limit)},
        {"disconnect", "", "leaves the network, for your own room", there(disconnect)},
    };
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// On a network the owner can't speak for others, and rooms have numbers, too.
std::vector<SlashWord> IrcWords::wordsOfOwnRoom() {
    std::vector<SlashWord> words = roomWords(own_, tell_);
    for (SlashWord& word : words) {
        const bool isRoom = word.name == "room";
        if (isRoom)
            word.arguments = "[NAME|NUMBER]";
        word.run = [this, isRoom, atHome = word.run](std::string_view rest) {
            if (!irc_.isOn())
                return atHome(rest);
            if (isRoom)
                return room(rest);
            tell_("on a network others come, go and speak by themselves");
            return true;
        };
    }
    return words;
}

bool IrcWords::asksPassword(std::string_view line) {
    return SlashWords::isMeantForIt(line) && equalFolded(partedAt(line, ' ').head, "/login");
}

bool IrcWords::connect(std::string_view rest) {
    if (isBlank(rest))
        return connectAgain();
    std::string_view word = takeWord(rest);
    const bool isPlain = equalFolded(word, "plain");
    if (isPlain)
        word = takeWord(rest);
    const auto server = readIrcServer(word, !isPlain);
    const std::string_view nick = takeWord(rest), room = takeWord(rest);
    if (!server || !canBeIrcNick(nick) || !(room.empty() || canBeIrcWord(room)) || !isBlank(rest))
        return false;
    IrcAccount account = file_.account();
    account.server = *server;
    account.nick = nick;
    account.room = room;
    file_.keep(std::move(account));
    return connectAgain();
}

bool IrcWords::connectAgain() {
    IrcAccount account = file_.account();
    if (account.server.host.empty() || account.nick.empty())
        return false;
    // An account that was given without a network belongs to the first one after that.
    if (account.loginHost.empty() && !account.password.empty())
        account.loginHost = account.server.host;
    const bool isLoginFor = equalFolded(account.loginHost, account.server.host);
    const bool logsIn = isLoginFor && !account.password.empty();
    if (!account.user.empty() && !logsIn)
        tell_("you don't log in as " + visibleName(account.user) +
              (isLoginFor ? ": there is no password"
                          : ", which is for " + visibleName(account.loginHost)));
    wasOn_ = account.isWanted = true;
    file_.keep(account);
    irc_.connect(account.server,
                 {account.nick, logsIn ? account.user : "", logsIn ? account.password : ""},
                 account.room);
    return true;
}

void IrcWords::takeUpAgain() {
    if (file_.account().isWanted)
        loop_.post([this] { connectAgain(); });
}

bool IrcWords::login(std::string_view rest) {
    IrcAccount account = file_.account();
    account.user = takeWord(rest);
    const std::string_view keep = takeWord(rest);
    account.keepsPassword = equalFolded(keep, "keep");
    if (!canBeIrcWord(account.user) || keep.empty() == account.keepsPassword || !isBlank(rest))
        return false;
    // The account is one of the network that the owner is on, or else of the next one.
    account.loginHost = irc_.isOn() ? account.server.host : "";
    prompt_.ask("password of " + visibleName(account.user),
                [this, account](std::string password) mutable {
                    account.password = std::move(password);
                    takePassword(std::move(account));
                });
    loop_.cancel(unanswered_);
    unanswered_ = loop_.once(answerLimit, [this] {
        prompt_.dismiss();
        tell_("nobody has typed a password");
    });
    return true;
}

// The connection stays as it is, since a new one would leave its rooms.
void IrcWords::takePassword(IrcAccount account) {
    loop_.cancel(std::exchange(unanswered_, TimerId::none));
    if (account.password.empty())
        return tell_("without a password all stays as it was");
    if (!canBeIrcPassword(account.password))
        return tell_("this can't be a password");
    IrcAccount kept = file_.account();
    kept.user = std::move(account.user);
    kept.password = std::move(account.password);
    kept.loginHost = std::move(account.loginHost);
    kept.keepsPassword = account.keepsPassword;
    file_.keep(kept);
    tell_("you log in as " + visibleName(kept.user) + " from the next /connect on");
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

bool IrcWords::room(std::string_view rest) {
    const std::string_view wanted = takeWord(rest);
    if (!isBlank(rest))
        return false;
    if (wanted.empty())
        tellRooms();
    else if (const auto number = plainNumber(wanted, 0, static_cast<int>(IrcClient::mostRooms)))
        irc_.enterRoom(*number);
    else
        irc_.enterRoom(std::string(wanted));
    return true;
}

void IrcWords::tellRooms() const {
    const std::vector<IrcClient::Joined> rooms = irc_.rooms();
    if (rooms.empty())
        tell_("you are in no room");
    int number = 0;
    for (const auto& [name, isHere, unseen] : rooms) {
        std::string line = std::to_string(++number) + "  " + visibleName(name);
        if (isHere)
            line += " (here)";
        else if (unseen > 0)
            line += " (" + counted(unseen, "line") + ')';
        tell_(line);
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
