#include "irc/channels/irc_talks.h"

#include "irc/connection/irc_session.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

Conversation* IrcTalks::find(std::string_view nick) const {
    for (const auto& each : conversations_.all())
        if (isTalk(*each) && session_.isSame(each->name(), nick))
            return each.get();
    return nullptr;
}

Conversation& IrcTalks::findOrBegin(std::string_view nick) {
    if (Conversation* const known = find(nick)) {
        known->isOpen = known->isOpen || session_.isWelcomed();
        return *known;
    }
    makeRoom();
    return conversations_.add({Conversation::Kind::person, network_, std::string(nick)});
}

void IrcTalks::makeRoom() {
    // Those in which he has said something himself go last.
    const auto worth = [](const Conversation& talk) {
        return std::pair(std::ranges::any_of(talk.lines(), &KeptLine::isOwners),
                         talk.lines().empty() ? 0 : talk.lines().back().number);
    };
    std::size_t count = 0;
    const Conversation* oldest = nullptr;
    for (const auto& each : conversations_.all()) {
        if (!isTalk(*each))
            continue;
        ++count;
        if (each.get() != &conversations_.front() && (!oldest || worth(*each) < worth(*oldest)))
            oldest = each.get();
    }
    if (count >= most && oldest)
        conversations_.remove(*oldest);
}

// Nobody else who takes the old name hears what was begun for him.
void IrcTalks::rename(std::string_view from, std::string_view to) {
    Conversation* const talk = find(from);
    Conversation* const other = find(to);
    if (!talk || to.empty())
        return;
    conversations_.keep(*talk, {.text = visibleName(from) + " is now called " + visibleName(to)});
    if (!other || other == talk)
        return conversations_.rename(*talk, std::string(to));
    talk->isOpen = false;
    if (&conversations_.front() == talk)
        conversations_.asOwnerWants([&] { conversations_.enter(*other); });
}

void IrcTalks::open(bool isOpen) {
    for (const auto& each : conversations_.all())
        if (isTalk(*each))
            each->isOpen = isOpen;
}

} // namespace larkspin
