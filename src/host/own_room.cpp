#include "host/own_room.h"

#include "text/blanks.h"
#include "text/fold.h"
#include "text/utf8.h"

#include <utility>

namespace larkspin {

namespace {

const std::string place = "home"; // one place for all of the owner's rooms

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

OwnRoom::OwnRoom(ChatLines& lines, std::string screenName, RoomDisplay shown)
    : lines_(lines), screenName_(std::move(screenName)), shown_(std::move(shown)) {
    findOrMakeRoom(std::string(firstRoom));
}

// An answer to a line that was heard elsewhere isn't said here.
void OwnRoom::sendChatLine(const std::string& line) {
    if (!lines_.mayBeSaidAt(place))
        return;
    shown_.line({screenName_, line});
    lines_.said({screenName_, line}, place);
}

void OwnRoom::say(const std::string& line) {
    shown_.line({screenName_, line});
    sayShown(line);
}

void OwnRoom::sayShown(const std::string& line) {
    lines_.heard({screenName_, line}, place);
}

bool OwnRoom::isOwner(std::string_view name) const {
    return equalFolded(name, screenName_);
}

bool OwnRoom::isTooLong(std::string_view name) const {
    if (prefixLength(name, longestName) == name.size())
        return false;
    shown_.message("a name has at most " + std::to_string(longestName) + " characters");
    return true;
}

// The name of somebody else. Nothing, and the owner is told why, when nobody else can be called
// that.
std::optional<std::string> OwnRoom::othersName(const std::string& given) const {
    const std::string_view name = withoutBlanks(given);
    if (name.empty() || isTooLong(name))
        return std::nullopt;
    if (isOwner(name)) {
        shown_.message(screenName_ + " is you");
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
    if (const auto row = rowOfName(ejected(), *name)) {
        shown_.message(nameIn(ejected(), *row) + " is kept out");
        return std::nullopt;
    }
    if (const auto row = rowOfName(people(), *name))
        return nameIn(people(), *row);
    if (!here().people.add(*name)) {
        shown_.message("the room is full");
        return std::nullopt;
    }
    shown_.message(*name + " comes in");
    return name;
}

void OwnRoom::comeIn(const std::string& name) {
    admit(name);
}

void OwnRoom::sayAs(const ChatLine& line) {
    const auto speaker = admit(line.speaker);
    if (!speaker || isIgnored(*speaker))
        return;
    shown_.line({*speaker, line.text});
    lines_.heard({*speaker, line.text}, place);
}

void OwnRoom::leave(const std::string& given) {
    const auto name = othersName(given);
    if (!name)
        return;
    const auto row = rowOfName(people(), *name);
    if (!row) {
        shown_.message(*name + " isn't here");
        return;
    }
    const std::string left = nameIn(people(), *row);
    here().people.removeAt(*row);
    shown_.message(left + " goes");
}

void OwnRoom::whisper(const std::string& given, const std::string& text) {
    const auto name = othersName(given);
    if (!name || isIgnored(*name))
        return;
    if (takesMessages_)
        shown_.message(*name + " whispers: " + text);
    else
        shown_.message("a private message of " + *name + " was refused");
}

void OwnRoom::enterRoom(const std::string& wanted) {
    const std::string name(withoutBlanks(wanted));
    if (name.empty() || isTooLong(name))
        return;
    const auto room = findOrMakeRoom(name);
    if (!room) {
        shown_.message("there are too many rooms");
        return;
    }
    current_ = *room;
    // Lists of people that were made before this no longer count.
    ++visit_;
    shown_.message("you are in " + here().name);
}

std::optional<std::size_t> OwnRoom::findOrMakeRoom(const std::string& name) {
    for (std::size_t room = 0; room < rooms_.size(); ++room)
        if (equalFolded(rooms_[room].name, name))
            return room;
    if (rooms_.size() == mostRooms)
        return std::nullopt;
    rooms_.push_back({.name = name});
    rooms_.back().people.add(screenName_);
    return rooms_.size() - 1;
}

// Where the person stands in the list. Nothing for the owner himself, and when the person was
// listed in another room.
std::optional<int> OwnRoom::rowOf(const RowList& list, const Person& person) const {
    if (person.list != visit_ || isOwner(person.name))
        return std::nullopt;
    return rowOfName(list, person.name);
}

Deed OwnRoom::toggleIgnored(const Person& person) {
    const auto row = rowOf(people(), person);
    if (!row)
        return notDone(person);
    const std::string name = nameIn(people(), *row);
    const auto ignoredRow = rowOfName(ignored_, name);
    if (ignoredRow)
        ignored_.removeAt(*ignoredRow);
    else if (!ignored_.add(name))
        return Deed::undone;
    shown_.message(name + (ignoredRow ? " is heard again" : " is ignored"));
    return Deed::done;
}

Deed OwnRoom::eject(const Person& person) {
    const auto row = rowOf(people(), person);
    if (!row || !here().ejected.add(people().share(*row)))
        return notDone(person);
    const std::string name = nameIn(people(), *row);
    here().people.removeAt(*row);
    shown_.message(name + " is put out");
    return Deed::done;
}

Deed OwnRoom::allow(const Person& person) {
    const auto row = rowOf(ejected(), person);
    if (!row)
        return notDone(person);
    const std::string name = nameIn(ejected(), *row);
    here().ejected.removeAt(*row);
    shown_.message(name + " may come back");
    return Deed::done;
}

} // namespace larkspin
