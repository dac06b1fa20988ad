// The terminal program as a child process: by the protocol, by signals, and on a terminal with one
// line below the other.
#include "support/child.h"
#include "support/made_songs.h"
#include "support/patience.h"
#include "support/temp_directory.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view welcome = "[box] this must be your first time running this damn program";

struct TerminalTest : testing::Test {
    std::vector<std::string> variables() const {
        auto all = ownHome(disk.path().native());
        all.push_back("TERM=xterm");
        return all;
    }
    std::unique_ptr<Child> start() { return Child::start(LARKSPIN_TTY, variables()); }
    std::unique_ptr<Child> running() {
        auto child = start();
        EXPECT_TRUE(child->says("load:  <b>", patience));
        letFinish(*child);
        return child;
    }
    std::unique_ptr<Child> onTerminal() {
        auto child = Child::startOnTerminal(LARKSPIN_TTY, variables(), {"--line"});
        EXPECT_TRUE(child->shows("load:", patience));
        letFinish(*child);
        return child;
    }
    // What it shows when that is typed.
    static void expectShown(Child& child, const std::string& typed, std::string_view shown) {
        child.write(typed);
        EXPECT_TRUE(child.shows(shown, patience)) << typed;
    }
    static void expectSaid(Child& child, std::initializer_list<std::string_view> texts) {
        for (const std::string_view text : texts)
            EXPECT_TRUE(child.says(text, patience)) << text;
    }
    void expectEnd(Child& child, const std::string& volume) {
        EXPECT_EQ(child.ends(patience), 0);
        EXPECT_EQ(setting("volume"), volume);
    }
    // A message is said in the middle of its work. The line after it comes when that is done.
    static void letFinish(Child& child) {
        child.tell("'filter?");
        expectSaid(child, {"current media filter"});
    }
    // What a whole script makes it say.
    std::string output(const std::string& script) {
        const auto child = start();
        child->write(script);
        child->endInput();
        const std::string said = child->rest(patience);
        EXPECT_EQ(child->ends(patience), 0);
        return said;
    }
    std::string setting(const std::string& key) const {
        const std::string all = disk.read("larkspin/larkspin.ini"), line = "\n" + key + "=";
        const auto at = all.find(line);
        if (at == std::string::npos)
            return "(none)";
        return all.substr(at + line.size(), all.find('\r', at) - at - line.size());
    }
    std::string line(const std::string& said) const { return owner + ": " + said + "\n"; }
    std::string styled(const std::string& message) const {
        return line("</html><font face=\"arial narrow\" color=#5083A9>'\u00AClks - <font "
                    "face=\"arial narrow\" color=#0066BB>" +
                    message + "</b><font face=\" \" color=#> ");
    }

    TempDirectory disk;
    const std::string owner = ::getpwuid(::getuid())->pw_name;
};

TEST_F(TerminalTest, SpeaksTheProtocolAndSavesAtTheEndOfTheInput) {
    const std::string first = output("'volume 30\r\n'trig?\n/as bob 'exit\nhalf a line");
    EXPECT_TRUE(first.starts_with(welcome)) << first;
    EXPECT_EQ(first.substr(first.find('\n') + 1),
              styled("larkspin player - by moraine") +
                  styled("load:  <b>1</b> - mp3s played:  <b>0</b>") + line("'volume 30") +
                  styled("volume set:  <b>30</b>") + line("'trig?") + styled("your trigger is '") +
                  "[room] bob comes in\nbob: 'exit\n" + line("half a line"));
    EXPECT_EQ(setting("volume"), "30");

    EXPECT_EQ(output("'silent\n'trig?\n/as\n/bob\n/ x\n/quit\n'volume 99\n"),
              styled("larkspin player - by moraine") +
                  styled("load:  <b>2</b> - mp3s played:  <b>0</b>") + line("'silent") +
                  styled("silent mode - <b>on") + line("'trig?") + "[box] your trigger is '\n" +
                  "[terminal] /as NAME [TEXT]\n"
                  "[terminal] /bob is unknown, /help tells what there is\n" +
                  line("/ x"));
    EXPECT_EQ(setting("volume"), "30");
    EXPECT_EQ(setting("silent"), "yes");
    EXPECT_EQ(setting("load"), "3");
}

// Rooms, boxes, questions, windows, menus: whatever tells a name.
TEST_F(TerminalTest, TellsEveryNameAsItIs) {
    const std::string name = R"(what? <b>*: a|\c "x")", said = R"(what? <)"
                                                               "\u200C"
                                                               R"(b>*: a|\c "x")";
    std::filesystem::create_directory(disk.path() / "Music?");
    ASSERT_TRUE(makeSong(disk.path() / "Music?" / (name + ".wav"), 60));
    disk.write("larkspin/list?.lkl", "");
    const std::string all = output(
        "'filter wav\n'scan ~/Music?\n'transfer\n'num 1\n'info\n'pause\n'scrd\n'scrpl\n"
        "'list t?\n'pl\n/menu\n'transfer\n'play ?\n'rnd <\n'ap ~/a?, b?\n'apps\n"
        "/click appz.List1 1\n/show appz\n'media\n/click mp3s.playlistView 1\n/show mp3s\n"
        "/key mp3s.playlistView delete\nn\n/click mp3s.renameLabel\n\n/double mp3s.mediaCaption\n"
        "/hover mp3s.mediaCaption\n/show mp3s\n'play \n'view\n/show larkmain\n'rename what?!\n"
        "'delete\n");
    for (const std::string& told : std::vector<std::string>{
             "playing:  <b>1</b>.  " + said, "song:  " + said, "paused:  " + said,
             "\\Music?</b> for <b>wav", "loaded playlist <b>list?.lkl",
             "[ask] do you really wanna delete " + name + "?",
             "[input] file renamer: what would you like to rename " + name + " as?",
             "(" + name + ")\n", "    1 " + name + "    ", "deleted:  <b>what?!</b>"})
        EXPECT_NE(all.find(told), std::string::npos) << told;
    for (const char* lead : {"\xEF\x80", "\xEF\x81"}) // of U+F000 to U+F07F
        EXPECT_EQ(all.find(lead), std::string::npos) << all;
}

// It would take a minute to recite.
TEST_F(TerminalTest, EndsAfterItsLinesWhenNobodyHearsWhatIsRecited) {
    const auto child = running();
    for (int count = 0; count < 100; ++count)
        child->tell("'sn call mum");
    child->tell("'scrn\n'sn last\n'volume 35");
    child->endInput();
    expectSaid(*child, {"'scrn", "call mum"});
    child->hangUp();
    expectEnd(*child, "35");
    const std::string notes = disk.read("larkspin/larkmain.lpb");
    EXPECT_EQ(std::ranges::count(notes, '\n'), 101);
}

TEST_F(TerminalTest, TakesLinesOfAnySize) {
    const std::string huge(1 << 20, 'x');
    const std::string said = output(huge + "\n'play " + huge + "\n\n'ver");
    EXPECT_NE(said.find("\n" + line(huge) + line("'play " + huge) +
                        styled("your gay song was not found") + line("") + line("'ver")),
              std::string::npos);
}

TEST_F(TerminalTest, PlaysWhatItHasFoundAndComesBackWithIt) {
    std::filesystem::create_directory(disk.path() / "Music");
    for (const auto& [name, length] : {std::pair("1 one.wav", 0.3),
                                       {"2: \"what?\".wav", 0.3},
                                       {"other.mp3", 0.3},
                                       {"3 long.wav", 60}})
        ASSERT_TRUE(makeSong(disk.path() / "Music" / name, length));
    auto child = running();
    child->tell("'filter wav\n'scan ~/Music\n'transfer\n'tempo 150\n'cont\n'play one");
    expectSaid(*child, {"found <b>3</b> (<b>wav</b>) in <b>1</b> directories",
                        "playing:  <b>1</b>.  1 <b><u>one</b></u> (<b>.wav</b>)",
                        "next:  <b>2</b>.  2", "next:  <b>3</b>.  3 long"});
    letFinish(*child);
    child->tell("'pause\n'resume\n'exit");
    expectSaid(*child, {"paused:  3 long", "resumed:  3 long", "larkspin player - unload"});
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_EQ(setting("played"), "2");
    EXPECT_NE(disk.read("larkspin/played.ini").find("1 one.wav=1\r\n"), std::string::npos);

    child = running();
    child->tell("'num 3");
    expectSaid(*child, {"playing:  <b>3</b>.  3 long"});
    EXPECT_EQ(setting("tempo"), "150");
}

TEST_F(TerminalTest, PlaysEachKindOfSongToItsEndAndCountsIt) {
    std::filesystem::create_directory(disk.path() / "Music");
    const std::vector<std::string> names = {"1.mp3",  "2.wav", "3.wma", "4.mid", "5.flac", "6.ogg",
                                            "7.opus", "8.m4a", "9.aac", "a.wv",  "b.aiff"};
    for (const std::string& name : names)
        ASSERT_TRUE(makeSong(disk.path() / "Music" / name, 0.2));
    auto child = running();
    child->tell("'filter any\n'scan ~/Music\n'transfer\n'cont\n'num 1");
    for (const std::string& name : names)
        expectSaid(*child, {">.  " + name.substr(0, 1)});
    expectSaid(*child, {"next:  <b>1</b>."});
    child->tell("'exit");
    EXPECT_EQ(child->ends(patience), 0);
    for (const std::string& name : names)
        EXPECT_NE(disk.read("larkspin/played.ini").find("\n" + name + "=1\r\n"), std::string::npos)
            << name;
}

TEST_F(TerminalTest, EndSignalsSaveWithoutAWord) {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        SCOPED_TRACE(signal);
        const auto child = running();
        const std::string volume = std::to_string(signal + 20);
        child->tell("'volume " + volume);
        letFinish(*child);
        ::kill(child->id(), signal);
        expectEnd(*child, volume);
        EXPECT_EQ(child->rest(patience), "");
    }
    const auto child = start();
    expectSaid(*child, {"larkspin player - by moraine"});
    child->tell("'volume 66");
    ::kill(child->id(), SIGTERM); // while it starts: that is ended first, and the line taken
    expectEnd(*child, "66");
}

TEST_F(TerminalTest, ASecondCopyGivesWay) {
    const auto first = running();
    EXPECT_EQ(output("'exit\n"), "[box] i've unloaded myself because you're an idiot and you "
                                 "already have one open\n");
    first->tell("'trig?");
    expectSaid(*first, {"your trigger is '"});
    ::kill(first->id(), SIGKILL);
    EXPECT_EQ(first->ends(patience), std::nullopt);
    // The place is free again, and the trigger of the run that was killed counts.
    EXPECT_NE(output("'trig?\n").find("your trigger is '"), std::string::npos);
}

TEST_F(TerminalTest, IsARoomToTypeIn) {
    const auto child = onTerminal();
    expectShown(*child, "'trug?\x7f\x7f\x7fig?\n", // corrected while typing
                "\x1b[38;2;80;131;169m'\u00AClks - \x1b[38;2;0;102;187myour trigger is '");
    expectShown(*child, "/as bob <b>hi</b> <3 \x16\x1b[31m\n",
                "\x1b[2m[room] bob comes in\x1b[0m\r\n");
    EXPECT_TRUE(child->shows("bob: \x1b[1mhi\x1b[22m <3 \uFFFD[31m\x1b[0m\r\n", patience));
    expectShown(*child, "'volume 12\n", "volume set");
    child->write("\x04");
    expectEnd(*child, "12");
}

TEST_F(TerminalTest, StylesNothingOnATerminalThatWouldShowIt) {
    auto dumb = variables();
    dumb.back() = "TERM=dumb";
    const auto child = Child::startOnTerminal(LARKSPIN_TTY, dumb);
    child->write("/as bob <b>hi</b>\n'exit\n");
    const std::string shown = child->rest(patience);
    EXPECT_NE(shown.find("bob: hi\r\n"), shown.npos) << shown;
    EXPECT_EQ(shown.find('\x1b'), shown.npos) << shown;
}

// A shell tells a job nothing that runs already when it comes to the front.
TEST_F(TerminalTest, LeavesItsTerminalToOthersWhileItIsBehindThem) {
    const auto child = Child::startOnTerminal("sh", variables());
    expectShown(*child, LARKSPIN_TTY " --line\n", "load:");
    letFinish(*child);
    expectShown(*child, "\x1a", "^Z");
    expectShown(*child, "bg\n", LARKSPIN_TTY);
    expectShown(*child, "echo $((1+1))\n", "2\r\n");
    expectShown(*child, "fg\n", LARKSPIN_TTY);
    expectShown(*child, "'trig?\n", "your trigger is '");
    expectShown(*child, "'exit\n", "unload");
}

TEST_F(TerminalTest, IsADisplayUnlikeAPipeAndBelievesInNoneOfAnySize) {
    EXPECT_NE(output("'cinfo\n").find("<b>0</b>bit - <b>0</b>x<b>0<"), std::string::npos);
    const auto child = onTerminal();
    expectShown(*child, "'cinfo\r",
                "resolution:  \x1b[1m3\x1b[22mbit - \x1b[1m80\x1b[22mx\x1b[1m24");
    child->resize(30, 100);
    expectShown(*child, "'cinfo\r", "100\x1b[22mx\x1b[1m30");
    constexpr unsigned short sizes[] = {65535, 0};
    for (const unsigned short size : sizes) {
        child->resize(size, size);
        expectShown(*child, "'trig?\n", "your trigger is");
    }
    EXPECT_LT(child->mostMemory(), 400'000); // KB; the sanitizers take most of it
}

TEST_F(TerminalTest, WorksWindowsMenusAndDialogs) {
    ASSERT_TRUE(makeSong(disk.path() / "one.wav", 60));
    const auto child = running();
    child->tell("/tray\n/menu fmid\n/menu mfilt\n/click mp3s.openButton\n/windows");
    expectSaid(*child, {"[menu]   fmid: midi (checked)", "[open] Open a media file",
                        "[window] mp3s"}); // with the question open
    child->tell("~/one.wav");
    expectSaid(*child, {"playing:  one"});
    child->tell("/click mp3s.closeButton\n/windows");
    expectSaid(*child, {"[window] mp3s (hidden)"});
}

TEST_F(TerminalTest, EndsAndSavesAlthoughNobodyReads) {
    const auto child = running();
    child->tell("'volume 33");
    for (int line = 0; line < 1000; ++line)
        child->tell("'trig?");
    EXPECT_GT(child->jams(patience), 60'000); // nearly all that a pipe holds
    ::kill(child->id(), SIGTERM);
    expectEnd(*child, "33");
}

TEST_F(TerminalTest, EndsAndSavesOnATerminalThatHasBeenStopped) {
    const auto child = onTerminal();
    child->write("\x13/help\n'volume 35\n'ascii xyz\n");
    EXPECT_TRUE(comes([&] { return setting("ascii") == "xyz"; }));
    ::kill(child->id(), SIGTERM);
    expectEnd(*child, "35");
}

TEST_F(TerminalTest, SavesWhenItsTerminalIsClosed) {
    const auto child = onTerminal();
    expectShown(*child, "'volume 7\n", "volume set");
    expectShown(*child, "'trig?\n", "your trigger is"); // the line before it has done its work
    child->hangUp();
    expectEnd(*child, "7");
}

} // namespace
} // namespace larkspin
