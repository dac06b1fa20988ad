// What tells how the program stands, in the room and in the tray's boxes.
#include "support/talk.h"
#include "text/dates.h"

namespace larkspin {

TEST(StatusCommands, TellTheTotals) {
    VirtualMachine machine(Lines{});
    const Lines cases[] = {{"3725", "1", "2", "5"},
                           {"59", "0", "0", "59"},
                           {"360000", "100", "0", "0"},
                           {"x", "0", "0", "0"},
                           {"99999999999999999999", "2562047788015215", "30", "7"}};
    for (const Lines& c : cases) {
        SCOPED_TRACE(c[0]);
        machine.state().playedSeconds = machine.state().programSeconds = c[0];
        const std::string said = "<b>" + c[1] + "</b> hrs, <b>" + c[2] + "</b> min";
        const std::string boxed = c[1] + " hours, " + c[2] + " minutes";
        const std::string played = "total played music time:  ", run = "total program runtime:  ";
        const std::string playedBox = "[box] " + played + boxed + ", " + c[3] + " seconds",
                          runBox = "[box] " + run + boxed;
        converse(machine,
                 {Turn("'pt", played + said + ", <b>" + c[3] + "</b> sec"), Turn("'rt", run + said),
                  Turn("'silent", "silent mode - <b>on"), Turn("'pt", playedBox),
                  Turn("'rt", runBox), Turn("'silentoff", "silent mode - <b>off")});
        EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("mptime"); }), playedBox);
        EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("prtime"); }), runBox);
    }
}

TEST(StatusCommands, TellVersionTimeAndDate) {
    VirtualMachine machine(Lines{});
    const std::string version = "version 4.3.11 - december 19, 2003";
    const std::tm now = machine.loop.localTime();
    const std::string time = clockTime(now), date = longDate(now);
    converse(machine,
             {Turn("'ver", version), Turn("'time", time), Turn("'date", date),
              Turn("'sela", "9-27-02 i love you sela, never forget that."),
              Turn("'clear", "chat window cleared"), Turn("'silent", "silent mode - <b>on"),
              Turn("'ver", "[box] " + version), Turn("'time", "[box] the time is " + time),
              Turn("'date", "[box] the date is " + date),
              Turn("'sela", "[box] you are in silent mode"),
              Turn({"'adv", "'stats", "'pstat"}, "")});
    machine.chooseFromTray("epver");
    EXPECT_EQ(machine.lastBox(), version);
    machine.room.input = "half a line";
    EXPECT_EQ(machine.answer("'clear"), "");
    EXPECT_EQ(machine.room.input, "");
}

TEST(StatusCommands, RememberTheFirstLoadWhenAsked) {
    VirtualMachine machine;
    const std::string missing = "first load not found... date created - try again";
    const std::string stored = "[lark]\r\nload=3\r\ntrigger='\r\n";
    machine.writeDataFile("larkspin.ini", stored);
    machine.start();
    EXPECT_EQ(machine.answer("'first"), missing);
    machine.writeDataFile("larkspin.ini", stored);
    machine.chooseFromTray("fload");
    EXPECT_EQ(machine.lastBox(), missing);
    const std::string moment = dateAndTime(machine.loop.localTime());
    EXPECT_EQ(machine.setting("first load"), moment);
    machine.advance(48h);
    EXPECT_EQ(machine.answer("'first"), "first loaded on " + moment);
    machine.chooseFromTray("fload");
    EXPECT_EQ(machine.lastBox(), "this program was first loaded on " + moment);
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'first"), "[box] first loaded on " + moment);
}

TEST(StatusCommands, TellTheSongAlsoInSilence) {
    VirtualMachine machine({"a.mp3", "b.Wav"}, 10s);
    const auto boxed = [&] {
        machine.chooseFromTray("sinfo");
        return machine.lastBox();
    };
    const std::string none = "play somethin first fucker";
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'info"), none);
    EXPECT_EQ(boxed(), none);
    machine.owner("'num 1");
    EXPECT_EQ(machine.answer("'info"), "song:  a");
    machine.owner("'next");
    EXPECT_EQ(machine.answer("'info"), "song:  b (<b>.wav</b>)");
    EXPECT_EQ(boxed(), "song:  b");
    machine.state().tempTitle = "disk.mid";
    EXPECT_EQ(machine.answer("'info"), "song:  disk (<b>.mid</b>)");
    EXPECT_EQ(boxed(), "song:  disk");
    machine.state().tempTitle.clear();
    machine.advance(11s);
    EXPECT_EQ(machine.answer("'info"), none);
}

// Only the answer itself breaks the silence, whatever comes in while it is said.
TEST(StatusCommands, LeaveSilentModeAsItIs) {
    VirtualMachine machine({"a.mp3"});
    machine.owner("'silent");
    machine.inMessage("play", [&] { machine.hear("'next"); });
    EXPECT_EQ(machine.answer("'info"), "play somethin first fucker");
    EXPECT_TRUE(machine.state().silnt);
    machine.player.Stop();
    machine.inMessage("play", [&] { machine.hear("'exit"); });
    EXPECT_FALSE(machine.owner("'info"));
    EXPECT_EQ(machine.setting("silent"), "yes");
}

TEST(StatusCommands, TellHowThePlayerStands) {
    VirtualMachine machine({"a.mp3", "b.mp3"});
    machine.owner("'num 1");
    const Lines cases[] = {{"'times", "no", "no", "no"},
                           {"'repeat", "no", "yes", "no"},
                           {"'shuffle", "no", "no", "yes"},
                           {"'cont", "yes", "no", "no"}};
    for (const Lines& c : cases) {
        machine.owner(c[0]);
        const Nanoseconds before = machine.loop.now();
        EXPECT_EQ(machine.answer("'stats"),
                  "directories:  <b>1</b> - files:  <b>2\n"
                  "tempo (speed):  <b>100</b> - volume:  <b>50\ncontinuous:  <b>" +
                      c[1] + "</b> - repeat:  <b>" + c[2] + "</b> - shuffle:  <b>" + c[3]);
        EXPECT_EQ(machine.loop.now() - before, 2 * 300ms);
    }
}

TEST(StatusCommands, TellHowTheProgramStands) {
    VirtualMachine machine({"a.mp3"}, 10s);
    machine.owner("'num 1", 11s);
    const Nanoseconds before = machine.loop.now();
    EXPECT_EQ(machine.answer("'pstat"),
              "load number:  <b>1</b> - files played:  <b>1\n"
              "ascii font:  <b>arial narrow</b> - font:  <b>arial narrow\n"
              "ascii color:  <b>5083A9</b> - font color:  <b>0066BB\n"
              "end ascii font:  <b> </b> - end ascii font color:  <b>");
    EXPECT_EQ(machine.loop.now() - before, 3 * 500ms);
    EXPECT_EQ(machine.answer("'adv"),
              "larkspin player - by moraine\n"
              "<body link=#0066BB><a href=\"https://larkspin.invalid/\"></u>built around "
              "perfection <> download</a>");
    EXPECT_EQ(machine.loop.now() - before, 4 * 500ms);
}

} // namespace larkspin
