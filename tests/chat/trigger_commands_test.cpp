#include "support/talk.h"
#include "text/fold.h"

namespace larkspin {

TEST(TriggerCommands, TakeOneOfFiveCharactersOrNone) {
    VirtualMachine machine(Lines{});
    converse(machine,
             {Turn({"'trig ab", "'trig *", "'trig None", "'trig ", "'trig  .", "'trig . "},
                   "that trigger is retarded, choose another"),
              Turn("'TRIG .", "new trigger:  ."), Turn({"'stop", ".trig?"}, ""),
              Turn("'TRIG?", "your trigger is ."), Turn(".trig -", "new trigger:  -"),
              Turn("-trig `", "new trigger:  `"), Turn("`trig ,", "new trigger:  ,"),
              Turn(",trig none", "new trigger:  none"), Turn({",stop", "no", "trig?"}, ""),
              Turn("end", "repeating session ended"), Turn("'trig?", "your trigger is disabled"),
              Turn("silent", "silent mode - <b>on"), Turn("trig '", "[box] you are in silent mode"),
              Turn("'trig?", "[box] your trigger is "), Turn("silentoff", "silent mode - <b>off"),
              Turn("trig '", "new trigger:  '")});
}

TEST(TriggerCommands, LiveWithWhateverIsStored) {
    const std::string set = "tempo set to <b>70</b> (slow)", stupid = "can you be more stupid?";
    const Lines cases[] = {{"", "tempo 70", set}, // stored, said, answered
                           {"*", "*tempo 70", set},
                           {"*", "*font ", "font style set"}, // each reply holds the word
                           {"*", "any tempo 70", stupid},
                           {"ab", "aBtempo 70", set},
                           {"AB", "ABtempo 70", set},
                           {"\u00E4", "\u00C4tempo 70", set}};
    for (const Lines& c : cases) {
        SCOPED_TRACE(c[0] + " / " + c[1]);
        VirtualMachine machine;
        machine.writeDataFile("larkspin.ini", "[lark]\r\nload=3\r\ntrigger=" + c[0] + "\r\n");
        machine.start();
        EXPECT_EQ(machine.answer(c[1]), c[2]);
        EXPECT_EQ(machine.answer("'Trig?"),
                  "your trigger is " + (c[0] == "" ? "disabled" : foldCase(c[0])));
    }
}

} // namespace larkspin
