#include "irc/connection/irc_session.h"

#include "irc/connection/irc_sts.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/number.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// In bytes. While so much is unsent the server gets no answers, to its PINGs for one, since it
// could ask without end.
constexpr std::size_t mostUnsentForAnswers = 4096;

std::string inSeconds(std::chrono::seconds wait) {
    return "trying again in " + std::to_string(wait.count()) + " seconds";
}

} // namespace

IrcSession::IrcSession(EventLoop& loop, IrcConnection& connection, Events events)
    : loop_(loop), connection_(connection), events_(std::move(events)),
      outgoing_(
          loop, [this](const std::string& line) { connection_.send(line); },
          [this] {
              lagWatch_.asked();
              wakeIn(longestAnswer, [this] { lookForSilence(); });
          }),
      lagWatch_(loop, outgoing_,
                [this] {
                    tellLag();
                    events_.lagChanged();
                }),
      regain_(loop, [this](std::string_view command, const std::vector<std::string>& parameters) {
          request(command, parameters);
      }) {}

IrcSession::~IrcSession() {
    loop_.cancel(timer_);
    connection_.close();
}

void IrcSession::wakeIn(Nanoseconds span, Task task) {
    loop_.cancel(timer_);
    timer_ = loop_.once(span, std::move(task));
}

// Nothing of the last connection is said on the next one.
void IrcSession::reset(Phase phase) {
    loop_.cancel(std::exchange(timer_, TimerId::none));
    outgoing_.clear(phase == Phase::waiting);
    lagWatch_.clear();
    phase_ = phase;
    regain_.end();
    reportSecurity();
    secured_.reset();
}

void IrcSession::connect(const IrcServer& server, const IrcIdentity& identity) {
    reset(Phase::off);
    if (server.host != server_.host)
        outgoing_.changeServer();
    server_ = server;
    identity_ = identity;
    nextWait_ = shortestWait;
    open();
}

void IrcSession::identify(const IrcIdentity& identity) {
    const std::string nick = identity_.nick;
    identity_ = identity;
    identity_.nick = nick;
}

void IrcSession::open() {
    // What the owner trusts and shows may have changed since the last connection.
    if (keeper_.completed)
        server_ = keeper_.completed(server_);
    reset(Phase::beginning);
    // Nothing that the last connection has told holds for this one.
    input_.clear();
    features_ = {};
    batches_.clear();
    wantedNick_.clear();
    registration_.emplace(
        identity_, server_,
        [this](const std::string& line) {
            if (connection_.unsent() <= mostUnsentForAnswers)
                connection_.send(line);
        },
        events_.tell);
    wakeIn(longestBeginning, [this] { giveUp("the server doesn't answer"); });
    connection_.open(server_, {.opened = [this] { registration_->begin(); },
                               .received = [this](std::string_view bytes) { take(bytes); },
                               .ended = [this](const std::string& why) { lose(why); },
                               .distrusted =
                                   [this](const IrcCertificate& certificate) {
                                       if (keeper_.distrusted)
                                           keeper_.distrusted(server_, certificate);
                                   }});
}

void IrcSession::end(const std::string& farewell) {
    if (!isOn())
        return;
    const bool isOpen = phase_ != Phase::waiting;
    reset(Phase::off);
    if (!isOpen)
        return;
    connection_.send(ircLine("QUIT", {farewell}));
    // The server closes the connection after a QUIT, or else it is closed here.
    wakeIn(longestEnding, [this] { connection_.close(); });
}

void IrcSession::finish(const std::string& lastLines) {
    if (isWelcomed())
        connection_.send(lastLines);
    connection_.finish(longestFarewell);
}

void IrcSession::take(std::string_view bytes) {
    heardAt_ = loop_.now();
    input_.add(bytes, [this](std::string_view line) {
        // A message may have ended the connection. The lines after it are dropped.
        if (phase_ != Phase::beginning && phase_ != Phase::welcomed)
            return;
        if (const auto message = readIrcMessage(line))
            take(*message);
    });
}

void IrcSession::take(const IrcMessage& message) {
    if (message.command == "PING")
        return answer(message);
    if (message.command == "PONG") {
        outgoing_.answered(message.parameters.empty() ? "" : message.parameters.back());
        return lagWatch_.answered();
    }
    const bool isBeginning = phase_ == Phase::beginning;
    if (message.command == "ERROR")
        events_.tell(server_.host + ": " + std::string(message.parameter(0)));
    const bool isTaken = registration_->take(message);
    if (IrcCapabilities::isOffer(message) && leavesForTls())
        return;
    if (isBeginning && registration_->isDone())
        return welcome();
    if (isBeginning && !isTaken)
        return tellEarly(message);
    if (isBeginning || isTaken)
        return;
    batches_.open(message);
    // What happened in former times happens to nobody now.
    const bool isSaid = message.command == "PRIVMSG" || message.command == "NOTICE";
    if (batches_.isOld(message) && !isSaid)
        return batches_.close(message);
    if (follow(message))
        events_.message(message);
    batches_.close(message);
}

// What a server says before the welcome may be why there is none.
void IrcSession::tellEarly(const IrcMessage& message) {
    const std::string& command = message.command;
    const bool isTold = command == "NOTICE" || command == "FAIL" || command == "WARN" ||
                        command == "NOTE" || command.starts_with('0') ||
                        numeric::isRefusal(command);
    if (!isTold || message.parameters.empty() || message.parameters.back().empty())
        return;
    events_.tell(server_.host + ": " + message.parameters.back());
    if (command == numeric::badPassword)
        events_.tell("/pass asks for the password of this server");
}

// True when the connection is given up for one by TLS, since the server wants that. Nothing more is
// taken from it: it comes back in an event of its own.
bool IrcSession::leavesForTls() {
    const std::string* const told = registration_->capabilities().offered(capability::sts);
    const IrcSts sts = told ? readSts(*told) : IrcSts{};
    if (server_.encrypted) {
        secured_ = sts.duration ? sts.duration : secured_;
        reportSecurity();
        return false;
    }
    if (!sts.port || phase_ != Phase::beginning)
        return false;
    events_.tell(server_.host + " wants TLS: connecting to port " + std::to_string(*sts.port));
    connection_.close();
    const IrcServer safe{.host = server_.host, .port = *sts.port};
    server_ = keeper_.completed ? keeper_.completed(safe) : safe;
    reset(Phase::waiting);
    wakeIn(Nanoseconds(0), [this] { open(); });
    return true;
}

// The span begins anew with each time that the server was there.
void IrcSession::reportSecurity() {
    if (secured_ && keeper_.secured)
        keeper_.secured(server_, *secured_);
}

void IrcSession::welcome() {
    phase_ = Phase::welcomed;
    nick_ = registration_->nick();
    welcomedAt_ = loop_.now();
    wakeIn(longestSilence, [this] { lookForSilence(); });
    events_.welcomed();
    if (!registration_->wasTaken() || isSelf(identity_.nick))
        return;
    events_.tell(identity_.nick + " is somebody else's name now; it becomes yours when it is free");
    regain_.begin(identity_.nick);
}

// False for what is news to nobody else.
bool IrcSession::follow(const IrcMessage& message) {
    if (message.command == numeric::features)
        features_.read(message);
    if (regain_.take(message, features_))
        return false;
    if (message.command != "NICK" || !isSelf(message.nick()) || message.parameter(0).empty())
        return true;
    nick_ = message.parameter(0);
    regain_.end();
    // The next connection asks for a new name only if the owner has wanted that name himself.
    if (isSame(nick_, wantedNick_))
        identity_.nick = nick_;
    return true;
}

// The answer goes at once, ahead of the lines that wait.
void IrcSession::answer(const IrcMessage& ping) {
    if (connection_.unsent() <= mostUnsentForAnswers)
        connection_.send(ircLine("PONG", {std::string(ping.parameter(0))}));
}

// A server that owes no answer may be silent. One that owes an answer, and sends nothing at all for
// longer than it could need for what was sent to it, is gone.
void IrcSession::lookForSilence() {
    const IrcLag& lag = outgoing_.lag();
    const Nanoseconds silent = loop_.now() - heardAt_,
                      most = lag.isOwed() ? longestAnswer + outgoing_.ahead() : longestSilence,
                      span = lag.isOwed() ? std::min(silent, lag.owedFor(loop_.now())) : silent;
    if (span < most)
        return wakeIn(most - span, [this] { lookForSilence(); });
    if (lag.isOwed())
        giveUp("the server has gone silent");
    else
        outgoing_.ask(); // a server that is there answers, whatever else it has to say
}

void IrcSession::tellLag() const {
    events_.tell(server_.host +
                 (isLagging() ? " takes more than " +
                                    counted(IrcLagWatch::longest.count(), "second") + " to answer"
                              : " answers quickly again"));
}

void IrcSession::giveUp(const std::string& why) {
    connection_.close();
    lose(why);
}

void IrcSession::lose(const std::string& why) {
    if (phase_ == Phase::off)
        return reset(Phase::off); // it ended as it was to
    if (isWelcomed() && loop_.now() - welcomedAt_ >= lasting)
        nextWait_ = shortestWait;
    const auto wait = std::exchange(nextWait_, std::min(nextWait_ * 2, longestWait));
    events_.tell(server_.host + ": " + why + "; " + inSeconds(wait));
    reset(Phase::waiting);
    wakeIn(wait, [this] { open(); });
    events_.lost();
}

void IrcSession::changeNick(const std::string& nick) {
    // a typed line, so that those typed before go under the old name
    if (send(IrcOutgoing::Kind::typed, ircLine("NICK", {nick})))
        wantedNick_ = nick;
}

bool IrcSession::request(std::string_view command, const std::vector<std::string>& parameters) {
    return send(IrcOutgoing::Kind::protocol, ircLine(command, parameters));
}

bool IrcSession::send(IrcOutgoing::Kind kind, std::string line, IrcOutgoing::Leaving leaving) {
    outgoing_.areSentBack(echoes());
    return isWelcomed() && outgoing_.add(kind, std::move(line), std::move(leaving));
}

} // namespace larkspin
