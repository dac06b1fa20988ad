#include "irc/client/irc_client.h"

#include "host/new_lines.h"
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

IrcClient::IrcClient(EventLoop& loop, ChatLines& lines, Conversations& conversations,
                     IrcConnection& connection, RoomDisplay shown)
    : loop_(loop), lines_(lines), conversations_(conversations), shown_(std::move(shown)),
      session_(loop, connection,
               {.welcomed = [this] { welcomed(); },
                .message = [this](const IrcMessage& message) { take(message); },
                .lost = [this] { lost(); },
                // The session's texts may hold the server's words, codes included.
                .tell = [this](const std::string& text) { tell(plainText(text)); }}),
      channels_(conversations), talks_(conversations, session_),
      joining_(session_, channels_, conversations,
               {.tell = [this](const std::string& text) { tell(text); },
                .newRoom = [this] { newRoom(); },
                .left = [this](const std::string& channel) { speech_.dropFor(channel); }}),
      hearing_(loop, lines, conversations, shown_, session_, channels_, talks_, moderation_),
      speech_(
          loop, session_, channels_,
          [this](const IrcSaid& said, bool atOnce, const IrcMessage* cameBack) {
              hearing_.reached(said, atOnce, cameBack);
          },
          [this](const std::string& text) { tell(text); }),
      pacing_(loop, lines, session_.outgoing()) {}

const IrcChannel* IrcClient::here() const {
    const Place* const place = channels_.here();
    return place ? &place->channel : nullptr;
}

const IrcChannel* IrcClient::inFront() const {
    for (const Place& place : channels_.all())
        if (channels_.isInFront(place))
            return &place.channel;
    return nullptr;
}

// While the owner is on another network he is told which one it is.
void IrcClient::tell(const std::string& text) const {
    const Conversation& front = conversations_.front();
    const std::string name = conversations_.networkName(network_) + ": ";
    const bool isClear = front.isAtHome() || owns(front) || text.starts_with(name);
    shown_.tell(isClear ? text : name + text);
}

bool IrcClient::tellWithoutServer() const {
    if (!session_.isWelcomed())
        tell("you are not connected");
    return !session_.isWelcomed();
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

void IrcClient::connect(const std::string& network, const IrcServer& server,
                        const IrcIdentity& identity, const std::string& channel) {
    endSession();
    forgetRooms();
    if (network_ == Conversations::noNetwork || server.host != session_.server().host) {
        beginNetwork(network);
        moderation_.forgetPeople();
    }
    joining_.beginWith(channel);
    isOn_ = true;
    hasToldHowToStop_ = false;
    tell("connecting to " + visibleName(server.host));
    session_.connect(server, identity);
    shown_.changed();
}

// What was said on another network goes.
void IrcClient::beginNetwork(const std::string& name) {
    for (const Conversation* each : conversations_.ofNetwork(network_))
        conversations_.remove(*each);
    network_ = conversations_.newNetwork(name);
    channels_.beginOn(network_);
    talks_.beginOn(network_);
    speech_.lost().clear();
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
    // Errands stay the network's, though there is no connection: `/connect` makes one.
    tell("you are signed off");
    shown_.changed();
}

void IrcClient::endSession() {
    sendFarewell();
    session_.end(usualFarewell);
    speech_.connectionEnded();
}

// If the event at work has said something, it was about this end, and its last line is still sent.
// All other lines that wait are dropped.
void IrcClient::sendFarewell() {
    if (session_.isWelcomed() && lines_.talk().hasSpoken)
        session_.outgoing().sendLastSaid();
}

void IrcClient::finish() {
    sendFarewell();
    speech_.connectionEnded();
    std::vector<std::string> names;
    for (const Place& place : channels_.all())
        names.push_back(place.channel.name());
    std::string lines;
    // Each room is left with the farewell, and then the server.
    for (const std::string& list : ircLists(names))
        lines += ircLine("PART", {list, usualFarewell});
    session_.finish(lines + ircLine("QUIT", {usualFarewell}));
}

void IrcClient::welcomed() {
    tell("you are " + visibleName(ownName()) + " on " + visibleName(session_.server().host));
    talks_.open(true);
    const Task join = [this] { joining_.welcomed(); };
    welcomed_ ? welcomed_(join) : join();
    Conversation* const before = conversations_.find(std::exchange(talkBefore_, {}));
    if (before && conversations_.front().isAtHome())
        conversations_.enter(*before);
}

void IrcClient::lost() {
    speech_.connectionLost();
    happenings_.connectionLost();
    hasToldHowToStop_ = false;
    if (owns(conversations_.front()) && !inFront())
        talkBefore_ = conversations_.front().place();
    // This comes first: the rooms that are forgotten now are to be joined again.
    joining_.lost();
    forgetRooms();
    shown_.changed();
}

// Without a connection the owner is at home, where he is obeyed.
void IrcClient::forgetRooms() {
    channels_.clear();
    talks_.open(false);
    orders_.answers().clear();
    if (owns(conversations_.front()))
        conversations_.enter(conversations_.home());
}

void IrcClient::take(const IrcMessage& message) {
    const std::string& command = message.command;
    if (command == "PRIVMSG" || command == "NOTICE") {
        if (!moderation_.ignores(message.sender))
            requests_.take(message);
        return hearing_.take(message, speech_);
    }
    if (command == "ACK")
        return speech_.acknowledged(message);
    // A line that is refused won't be sent back. If it goes out again, it isn't news.
    if (speech_.refused(message) || IrcHistory::isRefusal(message))
        return;
    // The order matters. News is told while the channels still know who was where. A channel that
    // the owner comes into is made before it takes the JOIN. What else becomes of him is followed
    // when the channels have taken it.
    if (!orders_.answers().take(message) &&
        !(command == "INVITE" && moderation_.ignores(message.sender)))
        happenings_.tell(message);
    speech_.lost().tell();
    if (command == "JOIN" && session_.isSelf(message.nick())) {
        joining_.cameIn(std::string(message.parameter(0)));
        happenings_.cameIn(message.parameter(0));
        history_.cameIn(message.parameter(0));
    }
    if (command == "NICK") {
        talks_.rename(message.nick(), message.parameter(0));
        speech_.rename(message.nick(), std::string(message.parameter(0)));
    }
    channels_.take(message, session_.features());
    joining_.take(message);
    moderation_.take(message);
    shown_.changed();
}

void IrcClient::newRoom() {
    moderation_.askForBans();
    shown_.changed();
}

void IrcClient::enter(Conversation& conversation) {
    for (const Place& place : channels_.all())
        if (place.conversation == &conversation)
            return joining_.enter(place);
    if (&conversation == &conversations_.front())
        return tell(wordsOfEntering(conversations_, conversation));
    conversations_.enter(conversation);
    newRoom();
}

void IrcClient::leaveRoom(const std::string& name, const std::string& reason) {
    if (Place* const place = channels_.find(name, session_.features()))
        joining_.leave(*place, reason.empty() ? usualFarewell : reason);
    else
        tell("you are not in " + visibleName(name));
}

void IrcClient::leave(const std::string& reason) {
    Conversation& front = conversations_.front();
    if (inFront() || (front.isAtHome() && channels_.all().empty()))
        return joining_.leave(reason.empty() ? usualFarewell : reason);
    if (front.isAtHome())
        return tell(wordsOfEntering(conversations_, front));
    enter(conversations_.before());
    conversations_.remove(front);
    shown_.changed();
}

void IrcClient::changeNick(const std::string& nick) {
    if (!tellWithoutServer())
        session_.changeNick(std::string(withoutBlanks(nick)));
}

void IrcClient::quote(std::string_view line) {
    if (const auto message = readIrcMessage(line); message && !tellWithoutServer())
        session_.request(message->command, message->parameters);
}

void IrcClient::talkTo(const std::string& name) {
    if (!tellWithoutServer() && voice_.canBeTalkedTo(name))
        enter(talks_.findOrBegin(name));
}

void IrcClient::topic(const std::optional<std::string>& text, const std::string& room) {
    if (room.empty() ? orders_.tellWithoutRoom() : tellWithoutServer())
        return;
    const Place* const place =
        room.empty() ? channels_.here() : channels_.find(room, session_.features());
    if (text)
        session_.request("TOPIC", {place ? place->channel.name() : room, *text});
    else if (!place)
        orders_.quote("TOPIC " + room);
    else if (place->channel.topic().empty())
        tell("there is no topic");
    else
        tell("the topic is: " + plainText(place->channel.topic()));
}

void IrcClient::names(const std::string& room) {
    const Conversation& front = conversations_.front();
    if (!room.empty())
        return orders_.names(room);
    if (front.kind() == Conversation::Kind::person && owns(front)) {
        tell(visibleName(front.name()) + ", 2 people");
        tell("  " + visibleName(ownName()));
        return tell("  " + visibleName(front.name()));
    }
    if (orders_.tellWithoutRoom())
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

void IrcClient::lineTypedAtHome() {
    if (state() == State::connecting && !std::exchange(hasToldHowToStop_, true))
        tell("larkspin still tries to get to " + visibleName(session_.server().host) +
             ", which /disconnect stops");
}

// A recital that began in one conversation isn't said in another, where nobody has asked for it.
void IrcClient::sendChatLine(const std::string& line) {
    const Conversation* const conversation = conversations_.toSpeakIn();
    if (!conversation || !owns(*conversation))
        return;
    const bool isRecited = lines_.talk().isRecited;
    speech_.say(isRecited ? IrcOutgoing::Kind::recited : IrcOutgoing::Kind::said,
                {conversation->name(), line});
    loop_.serveTurn();
    pacing_.spoke();
}

bool IrcClient::tellOwner(const std::string& text) {
    conversations_.keep(conversations_.here(), {.text = text});
    return true;
}

std::string IrcClient::currentScreenName() {
    const Conversation& conversation = conversations_.here();
    return conversation.isOpen && owns(conversation) ? session_.nick() : "";
}

std::string IrcClient::name() const {
    const Conversation& front = conversations_.front();
    return owns(front) ? front.name() : session_.server().host;
}

std::string IrcClient::ownName() const {
    return session_.nick();
}

bool IrcClient::isIgnored(std::string_view name) const {
    return moderation_.ignores(name);
}

std::string IrcClient::roomTopic() const {
    return inFront() ? plainText(inFront()->topic()) : "";
}

std::string IrcClient::ranksOf(std::string_view name) const {
    return inFront() ? inFront()->ranks(name, session_.features()) : "";
}

bool IrcClient::holdsRank(std::string_view name, char mode) const {
    const IrcFeatures& features = session_.features();
    const auto rank = features.rankModes.find(mode);
    return rank != features.rankModes.npos &&
           ranksOf(name).find(features.rankSigns[rank]) != std::string::npos;
}

const RowList& IrcClient::people() const {
    return inFront() ? inFront()->people() : nobody_;
}

const RowList& IrcClient::ejected() const {
    return inFront() ? inFront()->ejected() : nobody_;
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
