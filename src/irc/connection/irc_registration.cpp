#include "irc/connection/irc_registration.h"

#include "irc/connection/irc_connection.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"

#include <utility>

namespace larkspin {

namespace {

constexpr const char* userName = "larkspin";

std::string orElse(const std::string& text, const std::string& otherwise) {
    return text.empty() ? otherwise : text;
}

bool isTaken(std::string_view command) {
    return command == numeric::nickInUse || command == numeric::nickCollision ||
           command == numeric::nickUnavailable;
}

} // namespace

IrcRegistration::IrcRegistration(IrcIdentity identity, const IrcServer& server, Send send,
                                 Tell tell)
    : identity_(std::move(identity)), send_(std::move(send)), tell_(std::move(tell)),
      choice_(orElse(identity_.nick, userName)), capabilities_(send_),
      login_(identity_, server, send_, tell_), isEncrypted_(server.encrypted) {}

void IrcRegistration::begin() {
    if (!isEncrypted_)
        login_.failUnoffered("a password isn't sent without TLS");
    // A server that knows CAP waits with its welcome until CAP END. Any other goes on with the two
    // lines after it.
    capabilities_.begin();
    if (!identity_.serverPassword.empty())
        send_(ircLine("PASS", {identity_.serverPassword}));
    send_(ircLine("NICK", {choice_.asked()}));
    send_(ircLine("USER", {orElse(identity_.user, userName), "0", "*",
                           orElse(identity_.realName, choice_.asked())}));
}

bool IrcRegistration::take(const IrcMessage& message) {
    const std::string& command = message.command;
    // Messages about capabilities may come at any time, the others are about the registration only
    // until it is done.
    if (command == "CAP")
        takeCapabilities(message);
    else if (isDone())
        return takeLateLogin(message);
    else if (command == numeric::welcome)
        welcome(message);
    else if (isTaken(command))
        wasTaken_ = true, askAnew(choice_.taken(message.parameter(1)));
    else if (command == numeric::noNickGiven || command == numeric::badNick)
        askAnew(choice_.malformed());
    else if (command == "AUTHENTICATE" || numeric::isAboutLogin(command))
        takeLogin(message);
    else if (command == numeric::unknownCommand || command == numeric::notRegistered)
        return takeUnknown(message.parameter(1));
    else if (command == numeric::badCapability)
        endCapabilities();
    else
        return false;
    return true;
}

void IrcRegistration::welcome(const IrcMessage& message) {
    // A login that is still open at the welcome was never answered.
    login_.failUnoffered("the server knows no accounts");
    nick_ = orElse(std::string(message.parameter(0)), choice_.asked());
    phase_ = Phase::done;
}

void IrcRegistration::askAnew(bool hasAnother) {
    if (hasAnother)
        send_(ircLine("NICK", {choice_.asked()}));
    else if (!std::exchange(hasGivenUp_, true))
        tell_("the server gives you none of the names that were tried");
}

// A server that doesn't know CAP goes on by itself.
bool IrcRegistration::takeUnknown(std::string_view command) {
    if (command == "AUTHENTICATE") {
        login_.fail("the server knows no accounts");
        endCapabilities();
    }
    // What is told of a server that knows no CAP is news to nobody.
    return command == "AUTHENTICATE" || command == "CAP";
}

void IrcRegistration::takeCapabilities(const IrcMessage& message) {
    capabilities_.take(message, [this](std::string_view ways) {
        if (isDone())
            login_.renew();
        return login_.knows(ways);
    });
    if (isDone())
        return beginLateLogin();
    if (phase_ == Phase::listing && capabilities_.isListed()) {
        phase_ = Phase::requesting;
        if (!capabilities_.asksFor(capability::sasl))
            login_.failUnoffered("the server offers no login by a password");
    }
    goOn();
}

void IrcRegistration::goOn() {
    if (phase_ != Phase::requesting || !capabilities_.isSettled())
        return;
    if (!capabilities_.holds(capability::sasl))
        login_.fail("the server refuses it");
    if (login_.isWanted())
        beginLogin();
    phase_ = Phase::loggingIn;
    if (!login_.isWanted())
        endCapabilities();
}

void IrcRegistration::endCapabilities() {
    if (phase_ == Phase::ended || isDone())
        return;
    phase_ = Phase::ended;
    send_(ircLine("CAP", {"END"}));
}

void IrcRegistration::beginLogin() {
    const std::string* const ways = capabilities_.offered(capability::sasl);
    login_.begin(ways ? *ways : "");
}

void IrcRegistration::takeLogin(const IrcMessage& message) {
    if (phase_ != Phase::loggingIn)
        return;
    login_.take(message);
    if (!login_.isWanted())
        endCapabilities();
}

// Services that come after the welcome.
void IrcRegistration::beginLateLogin() {
    if (login_.isWanted() && !login_.isUnderWay() && capabilities_.holds(capability::sasl))
        beginLogin();
}

bool IrcRegistration::takeLateLogin(const IrcMessage& message) {
    const bool isLogins =
        message.command == "AUTHENTICATE" || numeric::isAboutLogin(message.command);
    if (!isLogins || !login_.isUnderWay())
        return false;
    login_.take(message);
    if (message.command == numeric::loginDone && !login_.isWanted())
        tell_("you are logged in now");
    return true;
}

} // namespace larkspin
