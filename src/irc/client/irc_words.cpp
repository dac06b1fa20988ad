#include "irc/client/irc_words.h"

#include "host/conversations.h"
#include "host/own_room.h"
#include "irc/client/irc_client.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <optional>
#include <utility>

namespace larkspin {

namespace {

const std::string nowhere = "you are on no network: /connect leads to one";

bool isBlank(std::string_view rest) {
    return withoutBlanks(rest).empty();
}

bool join(IrcClient& irc, std::string_view rest) {
    const std::string name(takeWord(rest));
    const std::string key(takeWord(rest));
    if (name.empty() || !isBlank(rest))
        return false;
    irc.join(name, key);
    return true;
}

bool names(IrcClient& irc, std::string_view rest) {
    const std::string room(takeWord(rest));
    const bool isMeant = isBlank(rest) && (room.empty() || irc.orders().meansRoom(room));
    if (isMeant)
        irc.names(room);
    return isMeant;
}

// A room that he isn't in can only be asked about: its name may begin a topic.
bool topic(IrcClient& irc, std::string_view rest) {
    std::string_view text = rest;
    std::string room(takeWord(text));
    if (irc.orders().meansRoom(room) && (isBlank(text) || irc.orders().isInRoom(room)))
        rest = text;
    else
        room.clear();
    irc.topic(isBlank(rest)                      ? std::nullopt
              : withoutBlanks(rest) == "-delete" ? std::optional<std::string>("")
                                                 : std::optional(textAfter(rest)),
              room);
    return true;
}

bool message(IrcClient& irc, std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty() || isBlank(rest))
        return false;
    irc.voice().message(name, textAfter(rest));
    return true;
}

bool query(IrcClient& irc, std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty())
        return false;
    irc.talkTo(name);
    if (!isBlank(rest))
        irc.voice().message(name, textAfter(rest));
    return true;
}

bool changeNick(IrcClient& irc, std::string_view rest) {
    const std::string_view nick = takeWord(rest);
    if (!canBeIrcNick(nick) || !isBlank(rest))
        return false;
    irc.changeNick(std::string(nick));
    return true;
}

} // namespace

std::vector<SlashWord> IrcWords::words() {
    std::vector<SlashWord> all;
    const auto atHand = [this]() -> IrcClient& { return networks_.atHand().client; };
    for (auto&& words :
         {wordsOn(atHand), about("network", wordsOfNetworks()), aboutConversations_.words()})
        all.insert(all.end(), words.begin(), words.end());
    return all;
}

std::vector<SlashWord> IrcWords::wordsOfNetworks() {
    using Self = IrcWords;
    const auto by = [this](bool (Self::*work)(std::string_view)) {
        return [this, work](std::string_view rest) { return (this->*work)(rest); };
    };
    const auto access = [this](bool (IrcAccess::*work)(std::string_view)) {
        return
            [this, work](std::string_view rest) { return (networks_.atHand().access.*work)(rest); };
    };
    const auto trust = [this](std::string_view rest) {
        IrcNetwork* const asking = isBlank(rest) ? networks_.lastToAskForTrust() : nullptr;
        IrcNetwork& atHand = networks_.atHand();
        IrcNetwork& meant = atHand.isKnown() ? atHand : networks_.last();
        return (asking ? *asking : meant).access.trust(rest);
    };
    return {
        {"connect",
         "[NAME] | [as NAME] [plain] SERVER[:PORT] NICK [#ROOM] | windows",
         "goes to a network, by TLS unless plain; or once more to the last one, or the one of that "
         "name; windows reaches a chat client that runs in Wine",
         by(&Self::connect),
         {"server"}},
        {"reconnect", "[NAME]", "goes to a network once more", by(&Self::reconnect)},
        {"disconnect", "[NAME]", "leaves a network; larkspin goes on", by(&Self::disconnect)},
        {"networks", "[forget NAME]", "tells which networks are known, or forgets one",
         by(&Self::tellNetworks)},
        {"login", "USER [keep]", "asks for the password of an account, and may keep it",
         access(&IrcAccess::login)},
        {"pass", "[keep|none]", "asks for the password of a server or a bouncer, and may keep it",
         access(&IrcAccess::serverPassword)},
        {"user", "[NAME [REAL NAME]|none]", "which user name and real name a server is told",
         access(&IrcAccess::user)},
        {"certificate", "[FILE|none]", "your own certificate with its key, which a server is shown",
         access(&IrcAccess::certificate)},
        {"trust", "[FINGERPRINT|none]", "takes the server's certificate that was shown last",
         trust},
        {"onconnect", "[LINE|drop NUMBER|drop all]",
         "a line that is run each time that a network has welcomed you",
         access(&IrcAccess::onConnect)},
        {"atstart", "[on|off]", "whether larkspin comes back to a network when it starts",
         access(&IrcAccess::atStart)},
        {"limit", "[LINES]", "how many lines a minute are said at most; 0 for as many as may",
         by(&Self::limit)},
    };
}

std::vector<SlashWord> IrcWords::wordsOn(const Network& network) {
    // For words that mean something on a network only.
    const auto there = [this, network](std::function<bool(IrcClient&, std::string_view)> work) {
        return [this, network, work = std::move(work)](std::string_view rest) {
            if (network().isOn())
                return work(network(), rest);
            tell_(nowhere);
            return true;
        };
    };
    const auto leave = [this, there](std::string_view rest) {
        const auto work = [](IrcClient& irc, std::string_view more) {
            std::string_view reason = more;
            const std::string name(takeWord(reason));
            if (irc.orders().meansRoom(name))
                irc.leaveRoom(name, std::string(withoutBlanks(reason)));
            else
                irc.leave(std::string(withoutBlanks(more)));
            return true;
        };
        IrcNetwork* const here = networks_.of(conversations_.front());
        return here ? work(here->client, rest) : there(work)(rest);
    };
    std::vector<SlashWord> words{
        {"join",
         "#ROOM [KEY]",
         "goes into a room, which waits behind the one you are in",
         there(join),
         {"j"}},
        {"leave",
         "[#ROOM] [REASON]",
         "leaves the room, or ends the private talk",
         leave,
         {"part", "close"}},
        {"names", "[#ROOM]", "tells who is in the room", there(names), {"n"}},
        {"topic",
         "[#ROOM] [TEXT|-delete]",
         "tells the room's topic, sets it, or takes it away",
         there(topic),
         {"t"}},
        {"msg", "NAME TEXT", "sends somebody a private message", there(message), {"m"}, "talking"},
        {"query",
         "NAME [TEXT]",
         "talks to somebody in private, in a conversation of its own",
         there(query),
         {"q", "dialog"},
         "talking"},
        {"nick", "NAME", "asks for another name", there(changeNick), {}, "people"},
    };
    words = about("rooms", std::move(words));
    for (auto&& more : {IrcTalkWords(conversations_, own_, network, tell_).words(),
                        IrcOrderWords(loop_, conversations_, ignored_, network, tell_).words()})
        words.insert(words.end(), more.begin(), more.end());
    return words;
}

bool IrcWords::connect(std::string_view rest) {
    const auto wish = readIrcWish(rest);
    const std::string_view name = withoutBlanks(rest);
    IrcNetwork* const inFront = networks_.of(conversations_.front());
    IrcNetwork* const again = !name.empty() ? networks_.named(name)
                              : inFront     ? inFront
                                            : &networks_.last();
    if (!wish && !(again && again->isKnown()))
        return false;
    if (!wish)
        networks_.connectAgain(*again);
    else if (!networks_.connect(*wish))
        tell_("larkspin knows no more networks: /networks forget NAME makes room");
    return true;
}

bool IrcWords::disconnect(std::string_view rest) {
    const std::string_view name = withoutBlanks(rest);
    IrcNetwork* const network = name.empty() ? &networks_.atHand() : networks_.named(name);
    if (network && network->client.isOn())
        network->client.disconnect();
    else
        tell_(name.empty() ? nowhere : "you aren't on " + visibleName(name));
    return true;
}

bool IrcWords::tellNetworks(std::string_view rest) {
    const std::string_view word = takeWord(rest), name = withoutBlanks(rest);
    if (!word.empty() && (!equalFolded(word, "forget") || name.empty()))
        return false;
    if (!word.empty()) {
        IrcNetwork* const network = networks_.named(name);
        const bool forgets = network && !network->client.isOn();
        if (forgets)
            networks_.forget(*network);
        tell_(forgets   ? visibleName(name) + " is forgotten"
              : network ? "you are on " + visibleName(name) + ": /disconnect leaves it"
                        : visibleName(name) + " isn't known");
        return true;
    }
    if (networks_.all().size() == 1)
        tell_("no network is known: /connect leads to one");
    for (const auto& each : networks_.all()) {
        if (!each->isKnown())
            continue;
        const IrcAccount& account = each->file.account();
        tell_(visibleName(each->name()) + "  " + visibleName(account.server.host) + ':' +
              std::to_string(account.server.port) + ", as " +
              visibleName(each->client.isOn() ? each->client.ownName() : account.nick) +
              (each->client.isOn() ? " (on)" : ""));
    }
    return true;
}

bool IrcWords::reconnect(std::string_view rest) {
    std::string_view server = rest;
    takeWord(server);
    if (!isBlank(server))
        return false;
    if (!connect(rest))
        tell_("that network isn't known: /connect leads to one");
    return true;
}

void IrcWords::quits() const {
    if (networks_.isOnAny())
        tell_("larkspin ends; /disconnect would only leave the network");
}

bool IrcWords::limit(std::string_view rest) {
    const std::string_view lines = takeWord(rest);
    if (!lines.empty()) {
        const auto wanted = plainNumber(lines, 0, mostLinesPerMinute);
        if (!wanted || !isBlank(rest))
            return false;
        networks_.limitSaid(*wanted);
    }
    if (const int most = accounts_.linesPerMinute(); most > 0)
        tell_("larkspin says at most " + counted(most, "line") + " a minute");
    else
        tell_("larkspin says as many lines as the server allows");
    return true;
}

} // namespace larkspin
