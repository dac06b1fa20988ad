#include "support/talk.h"

namespace larkspin {

TEST(Reply, IsStyledByTheSettingsOfTheMoment) {
    VirtualMachine machine(Lines{});
    machine.owner("'volume 0");
    EXPECT_EQ(machine.room.lines.back(),
              "</html><font face=\"arial narrow\" color=#5083A9>'\u00AClks - <font face=\"arial "
              "narrow\" color=#0066BB>volume set:  <b>0</b> (mute)</b><font face=\" \" color=#> ");
    machine.writeDataFile("larkspin.ini",
                          "[lark]\nafont=A\nascii color=112233\nascii=<<\nfont=B \"b\"\n"
                          "font color= 44 \neascii=>>\nefont= \neascii color=55\n");
    machine.owner("'stop");
    EXPECT_EQ(machine.room.lines.back(),
              "</html><font face=\"A\" color=#112233><< <font face=\"B \"b\"\" color=#44>larkspin "
              "player [stopped]</b><font face=\" \" color=#55> >>");
}

TEST(Reply, LeaksNothingIntoTheRoomInSilentMode) {
    VirtualMachine machine({"a1.mp3", "a2.mp3", "b.mp3"});
    const std::string ops = " in silent mode, go to player ops in the system tray menu";
    converse(machine,
             {Turn("'silentoff", "silent mode - <b>off"), Turn("'silent", "silent mode - <b>on"),
              Turn("'silent", "[box] silent is already enabled"),
              Turn("'repeat", "[box] to use repeat" + ops),
              Turn("'shuffle", "[box] to use shuffle" + ops),
              Turn("'cont", "[box] to use continuous" + ops),
              Turn({"'repeatoff", "'soff", "'contoff", "'trig ab", "'filter wav"},
                   "[box] you are in silent mode"),
              Turn({"'scan c:\\", "'listadd a"}, "[box] scanning"),
              Turn("'trig?", "[box] your trigger is '"),
              Turn("'filter?", "[box] current media filter:  mp3"),
              Turn("'play", "[box] nothing to play, fag"),
              Turn({"'play zzz", "'rnd zzz"}, "[box] your gay song was not found"),
              Turn({"'num 99", "'transfer", "'scanpc", "'tempo x", "'tempo 50", "'volume 7"}, ""),
              Turn({"'num 3", "'next", "'pre", "'rnd", "'rnd a", "'play b", "'play"}, ""),
              Turn({"'pause", "'pause", "'resume", "'resume", "'play a", "'pause", "'stop"}, "")});
    EXPECT_EQ(machine.player.opened.size(), 7u);
    EXPECT_EQ(machine.player.rate, 0.5);
    EXPECT_EQ(machine.state().commandsTitle, "             double click a choice to play");
    EXPECT_EQ(machine.state().pauseMark, "  II");
    EXPECT_EQ(machine.answer("'exit"), "");
    EXPECT_EQ(machine.setting("silent"), "yes");
}

TEST(Reply, NamesSongsAsTheyAreSeenAndTakesNoneForMarkup) {
    VirtualMachine machine({"<b>who?|<3 \".mp3"});
    EXPECT_EQ(machine.answer("'play <B>WHO?|"),
              "playing:  <b>1</b>.  <b><u><\u200CB>WHO?|</b></u><3 \"");
}

TEST(Reply, VanishesWithoutARoom) {
    VirtualMachine machine({"ride.mp3"}, 10s);
    machine.room.open = false;
    converse(machine, {Turn({"'repeat", "'rnd"}, "", 25s), Turn({"'rnd zzz", "'filter wav"}, "")});
    EXPECT_EQ(machine.setting("played"), "2");
    machine.room.open = true;
    EXPECT_EQ(machine.answer("'filter?"), "current media filter:  <b>wav</b> (<b>*.wav</b>)");
}

} // namespace larkspin
