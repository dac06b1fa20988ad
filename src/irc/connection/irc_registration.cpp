#include "irc/connection/irc_registration.h"

#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/protocol/sasl_plain.h"

#include <utility>

namespace larkspin {

namespace {

constexpr const char* userName = "larkspin";

// Of the ways that are offered; without any named, every way may do.
bool offersPlain(std::string_view ways) {
    const std::string list = ',' + std::string(ways) + ',';
    return list == ",," || list.find(",PLAIN,") != list.npos;
}

} // namespace

IrcRegistration::IrcRegistration(IrcIdentity identity, bool encrypted, Send send, Tell tell)
    : identity_(std::move(identity)), send_(std::move(send)), tell_(std::move(tell)),
      choice_(identity_.nick.empty() ? userName : identity_.nick), capabilities_(send_) {
    if (!identity_.account.empty())
        login_ = encrypted ? Login::wanted : Login::impossible;
}

void IrcRegistration::begin() {
    if (login_ == Login::impossible)
        failLogin("a password isn't sent without TLS");
    // A server that knows CAP waits with its welcome until CAP END. Any other goes on with the two
    // lines after it.
    capabilities_.begin();
    send_(ircLine("NICK", {choice_.asked()}));
    send_(ircLine("USER", {userName, "0", "*", choice_.asked()}));
}

void IrcRegistration::take(const IrcMessage& message) {
    const std::string& command = message.command;
    // Messages about capabilities may come at any time, the others are about the registration only
    // until it is done.
    if (command == "CAP")
        takeCapabilities(message);
    else if (isDone())
        return;
    else if (command == numeric::welcome)
        welcome(message);
    else if (command == numeric::nickInUse || command == numeric::nickCollision ||
             command == numeric::nickUnavailable)
        askAnew(choice_.taken(message.parameter(1)));
    else if (command == numeric::noNickGiven || command == numeric::badNick)
        askAnew(choice_.malformed());
    else if (command == "AUTHENTICATE")
        sendLogin(message.parameter(0));
    else if (numeric::isAboutLogin(command))
        takeLoginAnswer(message);
    else if (command == numeric::unknownCommand || command == numeric::notRegistered)
        takeUnknown(message.parameter(1));
    else if (command == numeric::badCapability)
        endCapabilities();
}

void IrcRegistration::welcome(const IrcMessage& message) {
    // A login that is still open at the welcome was never answered.
    failLogin("the server knows no accounts");
    nick_ = message.parameter(0).empty() ? choice_.asked() : message.parameter(0);
    phase_ = Phase::done;
}

void IrcRegistration::askAnew(bool hasAnother) {
    if (hasAnother)
        send_(ircLine("NICK", {choice_.asked()}));
    else if (!std::exchange(hasGivenUp_, true))
        tell_("the server gives you none of the names that were tried");
}

// A server that doesn't know CAP goes on by itself.
void IrcRegistration::takeUnknown(std::string_view command) {
    if (command != "AUTHENTICATE")
        return;
    failLogin("the server knows no accounts");
    endCapabilities();
}

void IrcRegistration::takeCapabilities(const IrcMessage& message) {
    capabilities_.take(message, [this](std::string_view ways) {
        return login_ == Login::wanted && offersPlain(ways);
    });
    if (phase_ == Phase::listing && capabilities_.isListed()) {
        phase_ = Phase::requesting;
        if (!capabilities_.asksFor(capability::sasl))
            failLogin("the server offers no login by a password");
    }
    goOn();
}

void IrcRegistration::goOn() {
    if (phase_ != Phase::requesting || !capabilities_.isSettled())
        return;
    if (!capabilities_.holds(capability::sasl))
        failLogin("the server refuses it");
    if (login_ != Login::wanted)
        return endCapabilities();
    phase_ = Phase::loggingIn;
    send_(ircLine("AUTHENTICATE", {"PLAIN"}));
}

void IrcRegistration::endCapabilities() {
    if (phase_ == Phase::ended || isDone())
        return;
    phase_ = Phase::ended;
    send_(ircLine("CAP", {"END"}));
}

// The password is sent once at most, and only when the server asks for it as agreed.
void IrcRegistration::sendLogin(std::string_view challenge) {
    if (phase_ != Phase::loggingIn || login_ != Login::wanted)
        return;
    login_ = Login::sent;
    if (challenge != "+")
        return send_(ircLine("AUTHENTICATE", {"*"}));
    for (const std::string& line : saslPlainLines(identity_.account, identity_.password))
        send_(ircLine("AUTHENTICATE", {line}));
}

void IrcRegistration::takeLoginAnswer(const IrcMessage& message) {
    const std::string& command = message.command;
    // These two only tell the name of the account. How the login went comes in another number.
    if (command == numeric::loggedIn || command == numeric::loggedOut || phase_ != Phase::loggingIn)
        return;
    if (command == numeric::loginDone || command == numeric::loginDoneBefore) {
        login_ = Login::none;
    } else if (command == numeric::loginWays) {
        failLogin("the server knows only other ways than a password");
    } else {
        const bool saysWhy = message.parameters.size() > 1;
        failLogin(saysWhy ? message.parameters.back() : "the server refuses it");
    }
    endCapabilities();
}

void IrcRegistration::failLogin(std::string_view why) {
    if (std::exchange(login_, Login::none) != Login::none)
        tell_("you are not logged in: " + std::string(why));
}

} // namespace larkspin
