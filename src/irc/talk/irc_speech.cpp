#include "irc/talk/irc_speech.h"

#include "irc/channels/irc_channels.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/protocol/irc_pieces.h"
#include "text/blanks.h"
#include "text/fold.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// In bytes. Others get a line with its sender in front, whose user name and host take so much at
// most.
constexpr std::size_t longestLine = 510, longestUserAndHost = 1 + 20 + 1 + 64;
constexpr std::size_t shortestPiece = 64;

// What makes an action of a text ("/me waves").
constexpr std::string_view actionBegin = "\x01"
                                         "ACTION ",
                           actionEnd = "\x01";

std::string_view commandOf(const IrcSaid& said) {
    return said.kind == KeptLine::Kind::noted ? "NOTICE" : "PRIVMSG";
}

// The second word of a line that waits.
std::string_view targetOf(std::string_view line) {
    const auto begin = std::min(line.find(' '), line.size());
    line.remove_prefix(std::min(begin + 1, line.size()));
    return line.substr(0, line.find_first_of(" \r\n"));
}

constexpr Nanoseconds margin = std::chrono::seconds(1);

// Pieces whose fate is kept in mind, of which a server could leave any number open.
constexpr std::size_t mostSent = 4000;

bool hasCodes(std::string_view text) {
    return withoutIrcCodes(text) != text;
}

// Servers have a number for it, or name the reason, or give no reason at all. A channel in which
// nothing may be said refuses the line once more then.
bool mayBeForCodes(const IrcMessage& refusal) {
    const std::string why = foldCase(refusal.parameters.empty() ? "" : refusal.parameters.back());
    const auto tells = [&](std::string_view of) { return why.find(of) != why.npos; };
    return refusal.command == numeric::noCodes || tells("color") || tells("colour") ||
           tells("control code") || tells("formatting") || tells("+c") ||
           (why.starts_with("cannot send to ") && !tells("("));
}

} // namespace

IrcSpeech::IrcSpeech(EventLoop& loop, IrcSession& session, IrcChannels& channels, Reached reached,
                     IrcLostLines::Tell tell)
    : loop_(loop), session_(session), channels_(channels), reached_(std::move(reached)),
      lost_(loop, session, std::move(tell)) {}

IrcSpeech::~IrcSpeech() {
    loop_.cancel(late_);
    loop_.cancel(overdue_);
}

std::size_t IrcSpeech::longestPiece(const std::string& target) const {
    const std::size_t around = std::string_view(":  PRIVMSG  :").size() + session_.nick().size() +
                               longestUserAndHost + target.size();
    return around + shortestPiece < longestLine ? longestLine - around : shortestPiece;
}

std::string IrcSpeech::codesOf(const IrcSaid& said) const {
    const auto* const place = channels_.find(said.target, session_.features());
    const bool isPlain = place && place->channel.isCodeless(session_.features());
    return isPlain ? withoutIrcCodes(ircCodes(said.text)) : ircCodes(said.text);
}

bool IrcSpeech::send(IrcOutgoing::Kind kind, Piece given) {
    const auto piece = std::make_shared<Piece>(std::move(given));
    waiting_.push_back(piece);
    const bool goes =
        session_.send(kind, ircLine(commandOf(piece->line->said), {piece->target, piece->codes}),
                      [this, piece] { return leaves(piece); });
    if (!goes)
        std::erase(waiting_, piece);
    return goes;
}

bool IrcSpeech::say(IrcOutgoing::Kind kind, const IrcSaid& said) {
    if (!session_.isWelcomed())
        return false;
    const auto line = std::make_shared<Line>(Line{said, kind});
    const bool isAtOnce = kind == IrcOutgoing::Kind::typed && !session_.echoes();
    line->isReached = isAtOnce;
    const bool isAction = said.kind == KeptLine::Kind::done;
    const std::size_t around = isAction ? actionBegin.size() + actionEnd.size() : 0;
    auto pieces = ircPieces(codesOf(said), longestPiece(said.target) - around);
    if (isAction)
        for (std::string& piece : pieces)
            piece.insert(0, actionBegin).append(actionEnd);
    for (const std::string& piece : pieces)
        if (!send(kind, {line, said.target, piece, &piece == &pieces.back()})) {
            line->isReached = false;
            lose(*line, true);
            return false;
        }
    if (isAtOnce && !pieces.empty())
        reached_(said, true, nullptr);
    else if (kind == IrcOutgoing::Kind::typed)
        countSoon(line);
    return true;
}

// Whether lines are sent back, and have labels, is asked only now, since it may have changed since
// the line was said.
std::string IrcSpeech::leaves(const std::shared_ptr<Piece>& piece) {
    std::erase(waiting_, piece);
    forgetRead();
    piece->number = session_.outgoing().lastSent();
    piece->sentAt = loop_.now();
    piece->comesBack = session_.echoes();
    // No other program of the owner's, behind the same bouncer, has the same one.
    if (session_.labels())
        piece->label = std::to_string(piece->sentAt.count()) + '-' + std::to_string(piece->number);
    sent_.push_back(piece);
    if (sent_.size() > mostSent)
        sent_.pop_front();
    if (piece->comesBack)
        watchEchoes();
    else if (piece->isLast)
        count(*piece->line, nullptr);
    return piece->label.empty() ? "" : "@label=" + piece->label + ' ';
}

// A line that was lost, and told, counts no more.
void IrcSpeech::count(Line& line, const IrcMessage* cameBack) {
    if (!line.isLost && !std::exchange(line.isReached, true))
        reached_(line.said, false, cameBack);
}

void IrcSpeech::countSoon(const std::shared_ptr<Line>& line) {
    awaited_.push_back({loop_.now() + longestPatience, line});
    if (overdue_ == TimerId::none)
        overdue_ = loop_.once(longestPatience, [this] { countOverdue(); });
}

void IrcSpeech::countOverdue() {
    overdue_ = TimerId::none;
    while (!awaited_.empty() && awaited_.front().until <= loop_.now()) {
        const std::shared_ptr<Line> line = std::move(awaited_.front().line);
        awaited_.pop_front();
        count(*line, nullptr);
    }
    if (!awaited_.empty())
        overdue_ = loop_.once(awaited_.front().until - loop_.now(), [this] { countOverdue(); });
}

void IrcSpeech::lose(Line& line, bool isSure) {
    if (std::exchange(line.isLost, true))
        return;
    IrcSaid said = line.said;
    said.hasCounted = said.hasCounted || line.isReached;
    said.isOnScreen = false; // where it is said again
    lost_.add(said, line.kind == IrcOutgoing::Kind::typed, isSure);
}

bool IrcSpeech::isRead(const Piece& piece) const {
    return !piece.comesBack && piece.number <= session_.outgoing().lastRead();
}

// What the server has read may still be refused where somebody between has answered in its place.
void IrcSpeech::forgetRead() {
    std::erase_if(sent_, [&](const std::shared_ptr<Piece>& piece) {
        return isRead(*piece) && loop_.now() - piece->sentAt > longestRefusal;
    });
}

void IrcSpeech::watchEchoes() {
    const auto oldest = std::ranges::find_if(
        sent_, [](const auto& piece) { return piece->comesBack && !piece->isLate; });
    if (late_ == TimerId::none && oldest != sent_.end())
        late_ = loop_.once((*oldest)->sentAt + longestEcho - loop_.now(), [this] { loseLate(); });
}

// One that comes back after all is still known then, so that it isn't shown twice.
void IrcSpeech::loseLate() {
    late_ = TimerId::none;
    for (const auto& piece : sent_)
        if (piece->comesBack && !piece->isLate && loop_.now() - piece->sentAt >= longestEcho) {
            piece->isLate = true;
            lose(*piece->line, false);
        }
    lost_.tell();
    watchEchoes();
}

// Compares without codes and outer blanks as well: a channel may be without colours, and a server
// may cut off blanks.
bool IrcSpeech::isThat(const Piece& piece, std::string_view codes) const {
    const auto plain = [](std::string_view of) {
        return std::string(withoutBlanks(withoutIrcCodes(of)));
    };
    return piece.codes == codes || plain(piece.codes) == plain(codes);
}

// With a label nothing but that counts, so that no other program of the owner's can be meant.
bool IrcSpeech::isEchoOf(const Piece& piece, const IrcMessage& message) const {
    if (!piece.comesBack || commandOf(piece.line->said) != message.command ||
        !session_.isSame(piece.target, message.parameter(0)))
        return false;
    const std::string_view label = session_.batches().label(message);
    const bool isPlain = label.empty() && message.tag("batch").empty();
    return piece.label.empty() ? isPlain && isThat(piece, message.parameter(1))
                               : piece.label == label;
}

bool IrcSpeech::take(const IrcMessage& message) {
    const auto found =
        std::ranges::find_if(sent_, [&](const auto& piece) { return isEchoOf(*piece, message); });
    if (found == sent_.end())
        return false;
    const std::shared_ptr<Piece> echoed = *found;
    // Without labels, lines come back in order, so those before this one won't any more.
    const auto isPassed = [&](const std::shared_ptr<Piece>& piece) {
        return piece->comesBack && piece->label.empty() && piece->number < echoed->number;
    };
    std::erase(sent_, echoed);
    if (echoed->label.empty()) {
        for (const auto& piece : sent_)
            if (isPassed(piece))
                lose(*piece->line, true);
        std::erase_if(sent_, isPassed);
    }
    session_.outgoing().cameBack(echoed->sentAt);
    if (echoed->isLast && echoed->isLate)
        lost_.isFound(echoed->line->said);
    else if (echoed->isLast)
        count(*echoed->line, &message);
    lost_.tell();
    return true;
}

IrcSpeech::Pieces::iterator IrcSpeech::labelled(std::string_view label) {
    return std::ranges::find_if(sent_, [&](const auto& piece) { return piece->label == label; });
}

// By its label any answer tells which line it refuses; else only some are known to be about lines.
bool IrcSpeech::isRefusal(const IrcMessage& message) const {
    const bool fails = message.command == "FAIL";
    if (!session_.batches().label(message).empty())
        return fails || numeric::isRefusal(message.command);
    return numeric::refusesLine(message.command) || (fails && message.parameter(0) == "PRIVMSG");
}

// Without labels it is a guess. Where lines aren't sent back, what has codes is more likely to be
// meant where it may be for them. Else it is the oldest line that has just gone, or that a server
// which is behind may just have read, rather than one before that, which it took without a word.
IrcSpeech::Pieces::iterator IrcSpeech::refusedOne(const IrcMessage& refusal) {
    if (const std::string_view label = session_.batches().label(refusal); !label.empty())
        return labelled(label);
    const std::string_view target = refusal.parameter(refusal.command == "FAIL" ? 2 : 1);
    const auto age = [&](const Piece& piece) { return loop_.now() - piece.sentAt; };
    const auto oldest = [&](const std::function<bool(const Piece& piece)>& isLikely) {
        return std::ranges::find_if(sent_, [&](const std::shared_ptr<Piece>& piece) {
            const bool isInTime = piece->comesBack || age(*piece) <= longestRefusal;
            return piece->label.empty() && isInTime && !piece->isLate &&
                   session_.isSame(piece->target, target) && isLikely(*piece);
        });
    };
    // How long a refusal takes, as things go now, by a server that reads at once, and at most.
    const Nanoseconds prompt = session_.outgoing().lag().current(loop_.now()) + margin,
                      slow = prompt + session_.outgoing().ahead();
    const auto hasGoneWithin = [&](const Piece& piece, Nanoseconds span) {
        return !piece.comesBack && !isRead(piece) && age(piece) <= span;
    };
    auto found = sent_.end();
    if (mayBeForCodes(refusal))
        found = oldest([&](const Piece& piece) {
            return hasGoneWithin(piece, prompt) && (piece.isAgain || hasCodes(piece.codes));
        });
    if (found == sent_.end())
        found = oldest([&](const Piece& piece) { return hasGoneWithin(piece, prompt); });
    if (found == sent_.end())
        found = oldest(
            [&](const Piece& piece) { return piece.comesBack || hasGoneWithin(piece, slow); });
    return found == sent_.end() ? oldest([](const Piece&) { return true; }) : found;
}

bool IrcSpeech::refused(const IrcMessage& refusal) {
    const auto found = isRefusal(refusal) ? refusedOne(refusal) : sent_.end();
    if (found == sent_.end())
        return false;
    const std::shared_ptr<Piece> piece = *found;
    sent_.erase(found);
    auto* const place = channels_.find(piece->target, session_.features());
    // Refused without codes as well, so it wasn't for them.
    if (place && piece->isAgain)
        place->channel.refuseCodes(false);
    const std::string plain = withoutIrcCodes(piece->codes);
    const bool goesAgain =
        place && plain != piece->codes && !withoutBlanks(plain).empty() && mayBeForCodes(refusal);
    if (!goesAgain) {
        lose(*piece->line, true);
        return false;
    }
    place->channel.refuseCodes(true);
    // before all that waits
    return send(IrcOutgoing::Kind::protocol,
                {piece->line, piece->target, plain, piece->isLast, true});
}

// Where lines are sent back this one isn't, so it has reached nobody.
void IrcSpeech::acknowledged(const IrcMessage& message) {
    const auto found = labelled(session_.batches().label(message));
    if (found == sent_.end() || (*found)->label.empty())
        return;
    const std::shared_ptr<Piece> piece = *found;
    sent_.erase(found);
    if (piece->comesBack)
        lose(*piece->line, true);
    lost_.tell();
}

void IrcSpeech::dropFor(const std::string& channel) {
    session_.outgoing().revise(
        [&](const std::string& line) { return !session_.isSame(targetOf(line), channel); });
    std::erase_if(waiting_, [&](const std::shared_ptr<Piece>& piece) {
        const bool isThere = session_.isSame(piece->target, channel);
        if (isThere)
            lose(*piece->line, true);
        return isThere;
    });
    lost_.tell();
}

void IrcSpeech::rename(std::string_view from, const std::string& to) {
    session_.outgoing().revise([&](std::string& line) {
        const std::string_view target = targetOf(line);
        const bool isSaid = line.starts_with("PRIVMSG ") || line.starts_with("NOTICE ");
        if (isSaid && session_.isSame(target, from))
            line.replace(static_cast<std::size_t>(target.data() - line.data()), target.size(), to);
        return true;
    });
    const auto renameIn = [&](std::string& name) {
        if (session_.isSame(name, from))
            name = to;
    };
    for (const auto& piece : waiting_)
        renameIn(piece->target);
    for (const Pieces* const pieces : {&waiting_, &sent_})
        for (const auto& piece : *pieces)
            renameIn(piece->line->said.target);
    lost_.rename(from, to);
}

void IrcSpeech::dropAnswers() {
    session_.outgoing().dropSaid();
    std::erase_if(waiting_, [](const std::shared_ptr<Piece>& piece) {
        return piece->line->kind != IrcOutgoing::Kind::typed;
    });
}

// What was sent is lost if it seems so, or else it counts, and what wasn't is lost in any case.
void IrcSpeech::endWith(const std::function<bool(const Piece& piece)>& isLost) {
    for (const auto& piece : sent_)
        if (isLost(*piece))
            lose(*piece->line, false);
    for (const auto& piece : waiting_)
        lose(*piece->line, true);
    for (const auto& piece : std::exchange(sent_, {}))
        if (piece->isLast)
            count(*piece->line, nullptr);
    waiting_.clear();
    awaited_.clear();
    for (TimerId* const timer : {&late_, &overdue_})
        loop_.cancel(std::exchange(*timer, TimerId::none));
    lost_.tell();
}

void IrcSpeech::connectionLost() {
    endWith([this](const Piece& piece) { return !isRead(piece); });
}

// Unless it should have answered by now, and hasn't.
void IrcSpeech::connectionEnded() {
    endWith([this](const Piece& piece) {
        const bool isAwaited = piece.comesBack || piece.number <= session_.outgoing().lastAsked();
        return isAwaited && !isRead(piece) && loop_.now() - piece.sentAt > longestRefusal;
    });
}

} // namespace larkspin
