// The owner's preferences: by their words and by their setters, and what stays of them.
#include "host/preferences.h"
#include "platform/posix/drive_paths.h"
#include "support/temp_directory.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>
#include <optional>

namespace larkspin {
namespace {

class PreferencesTest : public testing::Test {
protected:
    PreferencesTest() { begin(); }

    void begin() { // a run
        words.emplace([this](const std::string& text) { told = "! " + text; });
        if (preferences)
            preferences->keep(); // at the end of the one before
        preferences.emplace(loop, files, directory,
                            [this](const std::string& text) { told = text; });
        preferences->lookIn(
            {.music = "c:\\desk", .find = [](std::string_view typed) -> std::optional<std::string> {
                 if (typed == "~/there")
                     return "c:\\home\\jo\\there";
                 return std::nullopt;
             }});
        words->add(preferences->words());
    }
    std::string typed(const std::string& line) {
        told.clear();
        words->run(line);
        return told;
    }

    TempDirectory disk;
    PosixFiles real{Wastebasket{}};
    Trace trace;
    const DataDirectory directory{drivePath(disk.path().native())};
    KeptFiles files{real, directory, trace};
    VirtualLoop loop;
    std::optional<SlashWords> words;
    std::optional<Preferences> preferences;
    std::string told;
};

// The words, and what they tell then and after the next start.
TEST_F(PreferencesTest, AreToldSetAndKeptByTheirWords) {
    const std::string text = "the text of the room's window has ", room = "the room has ",
                      closing = "closing the room's window ",
                      stamps = "lines show when they were said",
                      noStamps = "lines don't show when they were said",
                      calls = "you are told what is said to you while you are elsewhere",
                      noCalls = "you aren't told what is said to you while you are elsewhere";
    struct Case {
        std::string line, answer;
    };
    const Case cases[] = {
        {"/stamps", stamps},
        {"/stamps  OFF ", noStamps},
        {"/stamps maybe", "! /stamps [on|off]"},
        {"/stamps on off", "! /stamps [on|off]"},
        {"/namecolours", "all names have one colour"},
        {"/namecolours on", "each name has a colour of its own"},
        {"/notifications", calls},
        {"/notifications off", noCalls},
        {"/textsize", text + "100 %"},
        {"/textsize +", text + "110 %"},
        {"/textsize 50%", text + "50 %"},
        {"/textsize -", text + "50 %"},
        {"/textsize 295", text + "295 %"},
        {"/textsize +", text + "300 %"},
        {"/textsize 301", "! /textsize [PERCENT|+|-]"},
        {"/textsize 1 2", "! /textsize [PERCENT|+|-]"},
        {"/colours", room + "larkspin's colours"},
        {"/colors Light", room + "light colours"},
        {"/colours dark", room + "dark colours"},
        {"/colours pink", "! /colours [larkspin|light|dark]"},
        {"/closing", closing + "minimizes it"},
        {"/closing tray", closing + "hides it where a tray has the icon"},
        {"/closing quit", closing + "ends larkspin"},
        {"/closing quit now", "! /closing [minimize|tray|quit]"},
        {"/musicfolder", "your music is in c:\\desk"},
        {"/musicfolder ~/there", "your music is in c:\\home\\jo\\there"},
        {"/musicfolder ~/nowhere", "there is no folder ~/nowhere"},
    };
    for (const auto& [line, answer] : cases)
        EXPECT_EQ(typed(line), answer) << line;
    begin();
    for (const auto& [line, answer] :
         std::initializer_list<Case>{{"/stamps", noStamps},
                                     {"/namecolours", "each name has a colour of its own"},
                                     {"/notifications", noCalls},
                                     {"/textsize", text + "300 %"},
                                     {"/colours", room + "dark colours"},
                                     {"/closing", closing + "ends larkspin"},
                                     {"/musicfolder", "your music is in c:\\home\\jo\\there"},
                                     {"/musicfolder none", "your music is in c:\\desk"}})
        EXPECT_EQ(typed(line), answer) << line;
}

TEST_F(PreferencesTest, WriteTheTextSizeOnceTheWheelHasComeToRest) {
    const auto stored = [this] { return disk.read("larkspin.ini"); };
    for (int step = 0; step < 3; ++step) {
        loop.waitUntil(loop.now() + 400ms);
        preferences->changeTextSize(1);
    }
    EXPECT_EQ(stored(), "");
    loop.waitUntil(loop.now() + Preferences::textSizeSettles);
    EXPECT_NE(stored().find("text size=130"), std::string::npos);
    disk.write("larkspin.ini", "");
    preferences->keep();
    EXPECT_EQ(stored(), "") << "it is written already";
}

TEST_F(PreferencesTest, TellWhoeverShowsThemOfEachChange) {
    std::vector<int> sizes;
    preferences->onChange([&] { sizes.push_back(preferences->textSize()); });
    preferences->onChange([&] { sizes.push_back(-1); });
    preferences->changeTextSize(1);
    preferences->setTextSize(110); // as it is
    preferences->setTextSize(1000);
    EXPECT_EQ(sizes, (std::vector{110, -1, 300, -1}));
}

TEST_F(PreferencesTest, AreTheUsualOnesWhereTheFileHasNoneOrSenselessOnes) {
    disk.write("larkspin.ini", "[lark]\ntime stamps=perhaps\ntext size=7\nroom colours=pink\n"
                               "closing the room=\nmusic folder=\n");
    begin();
    EXPECT_TRUE(preferences->showsStamps());
    EXPECT_TRUE(preferences->notifies());
    EXPECT_EQ(preferences->textSize(), 100);
    EXPECT_EQ(preferences->colors(), RoomColors::larkspin);
    EXPECT_EQ(preferences->closing(), RoomClosing::minimize);
    EXPECT_EQ(preferences->musicFolder(), "c:\\desk");
}

} // namespace
} // namespace larkspin
