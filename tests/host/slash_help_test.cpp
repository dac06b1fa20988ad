// Help: topics, the words for songs, and those with a slash.
#include "host/slash_help.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct SlashHelp : testing::Test {
    SlashHelp() {
        words.add(about("people", {{"join",
                                    "#ROOM",
                                    "goes into a room",
                                    [&](std::string_view) { return ++joined > 0; },
                                    {"j", "enter"}},
                                   {"list", "", "tells which rooms there are", nullptr},
                                   {"ME", "TEXT", "tells what you do", nullptr, {}, "talking"}}));
        words.add({helpWord(
                       words, [] { return std::string("."); }, tell),
                   quitWord([&] { told += "the end"; })});
    }
    std::string answer(const std::string& line) {
        told.clear();
        words.run(line);
        return told;
    }

    std::string told;
    int joined = 0;
    SlashWords::Tell tell = [this](const std::string& text) { told += text + '\n'; };
    SlashWords words{tell};
};

TEST_F(SlashHelp, TellsOfTopicsWordsAndOtherNamesOfThem) {
    const std::string
        join = "/join #ROOM  \u2013  goes into a room; such as /join #music; also /j, /enter\n",
        list = "/list  \u2013  tells which rooms there are\n",
        songList = ".list *  \u2013  loads a playlist according to string; such as "
                   ".list evening\n",
        filters = ".filter *  \u2013  sets a media filter. ";
    const std::pair<const char*, std::string> cases[] = {
        {"/help join", join},
        {"/h /J", join},
        {"/help talking", "/ME TEXT  \u2013  tells what you do\n"},
        {"/help attic", "there is no word and no topic attic\n"},
        {"/help list", songList + list},
        {"/help .LIST", songList},
        {"/help 'list evening", songList},
        {"/help /list", list},
        {"/help .join", "there is no word and no topic .join\n"},
        {"/help /scan", "there is no word and no topic /scan\n"},
        {"/help trig?", "'trig?  \u2013  tells your current trigger\n"},
        {"/help m", ".m *  \u2013  plays the one with that number; such as .m 3\n"},
        {"/exit", "the end"},
        {"/enter #a", ""},
        {"/entering", "/entering is unknown, /help tells what there is\n"},
    };
    for (const auto& [line, told] : cases)
        EXPECT_EQ(answer(line), told) << line;
    EXPECT_EQ(joined, 1);
}

TEST_F(SlashHelp, TellsAllTopicsThoseOfSongsFirstAndAllThatIsInOne) {
    const std::string topics = answer("/help");
    EXPECT_EQ(topics.find("playing: .play .rnd .num .next .pre "), 0u);
    for (const char* line :
         {"\npeople: .x .unx .ban .unban .pr .imson .imsoff .idle .idleoff /join /list\n",
          "\nlarkspin: .help .coms .silent .silentoff .trig 'trig? .clear .ver .adv .sela .exit "
          "/help /quit\ntalking: /ME\n"
          "/help WORD tells of a word, /help TOPIC of a topic, such as /help playing\n"})
        EXPECT_NE(topics.find(line), topics.npos) << topics;
    const std::string people = answer("/help  People ");
    EXPECT_EQ(people.find(".x *  \u2013  ignores someone; such as .x bob\n"), 0u) << people;
    EXPECT_NE(people.find("\n/list  \u2013  tells which rooms there are\n"), people.npos);
    EXPECT_NE(answer("/help all").find(people), people.npos);
    EXPECT_NE(told.find("/quit  \u2013  saves and ends larkspin, on a network too: /disconnect"),
              told.npos);
}

} // namespace
} // namespace larkspin
