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
constexpr struct {
    std::string_view word;
    int shown;
} orders[] = {{"identify", 0},     {"id", 0},       {"sidentify", 0}, {"login", 0},  {"auth", 0},
              {"authenticate", 0}, {"register", 0}, {"confirm", 0},   {"verify", 0}, {"hello", 0},
              {"ghost", 1},        {"recover", 1},  {"release", 1},   {"regain", 1}, {"group", 1},
              {"drop", 1},         {"link", 1},     {"logout", 1},    {"fverify", 0}};

// Whatever the word before it, as in "set password x", what comes after "pass..." is one.
std::string serviceWithoutSecrets(std::string_view text) {
    std::string_view rest = text;
    const std::string order = foldCase(takeWord(rest));
    for (std::string_view looked = text; !withoutBlanks(looked).empty();)
        if (foldCase(takeWord(looked)).find("pass") != std::string::npos)
            return maskedFrom(text, looked);
    const auto found = std::ranges::find(orders, order, [](const auto& each) { return each.word; });
    if (found == std::end(orders))
        return std::string(text);
    while (isChannel(nextWord(rest)))
        takeWord(rest);
    for (int shown = found->shown; shown > 0; --shown)
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
    if (isOneOf(order, {"oper", "join", "j", "login", "verify", "cycle", "hop"}))
        return maskedAfter(line, 2);
    if (order == "mode")
        return modesWithoutKey(line);
    if (leadsToService(order))
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

} // namespace

std::string saidWithoutSecrets(std::string_view to, std::string_view text) {
    return isService(to) ? serviceWithoutSecrets(text) : std::string(text);
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
