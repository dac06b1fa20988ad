#include "playback/time_forms.h"
#include "support/talk.h"

namespace larkspin {

TEST(Position, MovesTheSongOrSaysWhyNot) {
    VirtualMachine machine({"ride.mp3"}, 180s);
    machine.owner("'num 1");
    const std::string nonsense = "stop acting gay and lame", again = "um no, retard, try again",
                      behind = "thats foo far behind, you dumb bastard";
    const std::tuple<Lines, std::string, double> cases[] = {
        {{"'pos 1:05"}, "set position to <b>1:05", 65},
        {{"'pos 1:5", "'pos 1:", "'pos 1:\u0663"}, again, 65},
        {{"'pos 90", "'pos "}, "you must be stupider than you look", 65},
        {{"'pos 1:60", "'pos 1:-5", "'pos -1:05", "'pos  -1:05", "'pos 1:1.5", "'pos 1e0:00",
          "'pos 0x1:00", "'pos :30", "'pos 1:30:10"},
         nonsense,
         65},
        {{"'pos 3:01", "'pos 99999999999999999999:00"}, "thats too far forward, you faggot", 65},
        {{"'pos 1:005"}, "set position to <b>1:005", 65},
        {{"'POS  2 :00"}, "set position to <b> 2 :00", 120},
        {{"'fwd 10.5", "'fwd -3", "'fwd -0", "'fwd ", "'fwd 1e1", "'rew 10.5", "'rew 0x10",
          "'rew \u0663", "'rew -1"},
         nonsense,
         120},
        {{"'fwd 10"}, "fast forwarded <b>10</b> seconds", 130},
        {{"'fwd  7 "}, "fast forwarded <b> 7 </b> seconds", 137},
        {{"'fwd 181", "'fwd 99999999999999999999"}, "thats foo far ahead, you dumb bastard", 137},
        {{"'rew 138", "'rew 99999999999999999999"}, behind, 137},
        {{"'rew 127"}, "rewinded <b>127</b> seconds", 10},
        {{"'rew 30"}, behind, 10},
        {{"'fwd 180"}, "fast forwarded <b>180</b> seconds", 180},
        {{"'pos 3:00"}, "set position to <b>3:00", 180}};
    for (const auto& [lines, answer, position] : cases) {
        converse(machine, {Turn(lines, answer)});
        EXPECT_DOUBLE_EQ(machine.player.CurrentPosition(), position) << lines[0];
    }
}

TEST(Position, IsToldInTheRoomAndInSilence) {
    VirtualMachine machine({"ride.mp3"}, 187s);
    const std::string nothing = "song position:  <b>0</b>:<b>00</b> / <b>0</b>:<b>00";
    converse(
        machine,
        {Turn("'len", "song length:  <b>0</b>:<b>00"), Turn("'pos", nothing),
         Turn("'num 1", "playing:  <b>1</b>.  ride", 69s),
         Turn("'len", "song length:  <b>3</b>:<b>07"),
         Turn("'pos", "song position:  <b>1</b>:<b>09 / <b>3</b>:<b>07"),
         Turn("'silent", "silent mode - <b>on"), Turn("'len", "[box] song length:  3:07"),
         Turn("'pos", "[box] current position:  1:09 / 3:07"),
         Turn("'pos 0:30", "[box] use the position bar on the mp3s window to seek in silent mode"),
         Turn("'fwd 10",
              "[box] use the position bar on the mp3s window to fast forward in silent mode"),
         Turn("'rew 10", "[box] use the position bar on the mp3s window to rewind in silent mode"),
         Turn("'pos", "[box] current position:  1:09 / 3:07"), Turn("'stop", ""),
         Turn("'len", "[box] song length:  0:00"), Turn("'silentoff", "silent mode - <b>off"),
         Turn("'pos", nothing)});
}

TEST(TimeForms, CutMinutesAndRoundMilliseconds) {
    VirtualLoop loop;
    SilentPlayer player(loop);
    const std::tuple<double, const char*, const char*> cases[] = {
        {9, "0:09", "<b>0</b>:<b>09"},       {10, "0:10", "<b>0</b>:<b>10"},
        {59.9994, "0:59", "<b>0</b>:<b>59"}, {59.9996, "0:00", "<b>0</b>:<b>00"},
        {61.9996, "1:02", "<b>1</b>:<b>02"}, {5400, "90:00", "<b>90</b>:<b>00"},
    };
    for (const auto& [seconds, plain, rich] : cases) {
        player.lengths["song"] = seconds;
        player.Open("song");
        EXPECT_EQ(plainlength(player), plain);
        EXPECT_EQ(richlength(player), rich);
    }
}

} // namespace larkspin
