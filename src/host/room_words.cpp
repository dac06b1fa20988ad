#include "host/room_words.h"

#include "host/own_room.h"
#include "text/blanks.h"
#include "text/number.h"
#include "text/typed_words.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace larkspin {

namespace {

bool as(OwnRoom& room, std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty())
        return false;
    if (rest.empty())
        room.comeIn(name);
    else
        room.sayAs({name, textAfter(rest)});
    return true;
}

bool bye(OwnRoom& room, std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty() || !takeWord(rest).empty())
        return false;
    room.leave(name);
    return true;
}

bool whisper(OwnRoom& room, std::string_view rest) {
    const std::string name(takeWord(rest));
    if (name.empty() || rest.empty())
        return false;
    room.whisper(name, textAfter(rest));
    return true;
}

} // namespace

void tellRoom(const ShownRoom& room, const RowList& ejected, const Called& called,
              const SlashWords::Tell& tell) {
    const auto tellAll = [&](const RowList& list, const std::string& mark) {
        const int named = std::min(list.count(), mostNamed);
        for (int row = 0; row < named; ++row) {
            const std::string_view name = list.row(row);
            tell("  " + called(name) + (room.isIgnored(name) ? " (ignored)" : "") + mark);
        }
        if (list.count() > named)
            tell("  and " + std::to_string(list.count() - named) + " more" + mark);
    };
    const int count = room.people().count();
    tell(called(room.name()) + ", " + counted(count, "person", "people"));
    tellAll(room.people(), "");
    tellAll(ejected, " (kept out)");
}

std::vector<SlashWord> roomWords(OwnRoom& room, SlashWords::Tell tell) {
    const auto goOrTell = [&room, tell = std::move(tell)](std::string_view rest) {
        if (withoutBlanks(rest).empty())
            tellRoom(
                room, room.ejected(), [](std::string_view name) { return std::string(name); },
                tell);
        else
            room.enterRoom(std::string(rest));
        return true;
    };
    return about("home", {
                             {"as", "NAME [TEXT]", "lets somebody else come in, and say something",
                              [&room](std::string_view rest) { return as(room, rest); }},
                             {"bye", "NAME", "lets somebody else leave",
                              [&room](std::string_view rest) { return bye(room, rest); }},
                             {"whisper", "NAME TEXT", "lets somebody send you a private message",
                              [&room](std::string_view rest) { return whisper(room, rest); }},
                             {"room",
                              "[NAME]",
                              "tells who is in the room, or goes to another one",
                              goOrTell,
                              {"buffer", "window", "win"},
                              "rooms"},
                         });
}

} // namespace larkspin
