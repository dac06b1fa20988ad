// The room of one's own: others in it, private rooms, private messages. What moderation makes of it
// is in moderation_test.
#include "support/own_room_machine.h"

#include <gtest/gtest.h>
#include <map>

namespace larkspin {
namespace {

// "+bob" comes in, "-bob" goes, "bob: hi" and "bob> hi" is said and whispered; "@den" is a room to
// enter; "!bob" is ignored or no more, "#bob" put out, "~bob" let back.
void happen(OwnRoom& room, const std::string& what) {
    static const std::map<char, void (OwnRoom::*)(const std::string& name)> acts{
        {'+', &OwnRoom::comeIn}, {'-', &OwnRoom::leave}, {'@', &OwnRoom::enterRoom}};
    static const std::map<char, Deed (OwnRoom::*)(const Person& person)> deeds{
        {'!', &OwnRoom::toggleIgnored}, {'#', &OwnRoom::eject}, {'~', &OwnRoom::allow}};
    if (const auto act = acts.find(what[0]); act != acts.end())
        return (room.*act->second)(what.substr(1));
    if (const auto deed = deeds.find(what[0]); deed != deeds.end()) {
        Person person = room.listPeople().front();
        person.name = what.substr(1);
        (room.*deed->second)(person);
        return;
    }
    const auto end = what.find_first_of(":>");
    const std::string speaker = what.substr(0, end), text = what.substr(end + 2);
    what[end] == ':' ? room.sayAs({speaker, text}) : room.whisper(speaker, text);
}

// What the owner sees of it.
std::string seen(OwnRoomMachine& machine, const Lines& happening) {
    return machine.seenOf([&] {
        for (const std::string& what : happening)
            happen(machine.own, what);
    });
}

std::string seen(const Lines& happening) {
    OwnRoomMachine machine;
    return seen(machine, happening);
}

TEST(OwnRoom, OthersComeSpeakAndGo) {
    EXPECT_EQ(seen({"+Bob", "+BOB", " bob : <b>hi", "<\x01 x: hi", "-bob", "-bob", "bob: ", " : hi",
                    '+' + std::string(65, 'x')}),
              "[room] Bob comes in\nBob: <b>hi\n[room] <\x01 x comes in\n<\x01 x: hi\n"
              "[room] Bob goes\n[room] bob isn't here\n[room] bob comes in\nbob: \n"
              "[room] a name has at most 64 characters\n");
}

TEST(OwnRoom, NobodyBorrowsTheOwnersName) {
    OwnRoomMachine machine;
    machine.start();
    EXPECT_EQ(seen(machine, {"owner: 'volume 7", " OWNER : 'volume 7", "-Owner", "owner> psst"}),
              "[room] Owner is you\n[room] Owner is you\n[room] Owner is you\n"
              "[room] Owner is you\n");
    seen(machine, {"Owner\u200B: 'volume 7", "<b>Owner: 'volume 7"});
    EXPECT_EQ(machine.state().HScroll2, 50);
    machine.run([&] { machine.own.say("'volume 7"); });
    EXPECT_EQ(machine.state().HScroll2, 7);
}

TEST(OwnRoom, WhoIsIgnoredIsNeitherShownNorHeard) {
    OwnRoomMachine machine;
    Lines heard;
    machine.lines.connect([&](const ChatLine& line) { heard.push_back(line.speaker); });
    EXPECT_EQ(seen(machine, {"+Bob", "!BOB", "bob: hi", "bob> hi", "@den", "bob: hi", "!bob",
                             "bob: hi", "!Owner", "!nobody"}),
              "[room] Bob comes in\n[room] Bob is ignored\n[room] you are in den\n"
              "[room] bob comes in\n[room] bob is heard again\nbob: hi\n");
    EXPECT_EQ(heard, Lines{"bob"});
}

TEST(OwnRoom, WhoIsPutOutStaysOutOfThatRoomUntilHeIsLetBack) {
    EXPECT_EQ(seen({"+Eve", "#eve", "EVE: hi", "+eve", "@ Den ", "+eve", "~eve", "@LOBBY", "~eve",
                    "+eve", "#Owner", "#nobody"}),
              "[room] Eve comes in\n[room] Eve is put out\n[room] Eve is kept out\n"
              "[room] Eve is kept out\n[room] you are in Den\n[room] eve comes in\n"
              "[room] you are at home\n[room] Eve may come back\n[room] eve comes in\n");
}

TEST(OwnRoom, TheClientsAddressesLeadToPrivateRoomsAndOthersNowhere) {
    OwnRoomMachine machine;
    machine.start();
    for (const char* keyword : {"aol://2719:2-2-my den", "aol://2719:2-2- ", "online clock"})
        machine.owner("'kw " + std::string(keyword));
    EXPECT_EQ(machine.own.name(), "my den");
}

TEST(OwnRoom, PrivateMessagesAreRefusedOnRequest) {
    OwnRoomMachine machine;
    machine.start();
    const auto answer = [&](const char* line) {
        machine.owner(line);
        return seen(machine, {"bob> psst"});
    };
    EXPECT_EQ(answer(""), "[room] bob whispers: psst\n");
    EXPECT_EQ(answer("'imsoff"), "[room] a private message of bob was refused\n");
    EXPECT_EQ(answer("'imson"), "[room] bob whispers: psst\n");
}

TEST(OwnRoom, HoldsAsManyAsAList) {
    OwnRoomMachine machine;
    for (int number = 1; number < RowList::limit; ++number)
        machine.own.comeIn(std::to_string(number));
    EXPECT_EQ(seen(machine, {"+bob", "-500", "+bob"}),
              "[room] the room is full\n[room] 500 goes\n[room] bob comes in\n");
    for (std::size_t number = 1; number < OwnRoom::mostRooms; ++number)
        machine.own.enterRoom(std::to_string(number));
    EXPECT_EQ(seen(machine, {"@one more"}), "[room] there are too many rooms\n");
}

TEST(OwnRoom, WhoWasListedInOneRoomIsNobodyInTheNext) {
    OwnRoomMachine machine;
    OwnRoom& room = machine.own;
    seen(machine, {"+ann", "#ann", "+bob"});
    const Person ann = room.beginAllowing()->front(), bob = room.listPeople().back();
    seen(machine, {"@den", "+ann", "#ann", "+bob"});
    EXPECT_EQ(machine.seenOf([&] {
        room.toggleIgnored(bob);
        room.eject(bob);
        room.allow(ann);
    }),
              "");
}

} // namespace
} // namespace larkspin
