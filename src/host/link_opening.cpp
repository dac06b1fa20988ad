#include "host/link_opening.h"

#include "host/links.h"
#include "host/web_address.h"
#include "shell/dialogs.h"

namespace larkspin {

namespace {

constexpr std::size_t mostLinks = 10;

} // namespace

void LinkOpening::open(const std::string& link) {
    const auto address = webAddress(link);
    if (!address)
        return;
    if (!agreed_.contains(*address)) {
        if (!dialogs_.ask(questionAbout(*address), Dialogs::Preset::no))
            return;
        if (agreed_.size() < mostAgreed)
            agreed_.insert(*address);
    }
    open_(*address);
}

Menu linksMenu(const Conversation& conversation, const LinkOpening::Open& open) {
    std::vector<MenuEntry> entries;
    for (const std::string& address : latestLinks(conversation, mostLinks))
        entries.push_back(
            {.name = address, .caption = address, .action = [open, address] { open(address); }});
    if (entries.empty())
        entries.push_back({.name = "none", .caption = "no links have been said here"});
    return {.name = "links", .entries = [entries] { return entries; }};
}

} // namespace larkspin
