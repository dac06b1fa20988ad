#include "irc/connection/irc_outgoing.h"

#include <algorithm>
#include <utility>

namespace larkspin {

using namespace std::chrono_literals;

namespace {

constexpr Nanoseconds minute = 60s;
constexpr int mostTypedInRow = 2; // while something is to be said
constexpr int mostAnswers = 3;    // to a line that is typed
constexpr std::size_t fewTyped = 5;

// So long nothing that was sent stays without a question whether it has arrived, and nothing that
// the owner has typed: he is the first to wonder.
constexpr Nanoseconds untilAsked = 30s, untilAskedForTyped = 5s;
constexpr IrcWeight weightOfAsking = {24};

// An owner who has typed a moment ago is about to type again.
constexpr Nanoseconds untilQuiet = 20s;

// Several lines may go as one.
IrcWeight weight(const std::string& lines) {
    return {lines.size(), std::max(static_cast<int>(std::ranges::count(lines, '\n')), 1)};
}

} // namespace

IrcOutgoing::IrcOutgoing(EventLoop& loop, Send send, Task asked)
    : loop_(loop), send_(std::move(send)), asked_(std::move(asked)) {}

IrcOutgoing::~IrcOutgoing() {
    loop_.cancel(next_);
}

bool IrcOutgoing::add(Kind kind, std::string line, Leaving leaving) {
    std::deque<Line>& lines = lines_[place(kind)];
    if (line.empty())
        return true;
    if (lines.size() >= mostWaiting)
        return false;
    if (kind == Kind::typed)
        typedAt_ = loop_.now();
    lines.push_back({std::move(line), std::move(leaving)});
    sendDue();
    return true;
}

void IrcOutgoing::limitSaid(int linesPerMinute) {
    saidPerMinute_ = static_cast<std::size_t>(std::max(linesPerMinute, 0));
    sendDue();
}

void IrcOutgoing::dropSaid() {
    for (const Kind kind : {Kind::said, Kind::recited})
        lines_[place(kind)].clear();
    sendDue();
}

void IrcOutgoing::revise(const std::function<bool(std::string& line)>& stays) {
    for (std::deque<Line>& lines : lines_)
        std::erase_if(lines, [&](Line& line) { return !stays(line.text); });
    sendDue();
}

void IrcOutgoing::give(const Line& line) {
    ++lastSent_;
    send_((line.leaving ? line.leaving() : "") + line.text);
}

void IrcOutgoing::sendLastSaid() {
    std::deque<Line>& lines = lines_[place(programsFirst())];
    if (lines.empty())
        return;
    const Line last = std::move(lines.back());
    lines.pop_back();
    give(last);
}

void IrcOutgoing::clear(bool isLost) {
    for (std::deque<Line>& lines : lines_)
        lines.clear();
    pace_.connectionEnded(isLost, loop_.now());
    lag_ = {};
    typedAt_.reset();
    isTypedSinceAsked_ = false;
    typedInRow_ = saidInRow_ = 0;
    sendDue();
}

void IrcOutgoing::ask() {
    if (lag_.isOwed())
        return;
    pace_.asked(weightOfAsking, loop_.now());
    lastAsked_ = lastSent_;
    isTypedSinceAsked_ = false;
    send_(lag_.ask(loop_.now()));
    asked_();
}

void IrcOutgoing::answered(std::string_view text) {
    if (!lag_.isOwed())
        return;
    lastRead_ = lastAsked_;
    pace_.answered(lag_.answered(text, loop_.now()), loop_.now());
    sendDue();
}

void IrcOutgoing::cameBack(Nanoseconds sentAt) {
    lag_.cameBack(sentAt);
    sendDue();
}

// Whether it's the turn of a line of the program's, before what the owner types.
bool IrcOutgoing::isTurnOfSaid() const {
    return waiting(Kind::typed) > 0 && waitingToSay() > 0 && typedInRow_ >= mostTypedInRow &&
           withinLimit() <= loop_.now();
}

// The kind whose line goes next; nothing when no line waits.
std::optional<IrcOutgoing::Kind> IrcOutgoing::first() const {
    for (const Kind kind : {Kind::protocol, Kind::typed, Kind::said, Kind::recited})
        if (waiting(kind) > 0)
            return kind == Kind::typed && isTurnOfSaid() ? programsFirst() : kind;
    return std::nullopt;
}

// When the next line may be said, as far as the owner's own limit goes.
Nanoseconds IrcOutgoing::withinLimit() const {
    const bool isFree = saidPerMinute_ == 0 || saidAt_.size() < saidPerMinute_;
    return isFree ? Nanoseconds(0) : saidAt_[saidAt_.size() - saidPerMinute_] + minute;
}

// Whether what is to be said may be an answer to what was typed, and isn't part of anything longer.
bool IrcOutgoing::isAnswer() const {
    return saidInRow_ < mostAnswers &&
           (waiting(Kind::said) == 1 || (pace_.isBelowDearest() && !isQuiet()));
}

bool IrcOutgoing::isQuiet() const {
    return !typedAt_ || loop_.now() - *typedAt_ >= untilQuiet;
}

// When the first line of that kind may go; nothing while the server has to answer first.
std::optional<Nanoseconds> IrcOutgoing::due(Kind kind) const {
    const auto urgency = !isPrograms(kind) || isTurnOfSaid() ? IrcPace::Urgency::urgent
                         : kind == Kind::said && isAnswer()  ? IrcPace::Urgency::answer
                                                             : IrcPace::Urgency::recited;
    const auto byServer = pace_.due(urgency, weight(lines_[place(kind)].front().text), loop_.now());
    return byServer && isPrograms(kind) ? std::max(*byServer, withinLimit()) : byServer;
}

void IrcOutgoing::plan() {
    const bool isMuch = waitingToSay() > 0 || waiting(Kind::typed) > fewTyped;
    pace_.plan(isMuch, !areSentBack_ || isQuiet(), loop_.now());
}

// Asks the server for an answer if it is time for that, or else tells when it will be; nothing when
// there is nothing to ask for.
std::optional<Nanoseconds> IrcOutgoing::askIfDue() {
    if (pace_.needsAnswer(loop_.now()))
        ask();
    if (lag_.isOwed() || !pace_.hasNews())
        return std::nullopt;
    const auto byServer =
        pace_.due(waitingToSay() > 0 ? IrcPace::Urgency::recited : IrcPace::Urgency::idle,
                  weightOfAsking, loop_.now());
    const auto lastAsked = lag_.askedAt();
    const Nanoseconds pause = isTypedSinceAsked_ ? untilAskedForTyped : untilAsked;
    const Nanoseconds moment = lastAsked ? std::max(*byServer, *lastAsked + pause) : *byServer;
    if (moment > loop_.now())
        return moment;
    ask();
    return std::nullopt;
}

void IrcOutgoing::sendFirst(Kind kind) {
    std::deque<Line>& lines = lines_[place(kind)];
    const Line line = std::move(lines.front());
    lines.pop_front();
    const Nanoseconds now = loop_.now();
    pace_.sent(weight(line.text), now);
    if (areSentBack_ && kind != Kind::protocol && line.text.starts_with("PRIVMSG "))
        lag_.expect(now);
    isTypedSinceAsked_ = isTypedSinceAsked_ || kind == Kind::typed;
    typedInRow_ = kind == Kind::typed ? typedInRow_ + 1 : 0;
    saidInRow_ = kind == Kind::said ? saidInRow_ + 1 : 0;
    if (isPrograms(kind)) {
        saidAt_.push_back(now);
        while (saidAt_.front() + minute <= now)
            saidAt_.pop_front();
    }
    give(line);
}

// A task that runs in here may add lines. They go in their turn, not from inside the task.
void IrcOutgoing::sendDue() {
    if (isSending_)
        return;
    isSending_ = true;
    loop_.cancel(std::exchange(next_, TimerId::none));
    std::optional<Nanoseconds> wake, lineDue;
    for (bool goes = true; goes;) {
        plan();
        wake = askIfDue();
        const auto kind = first();
        lineDue = kind ? due(*kind) : std::nullopt;
        goes = lineDue && *lineDue <= loop_.now();
        if (goes)
            sendFirst(*kind);
    }
    if (lineDue)
        wake = std::min(wake.value_or(*lineDue), *lineDue);
    if (wake)
        next_ = loop_.once(*wake - loop_.now(), [this] { sendDue(); });
    isSending_ = false;
}

} // namespace larkspin
