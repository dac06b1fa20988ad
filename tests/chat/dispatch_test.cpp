#include "app/command_rows.h"
#include "app/program.h"
#include "shell/media_types.h"
#include "support/talk.h"

namespace larkspin {

TEST(Dispatch, RunsOnlyTheOwnersOwnLines) {
    VirtualMachine machine(Lines{});
    machine.forget();
    const char* const others[][2] = {{"Owner", "owner"}, {"Owner", "Owner "},
                                     {"Owner", ""},      {"", "Owner"},
                                     {"", ""},           {"Owner 2", "Owner"}};
    for (const auto& [signedOn, speaker] : others) {
        machine.room.screenName = signedOn;
        machine.somebody(speaker, "'volume 7");
        EXPECT_EQ(machine.said(), "") << signedOn << " / " << speaker;
    }
    EXPECT_EQ(machine.answer("'volume 7"), "volume set:  <b>7</b>");
}

TEST(Dispatch, TellsWordsFromPatternsAndCutsTheArgumentAsTyped) {
    VirtualMachine machine({"Ride On.mp3", "Rest.mp3", "\u00C4pfel.mp3"});
    converse(
        machine,
        {Turn("'STOP", "larkspin player [stopped]"),
         Turn({"'stop ", " 'stop", "''stop", "stop", "'stopp", "'", "", "'m 1", "'cancel"}, ""),
         Turn("'play", "nothing to play, fag"),
         Turn("'play ", "scroll <b>3</b> choices?  <b>'yes </b>, <b>'no</b>, or <b>'view"),
         Turn("'PLAY  oN", "playing:  <b>2</b>.  Ride<b><u> oN</b></u>"),
         Turn("'play \u00E4PF", "playing:  <b>3</b>.  <b><u>\u00E4PF</b></u>el"),
         Turn("'play on ", "your gay song was not found"),
         Turn("'filter?", "current media filter:  <b>mp3</b> (<b>*.mp3</b>)"),
         Turn("'filter ?", "invalid. choose " + typedMediaWords())});
}

TEST(Dispatch, SurvivesEveryWordWithASillyArgument) {
    VirtualMachine machine({"ride.mp3", "rest.mp3"});
    Lines lines{"'play " + std::string(1 << 20, 'R')};
    for (const auto handler : {HandledBy::NiteScan1, HandledBy::NiteScan2, HandledBy::NiteScan3})
        for (const CommandRow& row : commandRows(*machine.program, handler))
            for (const char* argument : {"", "\xFF%n|{\x01, *", "-99999999999, 1e5"})
                lines.push_back((row.afterTrigger ? "'" : "") +
                                std::string(row.pattern.substr(0, row.pattern.find('*'))) +
                                argument);
    std::erase(lines, "'exit");
    for (const std::string& line : lines) {
        SCOPED_TRACE(line.substr(0, 40));
        machine.program->chat.NiteScan2.startscan();
        for (const bool silent : {true, false}) {
            machine.state().silnt = silent;
            ASSERT_TRUE(machine.owner(line, 5s));
        }
        machine.state().silnt = true; // in a box, whatever style has been set
        EXPECT_EQ(machine.answer("'trig?"), "[box] your trigger is '");
        machine.state().silnt = false;
        machine.somebody("Stranger", line);
        EXPECT_EQ(machine.room.lines.size(), 0u);
    }
}

TEST(Dispatch, StaysDeafToAMillionLinesOfStrangers) {
    VirtualMachine machine({"ride.mp3"});
    machine.program->chat.NiteScan2.startscan();
    std::vector<ChatLine> others;
    for (const auto handler : {HandledBy::NiteScan1, HandledBy::NiteScan2, HandledBy::NiteScan3})
        for (const CommandRow& row : commandRows(*machine.program, handler))
            for (const char* speaker :
                 {"", "owner", "OWNER", " Owner", "Owner ", "Owner\u200B", "\uFEFFOwner",
                  "Owner\r\n", "<b>Owner</b>", "Owner: ", "Own", "\u041Ewner", "Owner\xFF"})
                others.push_back(
                    {speaker, (row.afterTrigger ? "'" : "") + std::string(row.pattern)});
    machine.forget();
    const int writes = machine.files.writes;
    for (std::size_t line = 0; line < 1'000'000; ++line)
        machine.heard(others[line % others.size()]);
    EXPECT_EQ(machine.room.lines, Lines());
    EXPECT_EQ(machine.dialogs.boxes, Lines());
    EXPECT_EQ(machine.launching.started, Lines());
    EXPECT_EQ(machine.player.opened, Lines());
    EXPECT_EQ(machine.files.writes, writes);
    EXPECT_EQ(machine.state().HScroll2, 50);
    EXPECT_TRUE(machine.program->chat.NiteScan2.running());
}

} // namespace larkspin
