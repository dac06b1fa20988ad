#include "irc/client/all_rooms.h"

#include "host/name_completion.h"
#include "host/typed_secrets.h"
#include "shell/kept_files.h"
#include "shell/shell.h"
#include "text/fold.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr const char* windowsKey = "windows client";

// What is said by the line where it is typed, at its end.
std::string_view saidBy(std::string_view typed) {
    if (!SlashWords::isMeantForIt(typed))
        return typed;
    std::string_view rest = typed;
    const std::string word = foldCase(takeWord(rest));
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    return word == "/now" || word == "/say" || word == "/me" ? rest : std::string_view();
}

} // namespace

AllRooms::AllRooms(EventLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
                   PasswordPrompt& prompt, KeptFiles& files, const DataDirectory& directory,
                   const std::string& screenName, const RoomDisplay& shown)
    : settings_(files, directory), accounts_(files, directory.ircFile()),
      ignored_(files, directory.ignoredFile()),
      conversations(loop, lines, std::string(OwnRoom::firstRoom)),
      log(loop, conversations, files, directory, told(shown).tell),
      preferences(loop, files, directory, told(shown).tell),
      own(conversations, lines, screenName, told(shown)),
      networks({loop, lines, conversations, prompt, files, told(shown), &ignored_},
               std::move(connections), accounts_,
               [this](IrcClient& network) {
                   SlashWords some(told({}).tell);
                   some.add(words.wordsOn([&network]() -> IrcClient& { return network; }));
                   return some;
               }),
      windows(loop, lines, conversations, told(shown)),
      words(loop, conversations, own, networks, windows, accounts_, ignored_, told(shown).tell),
      wordsOnWindows_(conversations, windows, told(shown).tell) {
    windows.keepBy([this](bool isWanted) { settings_.put(windowsKey, yesNo(isWanted)); });
}

void AllRooms::takeUpAgain() {
    networks.takeUpAgain();
    bool isWanted = false;
    loadFlag(isWanted, settings_.get(windowsKey));
    if (isWanted)
        windows.comeBack();
}

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
    std::vector<SlashWord> all = wordsOnWindows_.over(words.words());
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

void AllRooms::goTo(const std::string& place) {
    Conversation* const wanted = conversations.find(place);
    if (wanted && wanted != &conversations.front())
        conversations.asOwnerWants([&] { words.aboutConversations().goTo(*wanted); });
}

std::string AllRooms::withoutSecrets(std::string_view typed,
                                     const Conversations::Begun& begun) const {
    const Conversation* const there = conversations.whereBegun(begun);
    const std::string_view said = saidBy(typed);
    if (!there || there->kind() != Conversation::Kind::person || said.empty())
        return typedWithoutSecrets(typed);
    return std::string(typed.substr(0, typed.size() - said.size())) +
           saidWithoutSecrets(there->name(), said);
}

bool AllRooms::goBackFor(std::string_view typed, const Conversations::Begun& begun) {
    const Conversation* const there = conversations.whereBegun(begun);
    const bool canBeSaid = !there || there->isOpen || saidBy(typed).empty();
    const std::string masked = canBeSaid ? "" : withoutSecrets(typed, begun);
    const bool mayBeTaken = canBeSaid || masked == typed;
    const std::string name = mayBeTaken ? "" : visibleName(there->name());
    conversations.goBackTo(begun);
    if (!mayBeTaken)
        conversations.tell(KeptLine::Kind::answer, "not said to " + name + ": " + masked);
    return mayBeTaken;
}

} // namespace larkspin
