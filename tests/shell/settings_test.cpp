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
    const struct {
        std::string before, key, value, after;
    } cases[] = {
        {"", "play", "Ride.mp3", "[lark]\r\nplay=Ride.mp3\r\n"},
        {"[lark]\nload=3", "play", "x", "[lark]\nload=3\r\nplay=x\r\n"},
        {"[LARK]\r\n Play = a \r\nload=3\r\n", "Play", "b", "[LARK]\r\nPlay=b\r\nload=3\r\n"},
        {"; mine\n[other]\nplay=1\n\n[lark]\nodd\nplay=2\nplay=3\n\n[lark]\nplay=4", "play", "x",
         "; mine\n[other]\nplay=1\n\n[lark]\nodd\nplay=x\r\nplay=3\n\n[lark]\nplay=4"},
        {"[lark]\na=1\n\n\n[other]\nb=2\n", "b", "x", "[lark]\na=1\nb=x\r\n\n\n[other]\nb=2\n"},
        {"\x7F\0[\xFF]\r\n[lark\r[lark"s, "a", "x",
         "\x7F\0[\xFF]\r\n[lark\r[lark\r\n[lark]\r\na=x\r\n"s},
        {"", "a=b.mp3", "3", "[lark]\r\na=3\r\n"},
        {"", "[x] Ä.mp3", "3", "[lark]\r\n[x] Ä.mp3=3\r\n"},
        {"", "ascii", "a\r\n[other]\nb=\0"s, "[lark]\r\nascii=a  [other] b=\r\n"},
        {"as it is", "=", "x", "as it is"},
    };
    for (const auto& [before, key, value, after] : cases) {
        machine.writeDataFile("larkspin.ini", before);
        settings.put(key, "first");
        settings.put(key, value);
        EXPECT_EQ(machine.dataFile("larkspin.ini"), after) << before << key;
    }
}

TEST_F(SettingsTest, ReadsTheFirstFitWithoutRegardToCase) {
    machine.writeDataFile("larkspin.ini", "[x]\nb=0\n[ Lark ]\r\nB= = 1 [\t\r\nb=2\nÄ=ja\nefont= \n"
                                          "=no\nbare\n[z]\n[lark]\nc=3\n[lark\nd=4");
    EXPECT_EQ(settings.get("b") + settings.get("ä"), "= 1 [ja");
    for (const char* key : {"EFONT", "bare", "c", "d", "x"})
        EXPECT_EQ(settings.get(key), "") << key;
    settings.put("Long", "ä" + std::string(800, 'x'));
    EXPECT_EQ(settings.get("long"), "ä" + std::string(748, 'x'));
}

TEST_F(SettingsTest, WhatCantBeReadOrWrittenStaysAsItIs) {
    const fs::path file = machine.disk.path() / "data" / "larkspin.ini";
    settings.put("load", "4");
    EXPECT_FALSE(fs::exists(file.parent_path()) || !settings.get("load").empty());
    machine.writeDataFile("larkspin.ini", "[lark]\r\nload=3\r\n");
    machine.files.full = true;
    settings.put("load", "4");
    EXPECT_EQ(settings.get("load"), "3");
    machine.files.full = false;
    fs::resize_file(file, 65 << 20); // too large to be ours
    settings.put("load", "4");
    EXPECT_EQ(fs::file_size(file), std::uintmax_t{65 << 20});
    fs::remove(file);
    fs::create_directories(file);
    settings.put("load", "4");
    EXPECT_TRUE(fs::is_directory(file));
}

} // namespace
} // namespace larkspin
