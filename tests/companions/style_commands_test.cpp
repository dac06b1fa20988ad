#include "support/talk.h"

namespace larkspin {

static const struct {
    std::string line, key, value, said;
} commands[] = {
    {"'ac 1A2b3C", "ascii color", "1A2b3C", "ascii color set"},
    {"'fc no color", "font color", "no color", "font color set"},
    {"'font   B \"b\" ", "font", "B \"b\"", "font style set"},
    {"'AF \"A\"", "afont", "\"A\"", "ascii font style set"},
    {"'ascii [Lks] =;", "ascii", "[Lks] =;", "ascii set"},
    {"'ec 445566", "eascii color", "445566", "end ascii color set"},
    {"'ef E", "efont", "E", "end ascii font style set"},
    {"'eascii \u00AC<<", "eascii", "\u00AC<<", "end ascii set"},
};

TEST(StyleCommands, ShowFromTheirOwnConfirmationOn) {
    VirtualMachine machine(Lines{});
    for (const auto& [line, key, value, said] : commands) {
        machine.owner(line);
        EXPECT_EQ(machine.setting(key), value);
        EXPECT_NE(machine.said().find(value), std::string::npos) << line;
        EXPECT_NE(machine.said().find(">" + said + "</b>"), std::string::npos) << line;
    }
    EXPECT_SAID(machine,
                "</html><font face=\"\"A\"\" color=#1A2b3C>[Lks] =; <font face=\"B \"b\"\" "
                "color=#no color>end ascii set</b><font face=\"E\" color=#445566> \u00AC<<");
    for (const auto& command : commands)
        machine.owner(command.line.substr(0, command.line.find(' ') + 1));
    machine.owner("'ver");
    EXPECT_SAID(machine, "version 4.3.11 - december 19, 2003");
    machine.owner("'silent");
    for (const auto& command : commands)
        EXPECT_EQ(machine.answer(command.line), "[box] you are in silent mode");
    EXPECT_EQ(machine.setting("ascii"), "");
}

TEST(StyleCommands, KeepALineOneLineWhateverTheSettingsHold) {
    VirtualMachine machine(Lines{});
    const std::string odd("a\rb\vc\fd\0e\x1B\t<", 12);
    machine.writeDataFile("larkspin.ini", "[lark]\nascii=" + odd + "\nefont=" + odd + "\n");
    machine.owner("'stop");
    EXPECT_SAID(machine, "</html><font face=\"arial narrow\" color=#5083A9>a b c d e\x1B\t< <font "
                         "face=\"arial narrow\" color=#0066BB>larkspin player [stopped]</b><font "
                         "face=\"a b c d e\x1B\t<\" color=#> ");
}

} // namespace larkspin
