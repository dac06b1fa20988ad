#include "irc/client/irc_on_connect.h"

#include "host/typed_secrets.h"
#include "irc/client/irc_client.h"
#include "irc/protocol/irc_message.h"
#include "text/blanks.h"
#include "text/characters.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <optional>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t mostOnConnect = 30, longestOnConnect = 400;

// What a line says may be a secret ("/msg NickServ identify ..."), so only its first two words are
// shown.
std::string shownBeginning(std::string_view line) {
    const std::string masked =
        SlashWords::isMeantForIt(line) ? typedWithoutSecrets(line) : protocolWithoutSecrets(line);
    std::string_view rest = masked;
    std::string shown(takeWord(rest));
    if (const std::string_view second = takeWord(rest); !second.empty())
        shown.append(" ").append(second);
    return visibleText(shown, " ") + (rest.empty() ? "" : " ...");
}

} // namespace

IrcOnConnect::IrcOnConnect(EventLoop& loop, IrcClient& irc, IrcAccountFile& file,
                           SlashWords::Tell tell, Words words)
    : loop_(loop), irc_(irc), file_(file), tell_(std::move(tell)), words_(std::move(words)) {}

std::string IrcOnConnect::place() const {
    return irc_.isOn() ? file_.account().server.host : "";
}

void IrcOnConnect::welcomed(const Task& goOn) {
    const auto lines = file_.account().facts.all(IrcFact::onConnect, file_.account().server.host);
    if (lines.empty())
        return goOn();
    loop_.cancel(running_);
    running_ = loop_.once(Nanoseconds(0), [this, lines, goOn] {
        running_ = TimerId::none;
        for (const std::string& line : lines)
            run(line);
        goOn();
    });
}

void IrcOnConnect::run(const std::string& line) {
    if (SlashWords::isMeantForIt(line))
        words_(irc_).run(line);
    else
        irc_.quote(line);
}

bool IrcOnConnect::take(std::string_view rest) {
    const std::string_view line = withoutBlanks(rest);
    std::string_view words = line;
    if (line.empty())
        return tellAll(), true;
    if (equalFolded(takeWord(words), "drop"))
        return drop(withoutBlanks(words));
    return add(line);
}

void IrcOnConnect::tellAll() const {
    const auto lines = file_.account().facts.all(IrcFact::onConnect, place());
    if (lines.empty())
        tell_("no lines are run on connecting");
    int number = 0;
    for (const std::string& line : lines)
        tell_(std::to_string(++number) + "  " + shownBeginning(line));
}

bool IrcOnConnect::drop(std::string_view which) {
    IrcAccount account = file_.account();
    const int count = static_cast<int>(account.facts.all(IrcFact::onConnect, place()).size());
    const bool isAll = equalFolded(which, "all");
    const auto number = plainNumber(which, 1, static_cast<int>(mostOnConnect));
    if (!isAll && !number)
        return false;
    if (isAll ? count == 0 : *number > count) {
        tell_("there is no such line");
        return true;
    }
    if (isAll)
        account.facts.set(IrcFact::onConnect, place(), "");
    else
        account.facts.remove(IrcFact::onConnect, place(), static_cast<std::size_t>(*number) - 1);
    file_.keep(std::move(account));
    tellAll();
    return true;
}

bool IrcOnConnect::add(std::string_view line) {
    const bool isWord = SlashWords::isMeantForIt(line);
    if (hasControls(line) || line.size() > longestOnConnect ||
        (!isWord && (!isLetter(line.front()) || !readIrcMessage(line))))
        return false;
    if (isWord && !words_(irc_).knows(line)) {
        std::string_view rest = line;
        tell_(visibleText(takeWord(rest), " ") + " can't be run on connecting");
        return true;
    }
    IrcAccount account = file_.account();
    if (account.facts.all(IrcFact::onConnect, place()).size() >= mostOnConnect ||
        !account.facts.add(IrcFact::onConnect, place(), line)) {
        tell_("there are too many of them");
        return true;
    }
    file_.keep(std::move(account));
    tell_(std::string("that line is run after each welcome ") +
          (place().empty() ? "of the next network" : "here"));
    return true;
}

} // namespace larkspin
