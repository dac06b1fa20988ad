// What the machine is, how its drives are filled, how long it has been up, and its power.
#include "outside/byte_units.h"
#include "outside/sysin.h"
#include "support/talk.h"

namespace larkspin {
namespace {

constexpr std::uint64_t mb = 1048576, gb = 1024 * mb;

struct MachineCommandsTest : testing::Test {
    MachineCommandsTest() { machine.start(); }
    // Looks at what there is at that moment, while a command waits.
    void at(std::chrono::duration<double> span, std::function<void()> look) {
        machine.loop.once(std::chrono::round<Nanoseconds>(span), std::move(look));
    }
    // All is read before the first line.
    void expectTwoLines(const std::string& line, const std::string& first,
                        const std::string& second) {
        at(0.29s, [&] {
            EXPECT_SAID(machine, first);
            machine.facts.screen = {};
            machine.facts.drives.clear();
        });
        EXPECT_EQ(machine.answer(line), first + "\n" + second);
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
        EXPECT_EQ(Sysin(version), name) << version.major << "." << version.minor;
}

TEST(ByteUnits, ChooseTheUnitAndRoundAHalfToTheEvenDigit) {
    const std::vector<std::pair<std::uint64_t, std::string>> numbers{
        {0, "<b>0</b> bytes"},
        {1023, "<b>1023</b> bytes"},
        {1024, "<b>1</b> kb"},
        {1536, "<b>1.5</b> kb"},
        {mb - 1, "<b>1024</b> kb"},
        {mb, "<b>1</b> mb"},
        {gb - 1, "<b>1024</b> mb"},
        {gb, "<b>1</b> gb"},
        {gb * 17 / 8, "<b>2.12</b> gb"},
        {gb * 17 / 8 + 1, "<b>2.13</b> gb"},
        {gb * 19 / 8, "<b>2.38</b> gb"},
        {gb + gb / 20, "<b>1.05</b> gb"},
        {UINT64_MAX, "<b>17179869184</b> gb"}};
    for (const auto& [bytes, text] : numbers)
        EXPECT_EQ(readable(bytes), text) << bytes;
    EXPECT_EQ(percentage(2, 3), "66.67");
    EXPECT_EQ(percentage(3, 20000), "0.02") << "a half up to the even digit";
    EXPECT_EQ(percentage(5, 20000), "0.02") << "and down";
    EXPECT_EQ(percentage(UINT64_MAX / 4, UINT64_MAX), "25");
}

TEST_F(MachineCommandsTest, TellInTwoLines) {
    machine.facts.memory = 128 * mb + 1;
    expectTwoLines("'cinfo", "os:  <b>debian gnu/linux 12</b> - ram:  <b>129</b> mb",
                   "resolution:  <b>32</b>bit - <b>1024</b>x<b>768");
    machine.facts.drives["c:\\"] = {40 * gb, 512 * mb};
    expectTwoLines("'free c",
                   "[<b>c:\\</b>] capacity:  <b>40</b> gb - percent free:  [<b>1.25</b>%]",
                   "space used:  <b>39.5</b> gb - free space:  <b>512</b> mb");
    machine.facts.drives["/home"] = {gb, 2 * gb}; // nonsense
    expectTwoLines("'free /home",
                   "[<b>/home</b>] capacity:  <b>1</b> gb - percent free:  [<b>100</b>%]",
                   "space used:  <b>0</b> bytes - free space:  <b>1</b> gb");
}

TEST_F(MachineCommandsTest, BoxInSilentModeAndFromTheTray) {
    machine.facts.memory = 64 * gb;
    machine.facts.up = 400 * 24h + 25h + 3min + 59s; // more than 32 bits hold
    const std::string computer = "[box] operating system:  debian gnu/linux 12 - ram:  65536 mb, "
                                 "display:  32bit - 1024x768";
    const std::string uptime = "[box] windows uptime:  401 days, 1 hours, 3 minutes";
    EXPECT_EQ(machine.answer("'ut"),
              "windows uptime:  <b>401</b> days, <b>1</b> hrs, <b>3</b> mins");
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("pcinf"); }), computer);
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("winup"); }), uptime);
    machine.owner("'silent");
    converse(machine,
             {{"'cinfo", computer},
              {"'ut", uptime},
              {"'free c", "[box] use your damn computer to figure that shit out in silent mode"}});
}

TEST_F(MachineCommandsTest, NameAnExampleForWhatIsNoDriveWithSpace) {
    machine.facts.drives["d:\\"] = {0, 0};
    const std::string odd[] = {"q", "d", "", "\xFF", {"\0", 1}, std::string(100000, 'c'), "c:\\no"};
    for (const auto& drive : odd)
        EXPECT_EQ(machine.answer("'free " + drive), "invalid, use this example:  <b>c:\\");
    machine.facts.drives["/nas"] = {.isUnanswered = true};
    EXPECT_EQ(machine.answer("'free /nas"), "the disk doesn't answer:  <b>/nas");
}

TEST_F(MachineCommandsTest, OrderPowerTwiceEightSecondsApart) {
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

} // namespace
} // namespace larkspin
