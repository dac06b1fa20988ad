#include "irc/client/irc_client.h"

#include "host/room_words.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/talk/irc_news.h"
#include "text/blanks.h"
#include "text/number.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

const std::string usualFarewell = "larkspin flies off";

} // namespace

IrcClient::IrcClient(EventLoop& loop, ChatLines& lines, IrcConnection& connection,
                     RoomDisplay shown)
    : loop_(loop), lines_(lines), shown_(std::move(shown)),
      session_(loop, connection,
               {.welcomed =
                    [this] {
                        tell("you are " + visibleName(ownName()) + " on " + visibleName(name()));
                        const Task join = [this] { joining_.welcomed(); };
                        welcomed_ ? welcomed_(join) : join();
                    },
                .message = [this](const IrcMessage& message) { take(message); },
                .lost = [this] { lost(); },
                // The session's texts may hold the server's words, codes included.
                .tell = [this](const std::string& text) { tell(plainText(text)); }}),
      joining_(session_, channels_,
               {.tell = [this](const std::string& text) { tell(text); },
                .newRoom = [this] { newRoom(); }}),
      hearing_(loop, lines, shown_, session_, channels_, moderation_),
      speech_(loop, session_, channels_,
              [this](const IrcSaid& said, bool atOnce) { hearing_.reached(said, atOnce); }),
      pacing_(loop, lines, session_.outgoing()) {}

const IrcChannel* IrcClient::here() const {
    const Place* const place = channels_.here();
    return place ? &place->channel : nullptr;
}

bool IrcClient::tellWithoutServer() const {
    if (!session_.isWelcomed())
        tell("you are not connected");
    return !session_.isWelcomed();
}

bool IrcClient::tellWithoutRoom() const {
    if (here())
        return false;
    if (!tellWithoutServer())
        tell("you are in no room");
    return true;
}

IrcClient::State IrcClient::state() const {
    if (!isOn_)
        return State::disconnected;
    if (!session_.isOn())
        return State::signedOff;
    if (!session_.isWelcomed())
        return State::connecting;
    return here() ? State::joined : State::connected;
}

void IrcClient::connect(const IrcServer& server, const IrcIdentity& identity,
                        const std::string& channel) {
    endSession();
    forgetRooms();
    if (server.host != session_.server().host)
        moderation_.forgetPeople();
    joining_.beginWith(channel);
    isOn_ = true;
    tell("connecting to " + visibleName(server.host));
    session_.connect(server, identity);
    shown_.changed();
}

void IrcClient::disconnect() {
    const bool wasThere = state() != State::connecting;
    if (!std::exchange(isOn_, false))
        return;
    endSession();
    forgetRooms();
    tell((wasThere ? "you have left " : "no longer connecting to ") +
         visibleName(session_.server().host));
    shown_.changed();
}

void IrcClient::signOff() {
    if (!session_.isOn())
        return;
    endSession();
    forgetRooms();
    // The network stays the place where the program works, though without a connection.
    tell("you are signed off");
    shown_.changed();
}

void IrcClient::endSession() {
    sendFarewell();
    session_.end(usualFarewell);
}

// If the event at work has said something, it was about this end, and its last line is still sent.
// All other lines that wait are dropped.
void IrcClient::sendFarewell() {
    if (session_.isWelcomed() && lines_.talk().hasSpoken)
        session_.outgoing().sendLast(IrcOutgoing::Kind::said);
}

void IrcClient::finish() {
    sendFarewell();
    std::vector<std::string> names;
    for (const Place& place : channels_.all())
        names.push_back(place.channel.name());
    std::string lines;
    // Each room is left with the farewell, and then the server.
    for (const std::string& list : ircLists(names))
        lines += ircLine("PART", {list, usualFarewell});
    session_.finish(lines + ircLine("QUIT", {usualFarewell}));
}

void IrcClient::lost() {
    // This comes first: the rooms that are forgotten now are to be joined again.
    joining_.lost();
    forgetRooms();
    shown_.changed();
}

void IrcClient::forgetRooms() {
    channels_.clear();
    speech_.clear();
    moderation_.newRoom();
}

void IrcClient::take(const IrcMessage& message) {
    const std::string& command = message.command;
    if (command == "PRIVMSG" || command == "NOTICE")
        return hearing_.take(message, speech_);
    // A line that a channel refuses won't be sent back. If it goes out again, it isn't news.
    if (numeric::refusesLine(command) && speech_.refused(message))
        return;
    const bool isSelf = session_.isSelf(message.nick());
    const bool isAnswer = numeric::isNumeric(command); // to the owner's own words
    // The order matters. News is told while the channels still know who was where. A channel that
    // the owner comes into is made before it takes the JOIN. What else becomes of him is followed
    // when the channels have taken it.
    if (!(command == "INVITE" && moderation_.ignores(message.nick())))
        tellNews(message, session_, here(),
                 [&](const std::string& text) { isAnswer ? tell(text) : shown_.message(text); });
    if (command == "JOIN" && isSelf)
        joining_.cameIn(std::string(message.parameter(0)));
    channels_.take(message, session_.features());
    joining_.take(message);
    moderation_.take(message);
    shown_.changed();
}

void IrcClient::newRoom() {
    moderation_.newRoom();
    moderation_.askForBans();
    shown_.changed();
}

void IrcClient::leave() {
    joining_.leave(usualFarewell);
}

std::vector<IrcClient::Joined> IrcClient::rooms() const {
    std::vector<Joined> all;
    for (const Place& place : channels_.all())
        all.push_back({place.channel.name(), channels_.isHere(&place), place.unseen});
    return all;
}

void IrcClient::changeNick(const std::string& nick) {
    if (!tellWithoutServer())
        session_.changeNick(std::string(withoutBlanks(nick)));
}

void IrcClient::quote(std::string_view line) {
    if (const auto message = readIrcMessage(line); message && !tellWithoutServer())
        session_.request(message->command, message->parameters);
}

void IrcClient::message(const std::string& name, const std::string& text) {
    if (tellWithoutServer())
        return;
    // A message to a room that the owner is in is a line of his there.
    if (const Place* const place = channels_.find(name, session_.features()))
        return speak(place->channel.name(), text, false);
    if (session_.features().isChannel(name))
        return tell("you are not in " + visibleName(name));
    if (name.empty() || std::ranges::any_of(name, endsIrcName))
        return tell("a name has no blanks and commas");
    if (speech_.whisper(name, text))
        tell("to " + visibleName(name) + ": " + plainMarkup(text));
    else
        tell("too much waits to be said");
}

void IrcClient::topic(const std::optional<std::string>& text) {
    if (tellWithoutRoom())
        return;
    if (text)
        session_.request("TOPIC", {here()->name(), *text});
    else if (here()->topic().empty())
        tell("there is no topic");
    else
        tell("the topic is: " + plainText(here()->topic()));
}

void IrcClient::names() {
    if (tellWithoutRoom())
        return;
    const auto called = [&](std::string_view name) {
        return here()->ranks(name, session_.features()) + visibleName(name);
    };
    tellRoom(*this, ejected(), called, [this](const std::string& text) { tell(text); });
}

void IrcClient::limitSaid(int linesPerMinute) {
    session_.outgoing().limitSaid(linesPerMinute);
    pacing_.limitSaid(linesPerMinute);
}

void IrcClient::say(const std::string& line) {
    if (!tellWithoutRoom())
        speak(here()->name(), line, false);
}

void IrcClient::sayShown(const std::string& line) {
    if (!tellWithoutRoom())
        speak(here()->name(), line, true);
}

void IrcClient::speak(std::string channel, const std::string& line, bool isShown) {
    // Asked first, since the line may take the owner elsewhere.
    const bool isElsewhere = !session_.isSame(channel, name());
    const std::string told = "to " + visibleName(channel) + ": ";
    if (!speech_.say(IrcOutgoing::Kind::typed, {std::move(channel), line, isShown || isElsewhere}))
        tell("too much waits to be said");
    else if (isElsewhere)
        tell(told + plainMarkup(line));
}

// A recital that began in one room isn't said in another, where nobody has asked for it.
void IrcClient::sendChatLine(const std::string& line) {
    if (!here() || !lines_.mayBeSaidAt(session_.placeOf(here()->name())))
        return;
    speech_.say(IrcOutgoing::Kind::said, {here()->name(), line, false});
    loop_.serveTurn();
    pacing_.spoke();
}

std::string IrcClient::currentScreenName() {
    return here() ? session_.nick() : "";
}

std::string IrcClient::name() const {
    return here() ? here()->name() : session_.server().host;
}

std::string IrcClient::ownName() const {
    return session_.nick();
}

bool IrcClient::isIgnored(std::string_view name) const {
    return moderation_.ignores(name);
}

const RowList& IrcClient::people() const {
    return here() ? here()->people() : nobody_;
}

const RowList& IrcClient::ejected() const {
    return here() ? here()->ejected() : nobody_;
}

void IrcClient::gotoKeyword(const std::string& keyword) {
    if (session_.features().isChannel(keyword))
        joining_.joinAndEnter(keyword);
}

std::optional<std::string> IrcClient::timeOnline() {
    if (!session_.isWelcomed())
        return std::nullopt;
    const auto online = loop_.now() - session_.welcomedAt();
    const auto hours = std::chrono::duration_cast<std::chrono::hours>(online);
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(online - hours);
    return "online for " + (hours.count() > 0 ? counted(hours.count(), "hour") + " and " : "") +
           counted(minutes.count(), "minute") + '.';
}

} // namespace larkspin
