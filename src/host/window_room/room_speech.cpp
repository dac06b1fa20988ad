#include "host/window_room/room_speech.h"

#include "host/conversations.h"
#include "text/visible.h"

#include <utility>
#include <vector>

namespace larkspin {

RoomSpeech::RoomSpeech(EventLoop& loop, const Conversations& conversations, Send send,
                       Answer answer)
    : loop_(loop), conversations_(conversations), send_(std::move(send)),
      answer_(std::move(answer)) {}

// No event is served between its sending and its noting, so that it is known again.
bool RoomSpeech::say(SaidLine line, const std::string& place) {
    line.isHeld = line.isPrograms && isHolding();
    const bool canBeSaid = line.isHeld || (!hangs_ && send_(line.line, place));
    if (canBeSaid)
        note(std::move(line), place);
    return canBeSaid;
}

void RoomSpeech::note(SaidLine line, const std::string& place) {
    line.at = loop_.now();
    line.place = place;
    said_.add(std::move(line));
    if (losing_ == TimerId::none)
        losing_ = loop_.once(longestUnseen, [this] { tellLost(); });
}

void RoomSpeech::tellLost() {
    losing_ = TimerId::none;
    while (const auto lost = said_.takeLost(loop_.now() - longestUnseen))
        if (const Conversation* const there = conversations_.find(lost->place))
            tellUnseen(*lost, visibleName(there->name()));
    if (!said_.isEmpty())
        losing_ = loop_.once(longestUnseen, [this] { tellLost(); });
}

void RoomSpeech::tellUnseen(const SaidLine& lost, const std::string& in) {
    if (lost.isPrograms)
        answerIsLost("was perhaps not said in " + in);
    else
        answer_("perhaps not said in " + in + ": " + visibleText(lost.line, " "));
}

void RoomSpeech::answerIsLost(const std::string& words) {
    if (!std::exchange(isAnswerLost_, true))
        answer_("part of an answer " + words);
}

void RoomSpeech::clientHangs() {
    if (!isHolding())
        hangsSince_ = loop_.now();
    hangs_ = true;
}

void RoomSpeech::clientAnswers() {
    if (!std::exchange(hangs_, false))
        return;
    isAnswerLost_ = false;
    loop_.cancel(sayingAgain_);
    sayingAgain_ = loop_.once(untilShown, [this] { sayAgain(); });
}

// What a client that hung doesn't show, in its order, as what comes meanwhile is held. What can't
// be said any more is told as unseen.
void RoomSpeech::sayAgain() {
    const TimerId now = sayingAgain_;
    const auto sayAll = [this](const std::vector<SaidLine>& lines) {
        for (const SaidLine& line : lines) {
            send_(line.line, line.place);
            note({.line = line.line, .isPrograms = true}, line.place);
        }
        return !lines.empty();
    };
    bool areMore = sayAll(said_.takeUnheard(hangsSince_ - beforeHanging));
    while (areMore)
        areMore = sayAll(said_.takeUnheard(Nanoseconds::max()));
    if (sayingAgain_ == now)
        sayingAgain_ = TimerId::none;
}

void RoomSpeech::forget() {
    for (TimerId* const timer : {&losing_, &sayingAgain_})
        loop_.cancel(std::exchange(*timer, TimerId::none));
    said_.clear();
    hangs_ = false;
}

} // namespace larkspin
