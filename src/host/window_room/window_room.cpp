#include "host/window_room/window_room.h"

#include "chat/chat_lines.h"
#include "chat/markup.h"
#include "host/called_by_name.h"
#include "host/window_tree/host_bytes.h"
#include "text/visible.h"

#include <algorithm>
#include <span>
#include <utility>

namespace larkspin {

namespace {

const std::string unnamed = "room"; // one without a caption
const std::string closed = "the room is closed";
const std::string closedWithClient =
    closed + ": the chat client has ended; its room is entered again as soon as it is back";

} // namespace

WindowRoom::WindowRoom(EventLoop& loop, ChatLines& lines, Conversations& conversations,
                       RoomDisplay shown)
    : loop_(loop), lines_(lines), conversations_(conversations), shown_(std::move(shown)) {}

WindowRoom::~WindowRoom() {
    finish();
    if (session_)
        session_->onChange([](const std::string&) {});
}

void WindowRoom::reachBy(WindowSession& session) {
    session_ = &session;
    host_.emplace(session.calls(), loop_);
    // What is told of a hidden notice is told in the client's room, wherever the owner is.
    host_->notices().beforeHiding([this] { lines_.speaksAt(place_); });
    session.onChange([this](const std::string& why) { sessionChanged(why); });
}

bool WindowRoom::isUp() const {
    return session_ && session_->state() == WindowSession::State::up;
}

void WindowRoom::connect() {
    if (!session_)
        return answer("no windows can be reached from here");
    isAsked_ = true;
    hasTold_ = false;
    if (isWanted_ && isUp()) {
        if (Conversation* const there = room())
            return enter(*there);
        return tellNoRoom();
    }
    answer("looking for the chat client's windows...");
    begin();
}

void WindowRoom::comeBack() {
    if (session_)
        begin();
}

void WindowRoom::begin() {
    isWanted_ = true;
    if (network_ == Conversations::noNetwork)
        network_ = conversations_.newNetwork(word);
    loop_.cancel(std::exchange(again_, TimerId::none));
    session_->begin();
}

void WindowRoom::disconnect() {
    keeper_(false); // also one that couldn't be reached as the run began
    if (!std::exchange(isWanted_, false))
        return answer("no chat client's windows are reached");
    finish();
    closeRoom(closed);
    answer("the chat client is left to itself");
}

void WindowRoom::finish() {
    loop_.cancel(std::exchange(again_, TimerId::none));
    wasUp_ = false;
    speech_.forget();
    if (session_)
        session_->end();
}

void WindowRoom::sessionChanged(const std::string& why) {
    if (isUp()) {
        if (!std::exchange(wasUp_, true))
            keeper_(true);
        hasTold_ = false;
        seen_ = {};
        return session_->calls().watch(roomWatch(RunningText::known),
                                       [this](const WatchedText& now) { see(now); });
    }
    if (!isWanted_)
        return closeRoom(closed);
    if (!wasUp_) {
        isWanted_ = false;
        return answer("the chat client can't be reached: " + why);
    }
    const bool isAgain = std::exchange(hasTold_, true);
    if (!isAgain)
        reachedNoMore(why);
    again_ = loop_.once(isAgain ? tryAgainEach : tryAgainAfter, [this] {
        again_ = TimerId::none;
        session_->begin();
    });
}

// That is told in its room, and where the owner is.
void WindowRoom::reachedNoMore(const std::string& why) {
    const std::string text = "the chat client is reached no more: " + why + "; trying again in " +
                             std::to_string(tryAgainAfter.count()) + " seconds";
    if (room() != &conversations_.front())
        conversations_.keep(conversations_.front(), {.text = text});
    closeRoom(text);
}

void WindowRoom::tellNoRoom() {
    answer(host_->hostFrame() == noHandle
               ? "no chat client is there yet; its room is entered as soon as there is one"
               : "the chat client shows no room yet; it is entered as soon as there is one");
}

// What is told of a client that hangs is what it had shown before.
void WindowRoom::see(const WatchedText& now) {
    using State = WatchedText::State;
    if (!isUp())
        return;
    const State before = std::exchange(seen_.state, now.state);
    if (now.state == State::hangs) {
        if (before != State::hangs)
            tell("the chat client doesn't answer");
        return speech_.clientHangs();
    }
    if (before == State::hangs && now.state == State::there)
        tell("the chat client answers again");
    speech_.clientAnswers();
    if (now.state == State::none) {
        if (before == State::none && isAsked_)
            tellNoRoom();
        return closeRoom(room() && host_->hostFrame() == noHandle ? closedWithClient : closed);
    }
    const bool isOther =
        place_.empty() || now.window != seen_.window || now.caption != seen_.caption;
    const bool arePeopleOthers = isOther || now.rows != seen_.rows || now.list != seen_.list ||
                                 loop_.now() - peopleRead_ >= peopleLast;
    seen_ = now;
    seen_.end.clear();
    if (isOther)
        openRoom(now);
    else
        takeText(now);
    if (arePeopleOthers)
        readPeople(now.list);
    shown_.changed();
}

void WindowRoom::openRoom(const WatchedText& now) {
    closeRoom(closed);
    currentScreenName();
    const std::string caption = fromSingleByte(now.caption);
    Conversation* const there = &roomCalled(caption.empty() ? unnamed : caption);
    if (!std::exchange(there->isOpen, true))
        conversations_.keep(*there, {.text = "the room is open again"});
    place_ = there->place();
    speech_.roomIsNew();
    const bool isFree = conversations_.front().isAtHome() || conversations_.isFrontClosed();
    if (std::exchange(isAsked_, false))
        conversations_.asOwnerWants([&] { conversations_.enter(*there); });
    else if (isFree)
        conversations_.enter(*there);
    const bool isEmpty = there->lines().empty();
    text_.forget();
    const RunningText::News old = text_.take(now.end, now.length);
    if (isEmpty)
        for (const RunningLine& line :
             std::span(old.lines).last(std::min(old.lines.size(), mostOld)))
            keepOld(line);
}

Conversation& WindowRoom::roomCalled(const std::string& name) {
    const auto rooms = conversations_.ofNetwork(network_);
    const auto found = std::ranges::find(rooms, name, &Conversation::name);
    if (found != rooms.end())
        return **found;
    const auto old = std::ranges::find_if(rooms, [this](const Conversation* each) {
        return !each->isOpen && each != &conversations_.front();
    });
    if (rooms.size() >= mostRooms && old != rooms.end())
        conversations_.remove(**old);
    return conversations_.add({Conversation::Kind::room, network_, name});
}

// What was said there stays to be read.
void WindowRoom::closeRoom(const std::string& why) {
    if (Conversation* const there = room()) {
        conversations_.keep(*there, {.text = why});
        there->isOpen = false;
    }
    place_.clear();
    people_.clear();
    shown_.changed();
}

// Each line comes in an event of its own, as it would from anywhere else.
void WindowRoom::takeText(const WatchedText& now) {
    const RunningText::News news = text_.take(now.end, now.length);
    for (const RunningLine& line : news.lines)
        if (news.isNew)
            loop_.post([this, line, place = place_] { hear(line, place); });
        else
            keepOld(line);
}

void WindowRoom::keepOld(const RunningLine& line) {
    const bool isSaid = !line.speaker.empty();
    conversations_.keep(*room(), {.kind = isSaid ? KeptLine::Kind::said : KeptLine::Kind::news,
                                  .speaker = visibleName(line.speaker),
                                  .text = isSaid ? withoutTags(line.text) : line.text,
                                  .isOwners = isSaid && line.speaker == ownName_,
                                  .isUndated = true});
}

// A line of the owner's that was said from here is known again. Only what he has typed may be a
// command, and it is taken as he has typed it.
void WindowRoom::hear(const RunningLine& line, const std::string& place) {
    Conversation* const there = conversations_.find(place);
    if (!there)
        return;
    if (line.speaker.empty())
        return conversations_.keep(*there, {.text = line.text});
    // It is asked for once, for all who hear the line.
    loop_.post([this] { askedName_.reset(); });
    askedName_ = currentScreenName();
    const bool isOwners = line.speaker == currentScreenName();
    SaidLine said;
    const auto known = isOwners ? speech_.take(line.text, said) : SaidLines::Seen::unknown;
    if (known == SaidLines::Seen::rest)
        return;
    const bool isFromHere = known == SaidLines::Seen::first;
    conversations_.keep(*there, {.kind = KeptLine::Kind::said,
                                 .speaker = visibleName(line.speaker),
                                 .text = isFromHere ? said.line : withoutTags(line.text),
                                 .isOwners = isOwners,
                                 .isForOwner = !isOwners && callsByName(line.text, ownName_),
                                 .isOnScreen = said.isOnScreen});
    lines_.heard({line.speaker, isFromHere ? said.line : line.text}, place);
    askedName_.reset();
}

// What a busy client hasn't told is asked for at the next change.
void WindowRoom::readPeople(HostHandle list) {
    people_.clear();
    host_->readHostList(list, people_, true);
    const bool areAll =
        std::cmp_greater_equal(people_.count(), seen_.rows) && !people_.contains("");
    peopleRead_ = areAll ? loop_.now() : loop_.now() - peopleLast;
}

Conversation* WindowRoom::room() const {
    return place_.empty() ? nullptr : conversations_.find(place_);
}

bool WindowRoom::isHere() const {
    return !place_.empty() && conversations_.here().place() == place_;
}

void WindowRoom::enter(Conversation& conversation) {
    conversations_.asOwnerWants([&] { conversations_.enter(conversation); });
    shown_.changed();
}

void WindowRoom::leave() {
    Conversation& front = conversations_.front();
    if (front.isOpen)
        return answer("the room is left in the client itself; /disconnect " + std::string(word) +
                      " only leaves the client to itself");
    conversations_.asOwnerWants([&] { conversations_.remove(front); });
    shown_.changed();
}

void WindowRoom::say(const std::string& line, bool isOnScreen) {
    if (!isHere() || !speech_.say({.line = line, .isOnScreen = isOnScreen}, place_))
        answer("not said: " + visibleText(line, " "));
}

void WindowRoom::sendChatLine(const std::string& line) {
    const Conversation* const there = conversations_.toSpeakIn();
    const bool isSaid = there && isUp() && there->place() == place_ &&
                        speech_.say({.line = line, .isPrograms = true}, place_);
    if (!isSaid)
        speech_.answerIsLost("was not said in " + visibleName(conversations_.here().name()));
}

bool WindowRoom::send(const std::string& line, const std::string& place) {
    return isUp() && place_ == place &&
           host_->sendChatLineIn(seen_.window, fromSingleByte(seen_.caption), line,
                                 [this, place] { return place_ == place; });
}

void WindowRoom::tell(const std::string& text) const {
    Conversation* const there = room();
    conversations_.keep(there ? *there : conversations_.front(), {.text = text});
}

void WindowRoom::answer(const std::string& text) const {
    shown_.tell(text);
}

bool WindowRoom::tellOwner(const std::string& text) {
    conversations_.keep(conversations_.here(), {.kind = KeptLine::Kind::answer, .text = text});
    return true;
}

std::string WindowRoom::name() const {
    return conversations_.front().name();
}

std::string WindowRoom::currentScreenName() {
    if (askedName_ || !isUp())
        return askedName_.value_or("");
    std::string name = host_->currentScreenName();
    if (!name.empty())
        ownName_ = name;
    return name;
}

void WindowRoom::clearChatInput() {
    if (isUp() && isHere())
        host_->clearChatInput();
}

void WindowRoom::bringHostForward() {
    if (isUp())
        host_->bringHostForward();
}

RoomPeople& WindowRoom::roomPeople() {
    return isUp() && isHere() ? host_->roomPeople() : HostClient::roomPeople();
}

ClientNotices& WindowRoom::notices() {
    return isUp() ? host_->notices() : HostClient::notices();
}

ClientErrands& WindowRoom::errands() {
    return isUp() ? host_->errands() : HostClient::errands();
}

} // namespace larkspin
