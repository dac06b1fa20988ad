#include "irc/client/all_rooms.h"

#include "host/name_completion.h"
#include "host/typed_secrets.h"
#include "shell/kept_files.h"

#include <utility>

namespace larkspin {

AllRooms::AllRooms(EventLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
                   PasswordPrompt& prompt, KeptFiles& files, const DataDirectory& directory,
                   const std::string& screenName, const RoomDisplay& shown)
    : accounts_(files, directory.ircFile()), ignored_(files, directory.ignoredFile()),
      conversations(loop, lines, std::string(OwnRoom::firstRoom)),
      log(loop, conversations, files, directory, told(shown).tell),
      preferences(files, directory, told(shown).tell),
      own(conversations, lines, screenName, told(shown)),
      networks({loop, lines, conversations, prompt, files, told(shown), &ignored_},
               std::move(connections), accounts_,
               [this](IrcClient& network) {
                   SlashWords some(told({}).tell);
                   some.add(words.wordsOn([&network]() -> IrcClient& { return network; }));
                   return some;
               }),
      words(loop, conversations, own, networks, accounts_, ignored_, told(shown).tell) {}

// What rooms tell beside what is said is kept like all else.
RoomDisplay AllRooms::told(RoomDisplay shown) {
    const auto keeps = [this](KeptLine::Kind kind) {
        return [this, kind](const std::string& text) { conversations.tell(kind, text); };
    };
    shown.message = keeps(KeptLine::Kind::news);
    shown.tell = keeps(KeptLine::Kind::answer);
    return shown;
}

std::vector<SlashWord> AllRooms::slashWords() {
    std::vector<SlashWord> all = words.words();
    all.push_back(log.word());
    for (SlashWord& word : preferences.words())
        all.push_back(std::move(word));
    return all;
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
