// What the machine is, how its drives are filled, how long it has been up, and its power.
#include "outside/byte_units.h"
#include "outside/sysin.h"
#include "support/talk.h"

namespace larkspin {
namespace {

constexpr std::uint64_t mb = 1048576, gb = 1024 * mb;
constexpr auto example = "invalid, use this example:  <b>c:\\";

struct MachineCommandsTest : testing::Test {
    MachineCommandsTest() { machine.start(); }
    // Looks at what there is by then, while a command waits.
    void at(std::chrono::duration<double> span, std::function<void()> look) {
        machine.loop.once(std::chrono::round<Nanoseconds>(span), std::move(look));
    }
    VirtualMachine machine;
};

TEST(Sysin, NamesEachVersion) {
    const std::vector<std::pair<WindowsVersion, std::string>> names{
        {{2, 5, 0}, "windows 2000"},  {{2, 5, 1}, "windows xp"},       {{2, 10, 0}, "windows 2000"},
        {{2, 4, 9}, "windows nt 4"},  {{2, 3, 51}, "windows nt 3.5x"}, {{2, 2, 0}, "windows nt"},
        {{1, 3, 11}, "windows 3.11"}, {{1, 4, 0}, "windows 95"},       {{1, 4, 10}, "windows 98"},
        {{1, 4, 90}, "windows me"},   {{1, 4, 1}, "windows 9x"},       {{1, 5, 0}, "windows xp"},
        {{1, 6, 0}, "unknown"},       {{0, 2, 0}, "unknown"}};
    for (const auto& [version, name] : names)
        EXPECT_EQ(sysin(version), name)
            << version.platform << " " << version.major << "." << version.minor;
}

TEST(ByteUnits, ChoosesTheUnitAndRoundsAHalfToTheEvenDigit) {
    const std::vector<std::tuple<std::uint64_t, std::string, std::string>> numbers{
        {0, "0", "bytes"},
        {1023, "1023", "bytes"},
        {1024, "1", "kb"},
        {1536, "1.5", "kb"},
        {mb - 1, "1024", "kb"},
        {mb, "1", "mb"},
        {gb - 1, "1024", "mb"},
        {gb, "1", "gb"},
        {gb * 17 / 8, "2.12", "gb"},
        {gb * 17 / 8 + 1, "2.13", "gb"},
        {gb * 19 / 8, "2.38", "gb"},
        {gb + gb / 20, "1.05", "gb"},
        {UINT64_MAX, "17179869184", "gb"}};
    for (const auto& [bytes, number, unit] : numbers) {
        EXPECT_EQ(readable(bytes).number, number) << bytes;
        EXPECT_EQ(readable(bytes).unit, unit) << bytes;
    }
}

TEST(ByteUnits, TellsAShareExactly) {
    const std::vector<std::tuple<std::uint64_t, std::uint64_t, std::string>> shares{
        {0, 7, "0"},
        {2, 3, "66.67"},
        {1, 20000, "0"},
        {3, 20000, "0.02"},
        {5, 20000, "0.02"},
        {1, 1, "100"},
        {UINT64_MAX / 4, UINT64_MAX, "25"}};
    for (const auto& [part, whole, text] : shares)
        EXPECT_EQ(percentage(part, whole), text) << part << " of " << whole;
}

TEST_F(MachineCommandsTest, TellsTheComputerInTwoLinesReadAtOnce) {
    const Lines lines{"os:  <b>debian gnu/linux 12</b> - ram:  <b>129</b> mb",
                      "resolution:  <b>32</b>bit - <b>1024</b>x<b>768"};
    machine.facts.memory = 128 * mb + 1;
    at(0.29s, [&] {
        EXPECT_SAID(machine, lines[0]);
        machine.facts.screen = {};
    });
    machine.forget();
    machine.owner("'cinfo");
    EXPECT_EQ(machine.allSaid(), lines);
}

TEST_F(MachineCommandsTest, BoxesTheComputerInSilentModeAndFromTheTray) {
    const std::string box = "[box] operating system:  debian gnu/linux 12 - ram:  65536 mb, "
                            "display:  32bit - 1024x768";
    machine.facts.memory = 64 * gb;
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("pcinf"); }), box);
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'cinfo"), box);
}

TEST_F(MachineCommandsTest, TellsTheUptime) {
    machine.facts.up = 25h + 3min + 59s;
    const std::string box = "[box] windows uptime:  1 days, 1 hours, 3 minutes";
    EXPECT_EQ(machine.answer("'ut"), "windows uptime:  <b>1</b> days, <b>1</b> hrs, <b>3</b> mins");
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("winup"); }), box);
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'ut"), box);
    machine.facts.up = std::chrono::days(400); // more than 32 bits hold
    EXPECT_EQ(machine.answer("'ut"), "[box] windows uptime:  400 days, 0 hours, 0 minutes");
}

TEST_F(MachineCommandsTest, TellsTheSpaceOfADrive) {
    auto& drives = machine.facts.drives;
    drives["c:\\"] = {40 * gb, 512 * mb};
    const Lines lines{"[<b>c:\\</b>] capacity:  <b>40</b> gb - percent free:  [<b>1.25</b>%]",
                      "space used:  <b>39.5</b> gb - free space:  <b>512</b> mb"};
    at(0.29s, [&] {
        EXPECT_SAID(machine, lines[0]);
        drives.clear();
    });
    machine.forget();
    machine.owner("'free c");
    EXPECT_EQ(machine.allSaid(), lines);
    drives["/home"] = {gb, 2 * gb}; // nonsense
    EXPECT_EQ(machine.answer("'free /home"),
              "[<b>/home</b>] capacity:  <b>1</b> gb - percent free:  [<b>100</b>%]\n"
              "space used:  <b>0</b> bytes - free space:  <b>1</b> gb");
}

TEST_F(MachineCommandsTest, NamesAnExampleForWhatIsNoDriveWithSpace) {
    machine.facts.drives["d:\\"] = {0, 0};
    const auto odd = {std::string("q"),     std::string("d"),     std::string(),
                      std::string("\xFF"),  std::string("\0", 1), std::string(100000, 'c'),
                      std::string("c:\\no")};
    for (const auto& drive : odd) {
        EXPECT_EQ(machine.answer("'free " + drive), example) << drive.substr(0, 20);
    }
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'free c"),
              "[box] use your damn computer to figure that shit out in silent mode");
}

TEST_F(MachineCommandsTest, OrdersPowerTwiceEightSecondsApart) {
    struct Order {
        std::string line, entry, order, said;
    };
    auto& asked = machine.power.asked;
    for (const auto& word : {Order{"'rstart", "rstarts", "restart", "restarting computer..."},
                             Order{"'sdown", "shdown", "shut down", "shutting down computer..."}}) {
        asked.clear();
        at(7.9s, [&] { EXPECT_EQ(asked, Lines{word.order}); });
        EXPECT_EQ(machine.answer(word.line), word.said);
        EXPECT_EQ(asked, Lines(2, word.order));
        machine.owner("'silent");
        EXPECT_EQ(machine.answer(word.line), "");
        EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray(word.entry); }), "");
        EXPECT_EQ(asked, Lines(6, word.order));
        machine.owner("'silentoff");
    }
}

TEST_F(MachineCommandsTest, NothingOfTheseOutlivesTheRun) {
    machine.facts.drives["c:\\"] = {gb, mb};
    for (const std::string line : {"'rstart", "'cinfo", "'free c"}) {
        std::string before;
        at(0.1s, [&] {
            before = machine.said();
            machine.chooseFromTray("rstartp");
            machine.forget();
        });
        machine.owner(line, 20s);
        EXPECT_NE(before, "") << line;
        EXPECT_EQ(machine.allSaid(), Lines{}) << line;
    }
    EXPECT_EQ(machine.power.asked, Lines{"restart"});
}

} // namespace
} // namespace larkspin
