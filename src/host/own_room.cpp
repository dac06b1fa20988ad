#include "host/own_room.h"

#include "chat/markup.h"
#include "host/called_by_name.h"
#include "host/new_lines.h"
#include "text/blanks.h"
#include "text/fold.h"
#include "text/utf8.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

std::optional<int> rowOfName(const RowList& list, std::string_view name) {
    const std::string folded = foldCase(name);
    if (!list.containsFolded(folded))
        return std::nullopt;
    int row = 0;
    while (list.folded(row) != folded)
        ++row;
    return row;
}

std::string nameIn(const RowList& list, int row) {
    return std::string(list.row(row));
}

} // namespace

OwnRoom::OwnRoom(Conversations& conversations, ChatLines& lines, std::string screenName,
                 RoomDisplay shown)
    : conversations_(conversations), lines_(lines), screenName_(std::move(screenName)),
      shown_(std::move(shown)) {
    rooms_.push_back({&conversations_.home()});
    rooms_.back().people.add(screenName_);
}

const OwnRoom::Place& OwnRoom::placeOf(const Conversation& conversation) const {
    const auto found = std::ranges::find(rooms_, &conversation, &Place::conversation);
    return found == rooms_.end() ? placeOf(conversations_.home()) : *found;
}

void OwnRoom::tell(const std::string& text) const {
    conversations_.keep(*here().conversation, {.text = text});
}

// An answer to a line that was heard elsewhere isn't said here.
void OwnRoom::sendChatLine(const std::string& line) {
    Conversation* const conversation = conversations_.toSpeakIn();
    if (!conversation || !conversation->isAtHome())
        return;
    conversations_.keep(
        *conversation,
        {.kind = KeptLine::Kind::said, .speaker = screenName_, .text = line, .isOwners = true});
    lines_.said({screenName_, line}, conversation->place());
}

void OwnRoom::say(const std::string& line, bool isOnScreen) {
    hear(screenName_, line, isOnScreen);
}

void OwnRoom::act(const std::string& doing) {
    conversations_.keep(
        *here().conversation,
        {.kind = KeptLine::Kind::done, .speaker = screenName_, .text = doing, .isOwners = true});
}

void OwnRoom::hear(const std::string& speaker, const std::string& line, bool isOnScreen) {
    Conversation& conversation = *here().conversation;
    conversations_.keep(conversation, {.kind = KeptLine::Kind::said,
                                       .speaker = speaker,
                                       .text = line,
                                       .isOwners = isOwner(speaker),
                                       .isForOwner = !isOwner(speaker) &&
                                                     callsByName(plainMarkup(line), screenName_),
                                       .isOnScreen = isOnScreen});
    lines_.heard({speaker, line}, conversation.place());
}

bool OwnRoom::isOwner(std::string_view name) const {
    return equalFolded(name, screenName_);
}

bool OwnRoom::isTooLong(std::string_view name) const {
    if (prefixLength(name, longestName) == name.size())
        return false;
    tell("a name has at most " + std::to_string(longestName) + " characters");
    return true;
}

// The name of somebody else. Nothing, and the owner is told why, when nobody else can be called
// that.
std::optional<std::string> OwnRoom::othersName(const std::string& given) const {
    const std::string_view name = withoutBlanks(given);
    if (name.empty() || isTooLong(name))
        return std::nullopt;
    if (isOwner(name)) {
        tell(screenName_ + " is you");
        return std::nullopt;
    }
    return std::string(name);
}

// Lets somebody in who isn't in the room yet. Returns his name as it is shown; nothing when he
// can't come in.
std::optional<std::string> OwnRoom::admit(const std::string& given) {
    auto name = othersName(given);
    if (!name)
        return std::nullopt;
    if (const auto row = rowOfName(here().ejected, *name)) {
        tell(nameIn(here().ejected, *row) + " is kept out");
        return std::nullopt;
    }
    if (const auto row = rowOfName(here().people, *name))
        return nameIn(here().people, *row);
    if (!here().people.add(*name)) {
        tell("the room is full");
        return std::nullopt;
    }
    tell(*name + " comes in");
    return name;
}

void OwnRoom::comeIn(const std::string& name) {
    admit(name);
}

void OwnRoom::sayAs(const ChatLine& line) {
    const auto speaker = admit(line.speaker);
    if (!speaker || isIgnored(*speaker))
        return;
    hear(*speaker, line.text, false);
}

void OwnRoom::leave(const std::string& given) {
    const auto name = othersName(given);
    if (!name)
        return;
    const auto row = rowOfName(here().people, *name);
    if (!row) {
        tell(*name + " isn't here");
        return;
    }
    const std::string left = nameIn(here().people, *row);
    here().people.removeAt(*row);
    tell(left + " goes");
}

void OwnRoom::whisper(const std::string& given, const std::string& text) {
    const auto name = othersName(given);
    if (!name || isIgnored(*name))
        return;
    if (takesMessages_)
        conversations_.keep(*here().conversation,
                            {.text = *name + " whispers: " + text, .isForOwner = true});
    else
        tell("a private message of " + *name + " was refused");
}

void OwnRoom::enterRoom(const std::string& wanted) {
    const std::string name(withoutBlanks(wanted));
    if (name.empty() || isTooLong(name))
        return;
    Place* const room = findOrMakeRoom(name);
    if (!room) {
        tell("there are too many rooms");
        return;
    }
    // Lists of people that were made before this no longer count.
    ++visit_;
    if (room->conversation == &conversations_.front())
        tell(wordsOfEntering(conversations_, *room->conversation));
    conversations_.asOwnerWants([&] { conversations_.enter(*room->conversation); });
    shown_.changed();
}

OwnRoom::Place* OwnRoom::findOrMakeRoom(const std::string& name) {
    for (Place& room : rooms_)
        if (equalFolded(room.conversation->name(), name))
            return &room;
    if (rooms_.size() == mostRooms)
        return nullptr;
    rooms_.push_back({&conversations_.add({Conversation::Kind::room, 0, name})});
    rooms_.back().people.add(screenName_);
    return &rooms_.back();
}

// Where the person stands in the list. Nothing for the owner himself, and when the person was
// listed in another room.
std::optional<int> OwnRoom::rowOf(const RowList& list, const Person& person) const {
    if (person.list != visit_ || isOwner(person.name))
        return std::nullopt;
    return rowOfName(list, person.name);
}

Deed OwnRoom::toggleIgnored(const Person& person) {
    const auto row = rowOf(here().people, person);
    if (!row)
        return notDone(person);
    const std::string name = nameIn(here().people, *row);
    const auto ignoredRow = rowOfName(ignored_, name);
    if (ignoredRow)
        ignored_.removeAt(*ignoredRow);
    else if (!ignored_.add(name))
        return Deed::undone;
    tell(name + (ignoredRow ? " is heard again" : " is ignored"));
    return Deed::done;
}

Deed OwnRoom::eject(const Person& person) {
    const auto row = rowOf(here().people, person);
    if (!row || !here().ejected.add(here().people.share(*row)))
        return notDone(person);
    const std::string name = nameIn(here().people, *row);
    here().people.removeAt(*row);
    tell(name + " is put out");
    return Deed::done;
}

Deed OwnRoom::allow(const Person& person) {
    const auto row = rowOf(here().ejected, person);
    if (!row)
        return notDone(person);
    const std::string name = nameIn(here().ejected, *row);
    here().ejected.removeAt(*row);
    tell(name + " may come back");
    return Deed::done;
}

} // namespace larkspin
