#include "irc/client/all_rooms.h"

#include "host/name_completion.h"
#include "host/typed_secrets.h"
#include "shell/kept_files.h"

#include <utility>

namespace larkspin {

AllRooms::AllRooms(EventLoop& loop, ChatLines& lines, IrcConnection& connection,
                   PasswordPrompt& prompt, KeptFiles& files, const DataDirectory& directory,
                   const std::string& screenName, const RoomDisplay& shown)
    : file_(files, directory.ircFile()),
      conversations(loop, lines, std::string(OwnRoom::firstRoom)),
      own(conversations, lines, screenName, told(shown)),
      irc(loop, lines, conversations, connection, followed(told(shown))),
      words(loop, conversations, own, irc, prompt, file_, files, told(shown).tell) {}

// What rooms tell beside what is said is kept like all else.
RoomDisplay AllRooms::told(RoomDisplay shown) {
    const auto keeps = [this](KeptLine::Kind kind) {
        return [this, kind](const std::string& text) { conversations.tell(kind, text); };
    };
    shown.message = keeps(KeptLine::Kind::news);
    shown.tell = keeps(KeptLine::Kind::answer);
    return shown;
}

RoomDisplay AllRooms::followed(RoomDisplay shown) {
    // The words keep for the next run where the owner is, so they hear of each change first.
    shown.changed = [this, changed = std::move(shown.changed)] {
        words.roomChanged();
        changed();
    };
    return shown;
}

Completion AllRooms::completionOf(std::string_view typed, const SlashWords& slashWords,
                                  const Complete& others) const {
    if (SlashWords::isBegun(typed))
        return slashWords.completionOf(typed);
    Completion found = SlashWords::isMeantForIt(typed) ? Completion() : others(typed);
    return found.text.empty() ? completionOfNames(room, typed) : found;
}

std::string AllRooms::withoutSecrets(std::string_view typed) const {
    const Conversation& front = conversations.front();
    return front.kind() == Conversation::Kind::person && !SlashWords::isMeantForIt(typed)
               ? saidWithoutSecrets(front.name(), typed)
               : typedWithoutSecrets(typed);
}

} // namespace larkspin
