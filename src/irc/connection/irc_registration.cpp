#include "irc/connection/irc_registration.h"

#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/protocol/sasl_plain.h"
#include "text/parts.h"
#include "text/typed_words.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr const char* sasl = "sasl";
constexpr const char* echo = "echo-message";
constexpr const char* withoutAccount[] = {"multi-prefix", "server-time", echo};

constexpr const char* userName = "larkspin";

std::vector<std::string_view> wordsOf(std::string_view list) {
    std::vector<std::string_view> words;
    for (std::string_view word; !(word = takeWord(list)).empty();)
        words.push_back(word);
    return words;
}

// "sasl=EXTERNAL,PLAIN"; without a value any way may do.
bool offersPlain(std::string_view capability) {
    const std::string ways = ',' + std::string(partedAt(capability, '=').tail) + ',';
    return ways == ",," || ways.find(",PLAIN,") != ways.npos;
}

bool isAmong(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

} // namespace

IrcRegistration::IrcRegistration(IrcIdentity identity, bool encrypted, Send send, Tell tell)
    : identity_(std::move(identity)), send_(std::move(send)), tell_(std::move(tell)),
      choice_(identity_.nick.empty() ? userName : identity_.nick) {
    if (!identity_.account.empty())
        login_ = encrypted ? Login::wanted : Login::impossible;
}

void IrcRegistration::begin() {
    if (login_ == Login::impossible)
        failLogin("a password isn't sent without TLS");
    // A server that knows CAP waits with its welcome until CAP END. Any other goes on with the two
    // lines after it.
    send_(ircLine("CAP", {"LS", "302"}));
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
    if (message.parameters.size() < 3)
        return;
    const std::string_view kind = message.parameter(1);
    const auto words = wordsOf(message.parameters.back());
    if (kind == "LS" && phase_ == Phase::listing) {
        for (const std::string_view word : words)
            takeOffer(word);
        if (message.parameters.size() < 4) // otherwise there is a "*" for more to come
            request();
    } else if (kind == "ACK") {
        for (const std::string_view word : words)
            takeGrant(word);
        goOn();
    } else if (kind == "NAK") {
        takeRefusal(words);
        goOn();
    } else if (kind == "DEL") {
        for (const std::string_view word : words)
            std::erase(held_, word);
    }
}

void IrcRegistration::takeOffer(std::string_view capability) {
    const std::string name(partedAt(capability, '=').head);
    const bool isWanted = name == sasl
                              ? login_ == Login::wanted && offersPlain(capability)
                              : std::ranges::find(withoutAccount, name) != std::end(withoutAccount);
    if (isWanted && !isAmong(requested_, name))
        requested_.push_back(name);
}

void IrcRegistration::request() {
    phase_ = Phase::requesting;
    if (!isAmong(requested_, sasl))
        failLogin("the server offers no login by a password");
    std::string list;
    for (const std::string& name : requested_)
        list += (list.empty() ? "" : " ") + name;
    if (!list.empty())
        send_(ircLine("CAP", {"REQ", list}));
    goOn();
}

// In the server's answers, signs may stand in front of a capability's name.
void IrcRegistration::takeGrant(std::string_view word) {
    const auto signs = std::min(word.find_first_not_of("-~="), word.size());
    const std::string_view name = word.substr(signs);
    if (word.substr(0, signs).find('-') != word.npos)
        std::erase(held_, name);
    else if (std::erase(requested_, name) > 0)
        held_.emplace_back(name);
}

// A server refuses all capabilities of a request when it won't grant one of them. They are then
// asked for one by one.
void IrcRegistration::takeRefusal(const std::vector<std::string_view>& words) {
    if (requested_.size() > 1 && !std::exchange(asksSingly_, true)) {
        for (const std::string& name : requested_)
            send_(ircLine("CAP", {"REQ", name}));
        return;
    }
    for (const std::string_view word : words)
        if (std::erase(requested_, word) > 0 && word == sasl)
            failLogin("the server refuses it");
}

void IrcRegistration::goOn() {
    if (phase_ != Phase::requesting || !requested_.empty())
        return;
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

bool IrcRegistration::echoes() const {
    return isAmong(held_, echo);
}

} // namespace larkspin
