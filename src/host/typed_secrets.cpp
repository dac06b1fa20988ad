#include "host/typed_secrets.h"

#include "text/blanks.h"
#include "text/fold.h"
#include "text/parts.h"
#include "text/typed_words.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace larkspin {

namespace {

bool isOneOf(std::string_view folded, std::initializer_list<std::string_view> others) {
    return std::ranges::find(others, folded) != others.end();
}

// Names without the server that may stand after them ("Q@CServe.quakenet.org"). Those that begin
// with a star are a bouncer's.
bool isService(std::string_view name) {
    const std::string folded = foldCase(partedAt(name, '@').head);
    return folded.starts_with('*') || folded.ends_with("serv") || folded.ends_with("service") ||
           isOneOf(folded, {"q", "x", "l", "root", "services"});
}

bool leadsToService(std::string_view foldedOrder) {
    return foldedOrder.ends_with("serv") ||
           isOneOf(foldedOrder, {"ns", "cs", "ms", "os", "hs", "bs", "znc"});
}

bool isChannel(std::string_view word) {
    return word.starts_with('#') || word.starts_with('&') || word.starts_with('+') ||
           word.starts_with('!');
}

std::string_view nextWord(std::string_view rest) {
    return takeWord(rest);
}

// The line up to where `rest` begins, which is a view into it, and the mask if there is more.
std::string maskedFrom(std::string_view line, std::string_view rest) {
    const auto blanks = rest.find_first_not_of(' ');
    if (blanks == rest.npos)
        return std::string(line);
    rest.remove_prefix(blanks);
    return std::string(line.substr(0, line.size() - rest.size())) + std::string(secretMask);
}

std::string maskedAfter(std::string_view line, int words) {
    std::string_view rest = line;
    for (; words > 0; --words)
        takeWord(rest);
    return maskedFrom(line, rest);
}

// The words after which a service is told a password, and how many may be read that come before it.
// A bouncer's modules are told some by words of their own.
constexpr struct {
    std::string_view word;
    int shown;
} orders[] = {{"login", 0},   {"auth", 0},     {"authenticate", 0}, {"register", 0}, {"confirm", 0},
              {"hello", 0},   {"cookie", 0},   {"ghost", 1},        {"recover", 1},  {"release", 1},
              {"regain", 1},  {"reclaim", 1},  {"enforce", 1},      {"group", 1},    {"drop", 1},
              {"link", 1},    {"unlink", 1},   {"logout", 1},       {"sasl", 1},     {"adduser", 1},
              {"loadmod", 1}, {"addserver", 2}};

// "IDENTIFY" in all its forms, also as it is often mistyped.
bool isIdentify(std::string_view foldedOrder) {
    return foldedOrder.starts_with("id") || foldedOrder.starts_with("ind") ||
           foldedOrder.ends_with("ify") || foldedOrder.find("ident") != foldedOrder.npos;
}

// Of the words of an order, that after which comes a secret whatever the order is: a password, as
// in "set password x", a line that is to be said to another service, or the key in the modes of a
// room.
bool comesBeforeSecret(std::string_view foldedWord, bool isAboutModes) {
    const bool isModes = foldedWord.starts_with('+') || foldedWord.starts_with('-');
    return foldedWord.find("pass") != foldedWord.npos || foldedWord == "-connect-command" ||
           (isAboutModes && isModes && foldedWord.find('k') != foldedWord.npos);
}

std::string serviceWithoutSecrets(std::string_view text) {
    bool isAboutModes = false;
    for (std::string_view looked = text; !withoutBlanks(looked).empty();) {
        const std::string word = foldCase(takeWord(looked));
        if (comesBeforeSecret(word, isAboutModes))
            return maskedFrom(text, looked);
        isAboutModes = isAboutModes || isOneOf(word, {"mode", "modes", "mlock"});
    }
    std::string_view rest = text;
    std::string order = foldCase(takeWord(rest));
    // "/identify x" in front of which there was something, or ":identify x"
    order.erase(0, std::min(order.find_first_of("abcdefghijklmnopqrstuvwxyz"), order.size()));
    const auto found = std::ranges::find(orders, order, [](const auto& each) { return each.word; });
    if (found == std::end(orders) && !isIdentify(order))
        return std::string(text);
    while (isChannel(nextWord(rest)))
        takeWord(rest);
    for (int shown = found == std::end(orders) ? 0 : found->shown; shown > 0; --shown)
        takeWord(rest);
    return maskedFrom(text, rest);
}

// "k" among the letters, of which some may take other parameters.
std::string modesWithoutKey(std::string_view line) {
    std::string_view rest = line;
    takeWord(rest);
    std::string_view modes = takeWord(rest);
    if (isChannel(modes) && !nextWord(rest).empty() && modes.front() != '+')
        modes = takeWord(rest);
    const bool setsKey = modes.find('k') != modes.npos;
    return setsKey ? maskedFrom(line, rest) : std::string(line);
}

// `line` is what follows a name: a blank, and a text that may have the protocol's colon in front.
std::string saidAfter(std::string_view line, std::string_view to, std::string_view rest) {
    const std::string_view text = rest.substr(std::min(rest.find_first_not_of(' '), rest.size()));
    const bool hasColon = text.starts_with(':');
    const std::string_view before = line.substr(0, line.size() - text.size() + hasColon);
    return std::string(before) + saidWithoutSecrets(to, text.substr(hasColon));
}

// An order that is typed as a word with a slash, or sent as a line of the protocol. Programs and
// servers have words of their own for services.
std::string orderWithoutSecrets(std::string_view line) {
    std::string_view rest = line;
    const std::string order = foldCase(takeWord(rest));
    if (isOneOf(order, {"pass", "authenticate", "identify", "id", "auth", "register", "webirc"}))
        return maskedAfter(line, 1);
    if (isOneOf(order, {"oper", "join", "j", "login", "verify", "cycle", "hop", "vhost"}))
        return maskedAfter(line, 2);
    if (order == "mode")
        return modesWithoutKey(line);
    if (leadsToService(order) && !nextWord(rest).starts_with('*'))
        return saidAfter(line, "nickserv", rest);
    const std::string_view to = takeWord(rest);
    return isService(to) ? saidAfter(line, to, rest) : std::string(line);
}

// "/connect SERVER PORT PASSWORD", as other clients have it.
std::string connectWithoutSecrets(std::string_view line) {
    std::string_view rest = line;
    takeWord(rest);
    if (equalFolded(nextWord(rest), "plain"))
        takeWord(rest);
    takeWord(rest);
    const std::string_view port = takeWord(rest);
    const bool isPort = port.find_first_not_of("0123456789+") == port.npos;
    return isPort ? maskedFrom(line, rest) : std::string(line);
}

// "/set irc.server.example.sasl_password x" and "/server add example -password=x", from there.
std::string settingWithoutSecrets(std::string_view line) {
    for (std::string_view rest = line; !withoutBlanks(rest).empty();) {
        const std::string_view word = takeWord(rest);
        if (foldCase(word).find("pass") == std::string::npos)
            continue;
        const auto sign = word.find('=');
        return maskedFrom(line, sign == word.npos ? rest
                                                  : line.substr(static_cast<std::size_t>(
                                                        word.data() + sign + 1 - line.data())));
    }
    return std::string(line);
}

} // namespace

// To a bouncer's module a line may be given that it is to say, or a password under any name.
std::string saidWithoutSecrets(std::string_view to, std::string_view text) {
    if (!isService(to))
        return std::string(text);
    std::string_view rest = text;
    const std::string order = foldCase(takeWord(rest));
    if (to.starts_with('*') && order == "add")
        return std::string(text.substr(0, text.size() - rest.size())) +
               protocolWithoutSecrets(rest);
    const bool isAny = order == "set" && isOneOf(foldCase(to), {"*sasl", "*nickserv", "*q"});
    return isAny ? maskedFrom(text, rest) : serviceWithoutSecrets(text);
}

std::string protocolWithoutSecrets(std::string_view line) {
    std::string_view rest = line;
    while (nextWord(rest).starts_with(':') || nextWord(rest).starts_with('@'))
        takeWord(rest);
    return std::string(line.substr(0, line.size() - rest.size())) + orderWithoutSecrets(rest);
}

std::string typedWithoutSecrets(std::string_view line) {
    std::string_view rest = line;
    const std::string_view typed = takeWord(rest);
    if (!typed.starts_with('/'))
        return std::string(line);
    const std::string word = foldCase(typed.substr(1)), argument = foldCase(nextWord(rest));
    const std::string before(line.substr(0, line.size() - rest.size()));
    if (isOneOf(word, {"quote", "raw"}))
        return before + protocolWithoutSecrets(rest);
    if (isOneOf(word, {"onconnect", "now", "say"}))
        return before + (argument.starts_with('/') ? typedWithoutSecrets(rest)
                         : word == "onconnect"     ? protocolWithoutSecrets(rest)
                                                   : std::string(rest));
    if (isOneOf(word, {"set", "server", "connect", "network", "secure"}))
        if (std::string masked = settingWithoutSecrets(line); masked != line)
            return masked;
    if (isOneOf(word, {"connect", "server", "reconnect"}))
        return connectWithoutSecrets(line);
    const std::string last = foldCase(withoutBlanks(rest));
    if (word == "pass" && isOneOf(last, {"keep", "none"}))
        return std::string(line);
    if (word == "login" && last.ends_with(" keep") && std::ranges::count(last, ' ') == 1)
        return std::string(line);
    const auto slash = static_cast<std::size_t>(typed.data() - line.data()) + 1;
    return std::string(line.substr(0, slash)) + orderWithoutSecrets(line.substr(slash));
}

} // namespace larkspin
