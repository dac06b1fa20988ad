#include "shell/settings.h"

#include "support/talk.h"

namespace larkspin {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

struct SettingsTest : testing::Test {
    VirtualMachine machine;
    Settings settings{machine.files, DataDirectory(machine.drive("data"))};
};

TEST_F(SettingsTest, WritesOneLineAndKeepsAllOthers) {
    const std::array<std::string, 4> cases[] = {
        {"", "play", "Ride.mp3", "[lark]\r\nplay=Ride.mp3\r\n"},
        {"[lark]\nload=3", "play", "x", "[lark]\nload=3\r\nplay=x\r\n"},
        {"[LARK]\r\n Play = a \r\nload=3\r\n", "Play", "b", "[LARK]\r\nPlay=b\r\nload=3\r\n"},
        {"; mine\n[other]\nplay=1\n\n[lark]\nodd\nplay=2\nplay=3\n\n[lark]\nplay=4", "play", "x",
         "; mine\n[other]\nplay=1\n\n[lark]\nodd\nplay=x\r\nplay=3\n\n[lark]\nplay=4"},
        {"[lark]\na=1\n\n\n[other]\nb=2\n", "b", "x", "[lark]\na=1\nb=x\r\n\n\n[other]\nb=2\n"},
        {"\xEF\xBB\xBF[lark]\r\na=1\r\n", "A", "x", "\xEF\xBB\xBF[lark]\r\nA=x\r\n"},
        {"[lark] ; a=2\na=1\n[x] more\na=3\n", "b", "x",
         "[lark] ; a=2\na=1\nb=x\r\n[x] more\na=3\n"},
        {"\x7F\0[\xFF]\r\n[lark\r[lark"s, "a", "x",
         "\x7F\0[\xFF]\r\n[lark\r[lark\r\n[lark]\r\na=x\r\n"s},
        {"", "a=b.mp3", "3", "[lark]\r\na=3\r\n"},
        {"", "[x] Ä.mp3", "3", "[lark]\r\n[x] Ä.mp3=3\r\n"},
        {"", "ascii", "a\r\n[other]\nb=\0"s, "[lark]\r\nascii=a  [other] b=\r\n"},
        {"as it is", "=", "x", "as it is"},
        {"[lark]\n", "[x] ; Ä.mp3", "3", "[lark]\n"},
    };
    for (const auto& [before, key, value, after] : cases) {
        machine.writeDataFile("larkspin.ini", before);
        settings.put(key, "first");
        settings.put(key, value);
        EXPECT_EQ(machine.dataFile("larkspin.ini"), after) << before << key;
    }
}

TEST_F(SettingsTest, ReadsTheFirstFitWithoutRegardToCase) {
    machine.writeDataFile("larkspin.ini",
                          "[x]\nb=0\n[ Lark ] mine\r\nB= = 1 [\t\r\nb=2\nÄ=ja\n"
                          "efont= \n=no\nbare\n[LARK]\ne=5\n[z]\n[lark]\nc=3\n[lark\nd=4");
    const StoredSettings all = settings.all();
    const std::pair<const char*, const char*> cases[] = {{"b", "= 1 ["}, {"ä", "ja"},  {"e", "5"},
                                                         {"EFONT", ""},  {"bare", ""}, {"c", ""},
                                                         {"d", ""},      {"x", ""},    {"", ""}};
    for (const auto& [key, value] : cases) {
        EXPECT_EQ(settings.get(key), value) << key;
        EXPECT_EQ(all.get(key), value) << key;
    }
    settings.put("Long", "ä" + std::string(800, 'x'));
    EXPECT_EQ(settings.get("long"), "ä" + std::string(748, 'x'));
    EXPECT_EQ(settings.all().get("long"), "ä" + std::string(748, 'x'));
}

TEST_F(SettingsTest, TakesAKeyOutWithItsValue) {
    const std::array<std::string, 3> cases[] = {
        {"[x]\na=1\n[lark] ;\nA = 1\r\n; a\nb=2\na=3", "a", "[x]\na=1\n[lark] ;\n; a\nb=2\n"},
        {"[lark]\r\nload=1\r\n[x]\r\na=1", "a", "[lark]\r\nload=1\r\n[x]\r\na=1"},
        {"[lark]\nRide=live.mp3=2\n", "ride=x", "[lark]\n"},
        {"[lark]\n=1\n", "", "[lark]\n=1\n"},
        {"", "a", ""},
    };
    for (const auto& [before, key, after] : cases) {
        machine.writeDataFile("larkspin.ini", before);
        settings.removeini("Lark", key, machine.drive("data/larkspin.ini"));
        EXPECT_EQ(machine.dataFile("larkspin.ini"), after) << before << key;
    }
}

TEST_F(SettingsTest, WritesSeveralKeysInOneReplacement) {
    machine.writeDataFile("larkspin.ini", "[lark]\r\nb=1\r\n");
    settings.putAll({{"a", "1"}, {"B", "2"}, {"", "3"}, {"a", "4"}});
    EXPECT_EQ(machine.dataFile("larkspin.ini"), "[lark]\r\nB=2\r\na=4\r\n");
    settings.putAll({{"a", "4"}});
    EXPECT_EQ(machine.files.writes, 1) << "what stays the same needs no write";
    EXPECT_EQ(machine.files.reads, 2);
    settings.putini("lark", "", "1", machine.drive("data/other.ini"));
    EXPECT_FALSE(fs::exists(machine.disk.path() / "data/other.ini"));
}

TEST_F(SettingsTest, WhatCantBeReadOrWrittenStaysAsItIs) {
    const fs::path file = machine.disk.path() / "data" / "larkspin.ini";
    settings.put("load", "4");
    EXPECT_FALSE(fs::exists(file.parent_path()));
    EXPECT_EQ(settings.get("load"), "");
    machine.writeDataFile("larkspin.ini", "[lark]\r\nload=3\r\n");
    machine.files.full = true;
    settings.put("load", "4");
    EXPECT_EQ(settings.get("load"), "3");
    machine.files.full = false;
    fs::resize_file(file, (1 << 20) + 1); // too large to be ours
    settings.put("load", "4");
    EXPECT_EQ(fs::file_size(file), std::uintmax_t{(1 << 20) + 1});
    EXPECT_EQ(settings.get("load"), "");
    fs::remove(file);
    fs::create_directories(file);
    settings.put("load", "4");
    EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(SettingsTest, AKeyThatCouldNotBeReadIsNotWrittenUntilItIs) {
    const std::string counts = machine.drive("data/played.ini");
    machine.writeDataFile("played.ini", "[times played]\r\na.mp3=41\r\n");
    machine.files.unreadable = true;
    EXPECT_EQ(settings.getini("times played", "a.mp3", counts), "");
    settings.putini("times played", "b.mp3", "1", counts);
    machine.files.unreadable = false;
    settings.putini("times played", "A.mp3", "1", counts);
    settings.removeini("times played", "a.mp3", counts);
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=41\r\n");
    EXPECT_EQ(settings.getini("times played", "a.mp3", counts), "41");
    settings.putini("times played", "a.mp3", "42", counts);
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=42\r\n");
}

TEST_F(SettingsTest, AStartThatCouldNotReadThemLeavesThemAlone) {
    const std::string stored = "[lark]\r\nload=41\r\nplay=a.mp3\r\n";
    machine.writeDataFile("larkspin.ini", stored);
    machine.files.unreadable = true;
    EXPECT_EQ(settings.all().get("load"), "");
    machine.files.unreadable = false;
    EXPECT_EQ(settings.get("play"), "");
    settings.put("load", "2");
    settings.putAll({{"load", "2"}, {"tempo", "100"}});
    settings.removeini("lark", "play", machine.drive("data/larkspin.ini"));
    EXPECT_EQ(machine.dataFile("larkspin.ini"), stored);
    EXPECT_EQ(settings.all().get("load"), "41");
    settings.put("load", "42");
    EXPECT_EQ(machine.setting("load"), "42");
}

} // namespace
} // namespace larkspin
