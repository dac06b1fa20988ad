// What is told of the words with a slash.
#include "host/slash_help.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(SlashHelp, TellsOfTopicsWordsAndOtherNamesOfThem) {
    std::string told;
    const SlashWords::Tell tell = [&](const std::string& text) { told += text + '\n'; };
    int joined = 0;
    SlashWords words(tell);
    words.add(about("rooms", {{"join",
                               "#ROOM",
                               "goes into a room",
                               [&](std::string_view) { return ++joined > 0; },
                               {"j", "enter"}},
                              {"names", "", "tells who is there", nullptr},
                              {"ME", "TEXT", "tells what you do", nullptr, {}, "talking"}}));
    words.add({helpWord(words, tell), quitWord([&] { told += "the end"; })});
    const std::string join = "/join #ROOM  \u2013  goes into a room; also /j, /enter\n",
                      names = "/names  \u2013  tells who is there\n";
    const std::pair<const char*, std::string> cases[] = {
        {"/help", "rooms: /join /names\ntalking: /ME\nlarkspin: /help /quit\n"
                  "/help WORD tells of a word, /help TOPIC of a topic, such as /help rooms\n"},
        {"/help join", join},
        {"/h /J", join},
        {"/HELP  Rooms ", join + names},
        {"/help talking", "/ME TEXT  \u2013  tells what you do\n"},
        {"/help attic", "there is no word and no topic attic\n"},
        {"/exit", "the end"},
        {"/enter #a", ""},
        {"/entering", "/entering is unknown, /help tells what there is\n"},
    };
    for (const auto& [line, answer] : cases) {
        told.clear();
        words.run(line);
        EXPECT_EQ(told, answer) << line;
    }
    EXPECT_EQ(joined, 1);
    words.run("/help all");
    EXPECT_NE(told.find("/quit  \u2013  saves and ends larkspin, on a network too: /disconnect"),
              told.npos);
}

} // namespace
} // namespace larkspin
