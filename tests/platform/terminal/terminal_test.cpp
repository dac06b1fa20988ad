// The terminal program as a child process: by the protocol, by signals, and on a terminal.
#include "library/playlist_row.h"
#include "support/child.h"
#include "support/made_songs.h"
#include "support/patience.h"
#include "support/temp_directory.h"

#include <csignal>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view welcome = "[box] this must be your first time running this damn program";

class TerminalTest : public testing::Test {
protected:
    // A home of its own, no sound device, and nobody to order about.
    std::vector<std::string> variables() const {
        const std::string home = disk.path().native();
        std::vector<std::string> all{
            "HOME=" + home,      "XDG_DATA_HOME=" + home,     "XDG_RUNTIME_DIR=" + home,
            "PULSE_SERVER=none", "PIPEWIRE_REMOTE=none",      "ALSA_CONFIG_PATH=/dev/null",
            "TERM=xterm",        "DBUS_SESSION_BUS_ADDRESS=", "LSAN_OPTIONS=detect_leaks=0"};
        all.push_back("DBUS_SYSTEM_BUS_ADDRESS=no:");
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
        auto child = Child::startOnTerminal(LARKSPIN_TTY, variables());
        EXPECT_TRUE(child->shows("load:", patience));
        letFinish(*child);
        return child;
    }
    // What it shows when that is typed.
    static void expectShown(Child& child, const std::string& typed, std::string_view shown) {
        child.write(typed);
        EXPECT_TRUE(child.shows(shown, patience)) << typed;
    }
    void expectEnd(Child& child, const std::string& volume) {
        EXPECT_EQ(child.ends(3s), 0);
        EXPECT_EQ(setting("volume"), volume);
    }
    // A message is said in the middle of its work. The line after it comes when that is done.
    static void letFinish(Child& child) {
        child.tell("'filter?");
        EXPECT_TRUE(child.says("current media filter", patience));
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
    child->tell("'filter wav\n'scan ~/Music");
    EXPECT_TRUE(child->says("found <b>3</b> (<b>wav</b>) in <b>1</b> directories", patience));
    child->tell("'transfer\n'tempo 150\n'cont\n'play one");
    EXPECT_TRUE(child->says("playing:  <b>1</b>.  1 <b><u>one</b></u> (<b>.wav</b>)", patience));
    EXPECT_TRUE(child->says("next:  <b>2</b>.  2", patience));
    EXPECT_TRUE(child->says("next:  <b>3</b>.  3 long", patience));
    letFinish(*child);
    child->tell("'pause\n'resume\n'exit");
    EXPECT_TRUE(child->says("paused:  3 long", patience));
    EXPECT_TRUE(child->says("resumed:  3 long", patience));
    EXPECT_TRUE(child->says("larkspin player - unload", patience));
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_EQ(setting("played"), "2");
    EXPECT_NE(disk.read("larkspin/played.ini").find("1 one.wav=1\r\n"), std::string::npos);

    child = running();
    child->tell("'num 3");
    EXPECT_TRUE(child->says("playing:  <b>3</b>.  3 long", patience));
    EXPECT_EQ(setting("tempo"), "150");
}

TEST_F(TerminalTest, EndSignalsSaveWithoutAWord) {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        SCOPED_TRACE(signal);
        const auto child = running();
        const std::string volume = std::to_string(signal + 20);
        child->tell("'volume " + volume);
        letFinish(*child);
        ::kill(child->id(), signal);
        EXPECT_EQ(child->ends(patience), 0);
        EXPECT_EQ(child->rest(patience), "");
        EXPECT_EQ(setting("volume"), volume);
    }
    const auto child = start();
    EXPECT_TRUE(child->says("larkspin player - by moraine", patience));
    child->tell("'volume 66");
    ::kill(child->id(), SIGTERM); // while it starts: that is ended first, and the line taken
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_EQ(setting("volume"), "66");
}

TEST_F(TerminalTest, ASecondCopyGivesWay) {
    const auto first = running();
    EXPECT_EQ(output("'exit\n"), "[box] i've unloaded myself because you're an idiot and you "
                                 "already have one open\n");
    first->tell("'trig?");
    EXPECT_TRUE(first->says("your trigger is '", patience));
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
    child->write("\x1b"); // begins a key whose rest doesn't come
    child->rest(100ms);
    expectShown(*child, "'volume 12\n\x1b[A", "volume set");
    EXPECT_TRUE(child->shows("'volume 12", patience)); // from the history
    child->write("\x15\x04");                          // the line away, then the end
    expectEnd(*child, "12");
}

TEST_F(TerminalTest, IsADisplayItselfUnlikeAPipe) {
    EXPECT_NE(output("'cinfo\n").find("<b>0</b>bit - <b>0</b>x<b>0<"), std::string::npos);
    const auto child = onTerminal();
    expectShown(*child, "'cinfo\r",
                "resolution:  \x1b[1m3\x1b[22mbit - \x1b[1m80\x1b[22mx\x1b[1m24");
    child->resize(30, 100);
    expectShown(*child, "'cinfo\r", "100\x1b[22mx\x1b[1m30");
}

TEST_F(TerminalTest, CompletesNamesAndKeepsTheTypedLines) {
    disk.write("larkspin/temp.lst", makerow("Rest", ".mp3", "c:\\no\\dir") + "\n" +
                                        makerow("Ride on", ".mp3", "c:\\no\\dir") + "\n");
    auto child = onTerminal();
    expectShown(*child, "/w\t", "[tab] \x1b[0m/whisper NAME TEXT");
    expectShown(*child, "h\teve <b>psst\n", "[room] eve whispers: <b>psst");
    expectShown(*child, "'num r\t", "[tab] \x1b[0m2  Ride on");
    expectShown(*child, "ix\x02\t\x05\x08\n", // completed in front of the x, which goes then
                "not found, refresh the directory (c:\\no\\dir");
    child->write("\x04");
    EXPECT_EQ(child->ends(patience), 0);
    const auto later = Child::startOnTerminal(LARKSPIN_TTY, variables());
    EXPECT_TRUE(later->shows("load:", patience));
    expectShown(*later, "\x1b[A", "'num 2");
}

TEST_F(TerminalTest, WorksWindowsMenusAndDialogs) {
    ASSERT_TRUE(makeSong(disk.path() / "one.wav", 60));
    const auto child = running();
    child->tell("/tray\n/show mp3s\n/menu fmid\n/menu mfilt");
    EXPECT_TRUE(child->says("[window] mp3s.mediaCaption: label", patience));
    EXPECT_TRUE(child->says("[menu]   fmid: midi (checked)", patience));
    child->tell("/click mp3s.openButton\n/windows"); // the question is open meanwhile
    EXPECT_TRUE(child->says("[open] Open a media file", patience));
    EXPECT_TRUE(child->says("[window] mp3s", patience));
    child->tell("~/one.wav");
    EXPECT_TRUE(child->says("playing:  one", patience));
    child->tell("/click mp3s.closeButton\n/windows");
    EXPECT_TRUE(child->says("[window] mp3s (hidden)", patience));
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
    child->rest(100ms);
    child->write("\x13'volume 35\n/help\n");
    EXPECT_EQ(child->rest(300ms), "");
    ::kill(child->id(), SIGTERM);
    expectEnd(*child, "35");
}

TEST_F(TerminalTest, NoKeyDoesHarm) {
    const auto child = onTerminal();
    expectShown(*child, "\x1bx\"\n", owner + ": ");
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == 3 || byte == 4 || byte == 19 || byte == 26 || byte == 28)
            continue; // they end, or stop, the program
        const char key = static_cast<char>(byte);
        child->write(std::string("ab \x01") + key + "\x1b" + key + "12\x1b[" + key + "\x18" + key);
    }
    child->rest(100ms);
    expectShown(*child, "\x15\n'trig?\n", "your trigger is");
    expectShown(*child, std::string(100'000, 'x') + "\n", "xxx");
    expectShown(*child, "'volume 3\n", "volume set");
}

TEST_F(TerminalTest, BelievesInNoTerminalOfAnySize) {
    const auto child = onTerminal();
    child->resize(65535, 65535);
    expectShown(*child, "'trig?\n", "your trigger is");
    child->resize(0, 0);
    expectShown(*child, "'volume 3\n", "volume set");
    EXPECT_LT(child->mostMemory(), 400'000); // KB; the sanitizers take most of it
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
