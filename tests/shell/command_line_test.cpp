#include "shell/command_line.h"
#include "shell/media_types.h"

#include <fstream>
#include <gtest/gtest.h>

namespace larkspin {

using Arguments = std::vector<std::string>;
using Wish = CommandLine::Wish;

TEST(CommandLine, TellsFilesFromOptions) {
    const struct {
        Arguments given;
        Wish wish;
        Arguments files, display;
        std::string unknown = {};
        Arguments presses = {};
    } cases[] = {
        {{}, Wish::run, {}, {}},
        {{"a.mp3", "Music/"}, Wish::run, {"a.mp3", "Music/"}, {}},
        {{"a", "--", "-b", "--help", "--"}, Wish::run, {"a", "-b", "--help", "--"}, {}},
        {{"a", "--help"}, Wish::help, {"a"}, {}},
        {{"--version"}, Wish::version, {}, {}},
        {{"--loud", "--help"}, Wish::unknown, {}, {}, "--loud"},
        {{"-"}, Wish::unknown, {}, {}, "-"},
        {{"-session", "7_8", "a"}, Wish::run, {"a"}, {"-session", "7_8"}},
        {{"-session=7", "a", "-flat"}, Wish::run, {"a"}, {"-session=7", "-flat"}},
        {{"-session"}, Wish::run, {}, {"-session"}},
        {{"-sess"}, Wish::unknown, {}, {}, "-sess"},
        {{"--next", "a", "--play-pause"}, Wish::run, {"a"}, {}, "", {"next", "play-pause"}},
    };
    const DisplayOption options[] = {{"-session", true}, {"-flat"}};
    for (const auto& [given, wish, files, display, unknown, presses] : cases) {
        const CommandLine line = readCommandLine(given, options);
        EXPECT_EQ(line.wish, wish) << testing::PrintToString(given);
        EXPECT_EQ(line.files, files);
        EXPECT_EQ(line.display, display);
        EXPECT_EQ(line.unknown, unknown);
        EXPECT_EQ(line.presses, presses);
    }
}

TEST(DesktopEntry, OpensAllThatCanBePlayedAndDirectories) {
    std::ifstream entry(LARKSPIN_DESKTOP_ENTRY);
    std::string line, types;
    bool takesFiles = false;
    while (std::getline(entry, line)) {
        takesFiles = takesFiles || line == "Exec=larkspin %U";
        if (line.starts_with("MimeType="))
            types = line.substr(line.find('=') + 1);
    }
    std::string known;
    for (const std::string& type : desktopMediaTypes())
        known += type + ';';
    EXPECT_TRUE(takesFiles);
    EXPECT_EQ(types, known + "inode/directory;");
}

} // namespace larkspin
