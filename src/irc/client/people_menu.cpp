#include "irc/client/people_menu.h"

#include "host/conversations.h"
#include "host/own_room.h"
#include "irc/client/irc_networks.h"
#include "text/fold.h"

#include <algorithm>
#include <string_view>

namespace larkspin {

namespace {

bool holdsOneOf(const IrcClient& client, const std::string& name, std::string_view modes) {
    return std::ranges::any_of(modes, [&](char mode) { return client.holdsRank(name, mode); });
}

// Whoever is called that, as he is listed now; nobody of that name is in no list.
Person personIn(RoomPeople& people, const std::string& name) {
    for (const Person& person : people.listPeople())
        if (person.name == name)
            return person;
    return {};
}

} // namespace

std::vector<MenuEntry> PeopleMenu::of(const std::string& name) {
    if (conversations_.front().isAtHome())
        return atHome(name);
    const IrcNetwork* const network = networks_.of(conversations_.front());
    return network && conversations_.front().isOpen ? onNetwork(network->client, name)
                                                    : std::vector<MenuEntry>();
}

void PeopleMenu::talkTo(const std::string& name) {
    const Conversation& front = conversations_.front();
    const IrcNetwork* const network = networks_.of(front);
    if (!front.isAtHome() && !(network && name == network->client.ownName()))
        run_("/query " + name); // also where it only tells that there is no such thing
}

Task PeopleMenu::here(Task work) const {
    return [this, place = conversations_.front().place(), work = std::move(work)] {
        if (conversations_.front().place() == place)
            work();
    };
}

// No name on a network has blanks.
MenuEntry PeopleMenu::entry(const std::string& word, std::string caption, const std::string& name) {
    return {.name = word, .caption = std::move(caption), .action = here([this, word, name] {
                                                             run_('/' + word + ' ' + name);
                                                         })};
}

std::vector<MenuEntry> PeopleMenu::atHome(const std::string& name) {
    if (equalFolded(name, own_.ownName()))
        return {};
    const auto by = [this, name](Deed (OwnRoom::*work)(const Person&)) {
        return here([this, name, work] { (own_.*work)(personIn(own_, name)); });
    };
    return {{.name = "ignore",
             .caption = own_.isIgnored(name) ? "hear again" : "ignore",
             .action = by(&OwnRoom::toggleIgnored)},
            {.name = "ban", .caption = "put out, and keep out", .action = by(&OwnRoom::eject)},
            entry("bye", "let go", name)};
}

std::vector<MenuEntry> PeopleMenu::onNetwork(const IrcClient& client, const std::string& name) {
    const std::string own = client.ownName();
    if (name == own)
        return {entry("whois", "who you are", name)};
    std::vector<MenuEntry> entries{entry("query", "private talk", name),
                                   entry("whois", "who is that", name)};
    entries.push_back(client.isIgnored(name) ? entry("unignore", "hear again", name)
                                             : entry("ignore", "ignore", name));
    if (!holdsOneOf(client, own, "qaoh"))
        return entries;
    entries.push_back(separator("ranks"));
    if (holdsOneOf(client, own, "qao"))
        entries.push_back(client.holdsRank(name, 'o') ? entry("deop", "no operator any more", name)
                                                      : entry("op", "make operator", name));
    entries.push_back(client.holdsRank(name, 'v') ? entry("devoice", "take voice", name)
                                                  : entry("voice", "give voice", name));
    entries.push_back(separator("out"));
    entries.push_back(entry("kick", "put out", name));
    entries.push_back(entry("ban", "put out, and keep out", name));
    return entries;
}

} // namespace larkspin
