#include "irc/client/irc_server_facts.h"

#include "irc/client/irc_account.h"
#include "irc/connection/irc_connection.h"
#include "text/characters.h"
#include "text/fold.h"
#include "text/parts.h"

#include <algorithm>
#include <optional>

namespace larkspin {

namespace {

constexpr std::string_view of = " of ";

constexpr struct {
    IrcFact what;
    const char* name;
    bool isPorts; // and not all of the host's
} kinds[] = {
    {IrcFact::user, "user", false},
    {IrcFact::realName, "real name", false},
    {IrcFact::certificate, "certificate", false},
    {IrcFact::onConnect, "on connect", false},
    {IrcFact::tls, "tls until", false},
    {IrcFact::password, "server password", true},
    {IrcFact::fingerprint, "fingerprint", true},
};

const auto& kindOf(IrcFact what) {
    return *std::ranges::find_if(kinds, [what](const auto& kind) { return kind.what == what; });
}

bool canBePlace(std::string_view where, bool isPorts) {
    return where.empty() ||
           (isPorts ? readIrcServer(where, true).has_value() : canBeIrcHost(where));
}

} // namespace

std::string IrcServerFacts::placeOf(IrcFact what, const IrcServer& server) {
    if (!kindOf(what).isPorts)
        return server.host;
    const bool isAddress = server.host.find(':') != std::string::npos;
    return (isAddress ? '[' + server.host + ']' : server.host) + ':' + std::to_string(server.port);
}

bool IrcServerFacts::Fact::isAbout(IrcFact about, std::string_view place) const {
    return what == about && equalFolded(where, place);
}

std::string IrcServerFacts::get(IrcFact what, std::string_view where) const {
    const auto values = all(what, where);
    return values.empty() ? std::string() : values.front();
}

std::vector<std::string> IrcServerFacts::all(IrcFact what, std::string_view where) const {
    std::vector<std::string> values;
    for (const Fact& fact : facts_)
        if (fact.isAbout(what, where))
            values.push_back(fact.value);
    return values;
}

bool IrcServerFacts::set(IrcFact what, std::string_view where, std::string_view value,
                         bool isKept) {
    std::erase_if(facts_, [&](const Fact& fact) { return fact.isAbout(what, where); });
    return value.empty() || add(what, where, value, isKept);
}

bool IrcServerFacts::add(IrcFact what, std::string_view where, std::string_view value,
                         bool isKept) {
    if (facts_.size() >= most)
        return false;
    facts_.push_back({what, std::string(where), std::string(value), isKept});
    return true;
}

void IrcServerFacts::remove(IrcFact what, std::string_view where, std::size_t number) {
    std::erase_if(facts_,
                  [&](const Fact& fact) { return fact.isAbout(what, where) && number-- == 0; });
}

void IrcServerFacts::adopt(const IrcServer& server) {
    for (const auto& kind : kinds) {
        const auto isNext = [&](const Fact& fact) { return fact.isAbout(kind.what, ""); };
        if (std::ranges::none_of(facts_, isNext))
            continue;
        const std::string place = placeOf(kind.what, server);
        if (kind.what != IrcFact::onConnect)
            set(kind.what, place, "");
        for (Fact& fact : facts_)
            if (isNext(fact))
                fact.where = place;
    }
}

void IrcServerFacts::addWhatIsLacking(const IrcServerFacts& others) {
    const IrcServerFacts before = *this;
    for (const Fact& fact : others.facts_)
        if (before.all(fact.what, fact.where).empty())
            add(fact.what, fact.where, fact.value, fact.isKept);
}

bool IrcServerFacts::takeLine(std::string_view key, std::string_view value) {
    const auto end = key.find(of);
    const std::string_view name = key.substr(0, end),
                           where = end == key.npos ? "" : key.substr(end + of.size());
    for (const auto& kind : kinds)
        if (name == kind.name)
            return !value.empty() && value.size() <= longestValue && !hasControls(value) &&
                   canBePlace(where, kind.isPorts) && add(kind.what, where, value);
    return false;
}

std::string IrcServerFacts::lines() const {
    std::string text;
    for (const Fact& fact : facts_) {
        if (!fact.isKept)
            continue;
        text += kindOf(fact.what).name;
        if (!fact.where.empty())
            text.append(of).append(fact.where);
        text.append("=").append(fact.value).append("\n");
    }
    return text;
}

} // namespace larkspin
