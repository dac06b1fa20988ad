// The parts of the terminal front end on pipes: lines in turn or at once, questions, windows and
// menus worked by name.
#include "host/own_room.h"
#include "host/room_words.h"
#include "platform/terminal/line_reader.h"
#include "platform/terminal/terminal_commands.h"
#include "platform/terminal/terminal_desktop.h"
#include "platform/terminal/terminal_dialogs.h"
#include "platform/terminal/terminal_screen.h"
#include "support/patience.h"
#include "support/pipe.h"
#include "support/shown_lines.h"
#include "text/row_list.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
using Kind = Control::Kind;

std::string slashes(std::string_view typed) {
    std::string path(typed);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path.starts_with('\\') ? "c:" + path : path;
}

struct TypedLines {
    explicit TypedLines(Nanoseconds overtakeAfter = TerminalInput::never)
        : isOwner(overtakeAfter != TerminalInput::never), input(loop, overtakeAfter) {}

    void type(const std::string& text) { EXPECT_TRUE(in.write(text)); }
    void open() {
        input.open({.actsAtOnce = [](const std::string& line) { return line.starts_with('/'); },
                    .take = [this](const std::string& line) { take(line); },
                    .ended = [this] { log += "end"; }});
    }
    void take(const std::string& line) {
        log += line + "(";
        if (line == "wait" && isOwner)
            awaitEnd(); // it comes meanwhile
        else if (line.ends_with("wait"))
            loop.waitUntil(loop.now() + 100ms);
        if (line.ends_with("ask"))
            log += dialogs.ask("sure?") ? "yes" : "no";
        if (line == "/cut")
            input.cut();
        if (line == "/dismiss")
            dialogs.dismissAll();
        log += ")";
    }
    // What comes of these lines, the last of all.
    std::string logOf(const std::string& lines) {
        type(lines);
        in.closeIn();
        open();
        awaitEnd();
        return log;
    }
    void awaitEnd() {
        loop.waitFor([this] { return log.find("end") != std::string::npos; },
                     loop.now() + patience);
    }

    const bool isOwner;
    Pipe in, out;
    PollLoop loop;
    std::string log;
    QueuedOutput output{loop, out.in()};
    TerminalInput input;
    LineReader reader{loop, input, in.out()};
    TerminalScreen screen{output, output, TerminalScreen::Form::protocol};
    TerminalDialogs dialogs{screen, input, slashes};
};

// An owner's come in the middle of others, where these take their time.
TEST(TypedLines, ComeInTurnOrInTheMiddleOfOthers) {
    const struct {
        std::string lines, ofScript, ofOwner = ofScript;
    } cases[] = {
        {"early\nwait\nnext\r\n\nlast", "early()wait()next()()last()end",
         "early()wait(next()()last()end)"},
        {"wait\n/a\nlast\n", "wait(/a())last()end", "wait(/a()last()end)"},
        {"ask\nYes!\nask\nsomething else\n/ask\n/a\nyes\nask\n",
         "ask(yes)ask(no)/ask(/a()yes)ask(no)end"},
        {"ask\n/wait\nyes\n", "ask(/wait()yes)end"},
        {"ask\n/cut\nmore\n", "ask(/cut()no)end"},
        {"ask\n/dismiss\nyes\n", "ask(/dismiss()no)yes()end"},
    };
    for (const auto& [lines, ofScript, ofOwner] : cases) {
        EXPECT_EQ(TypedLines().logOf(lines), ofScript) << lines;
        EXPECT_EQ(TypedLines(5ms).logOf(lines), ofOwner) << lines;
    }
}

TEST(TypedLines, AreHeldBackUntilAMoment) {
    TypedLines typed;
    const auto moment = typed.loop.now() + 30ms;
    typed.input.holdUntil([moment] { return moment; });
    typed.open();
    typed.type("one\n");
    typed.loop.waitFor([&] { return !typed.log.empty(); }, typed.loop.now() + patience);
    EXPECT_GE(typed.loop.now(), moment);
}

class DialogsTest : public testing::Test, protected TypedLines {};

TEST_F(DialogsTest, ShowBoxesWithATitleOfTheirOwn) {
    dialogs.box("one\r\ntwo");
    dialogs.titledBox("news", "three");
    dialogs.stopBox("four");
    type("no\n");
    EXPECT_FALSE(dialogs.ask("five\n?"));
    EXPECT_EQ(out.readNow(), "[box] one\\r\\ntwo\n[box] news: three\n[stop] four\n"
                             "[ask] five\\n?\n");
}

TEST_F(DialogsTest, TakeTexts) {
    type("a text \n\n");
    EXPECT_EQ(dialogs.askText({"larkspin", "name?", "old"}), "a text ");
    EXPECT_EQ(dialogs.askText({"count", "how many?"}), std::nullopt);
    EXPECT_EQ(out.readNow(), "[input] name? (old)\n[input] count: how many? ()\n");
}

TEST_F(DialogsTest, TakePathsAndAnEmptyLineDismissesThem) {
    const FileQuestion open{"Open it"}, save{.title = "Save it", .directory = "c:\\lists"};
    type(" /home/a | b.mp3 \nb.lkl\n\n \nd:\\x\n/a/b| c:\\d |\n\n/m\n");
    EXPECT_EQ(dialogs.openFile(open), "c:\\home\\a | b.mp3");
    EXPECT_EQ(dialogs.saveFile(save), "c:\\lists\\b.lkl");
    EXPECT_EQ(dialogs.openFile(open), std::nullopt);
    EXPECT_EQ(dialogs.saveFile(save), std::nullopt);
    EXPECT_EQ(dialogs.saveFile(save), "d:\\x");
    EXPECT_EQ(dialogs.openFiles(open), (std::vector<std::string>{"c:\\a\\b", "c:\\d"}));
    EXPECT_EQ(dialogs.openFiles(open), std::vector<std::string>());
    EXPECT_EQ(dialogs.openDirectory(open), "c:\\m");
    EXPECT_TRUE(out.readNow().starts_with("[open] Open it\n[save] Save it\n"));
}

// A toy program: a window with one control of each kind, a tray icon, and a popup.
struct TerminalCommandsTest : testing::Test {
    TerminalCommandsTest() {
        for (int number = 1; number <= 45; ++number)
            rows.add("row " + std::to_string(number));
        for (const char* face : {"arial", "12", "webdings"})
            faces.add(face);
        toy.name = "Toy";
        toy.visible = true;
        toy.controls = {
            {.name = "title",
             .text = [] { return std::string("  a\ntitle"); },
             .onDoubleClick = [this] { log += "resized "; }},
            {.name = "close",
             .kind = Kind::button,
             .spoken = "close",
             .text = [] { return std::string("  X"); },
             .onClick = [this] { toy.visible = false; }},
            {.name = "list",
             .kind = Kind::list,
             .rows = &rows,
             .selectsMany = true,
             .onClick = [this] { log += "at " + std::to_string(rows.currentIndex()) + ' '; },
             .onDoubleClick = [this] { log += "played "; },
             .onMouseMove = [this] { log += "hint "; },
             .onKey = [this](Key key) { log += key == Key::del ? "delete " : "key "; },
             .onMenu = [this] { log += "menu of " + std::to_string(rows.currentIndex()); }},
            {.name = "faces",
             .kind = Kind::combo,
             .rows = &faces,
             .onClick = [this] { log += faces.currentRow(); }},
            {.name = "volume",
             .kind = Kind::slider,
             .value = [] { return 50; },
             .most = 100,
             .onChange = [this](int value) { log += std::to_string(value); }},
            {.name = "words",
             .kind = Kind::textField,
             .text = [] { return std::string("old"); },
             .onEdit = [this](const std::string& text) { log += '(' + text + ')'; }},
            {.name = "color", .kind = Kind::swatch, .background = 0x332211},
            {.name = "secret", .visible = false},
        };
        other.name = "other";
        commands.connect({&toy, &other}, [this] { log += "quit "; });
        lines.connect(
            [this](const ChatLine& line) { log += line.speaker + '=' + line.text + ' '; });
    }
    // What it prints.
    std::string run(const std::string& line) {
        commands.run(line);
        const std::string shownFirst = shown.take();
        return shownFirst + out.readNow();
    }
    // What it does.
    std::string effect(const std::string& line) {
        run(line);
        return std::exchange(log, {});
    }
    std::vector<MenuEntry> entries() {
        const Task act = [this] { log += "switched "; };
        const MenuEntry on{.name = "on", .caption = "switch", .action = act, .checked = true};
        return {{.name = "what", .caption = "played 3 times"},
                separator("a"),
                {.name = "more", .caption = "more", .children = {on}, .isSubmenu = true}};
    }

    Pipe out;
    PollLoop loop;
    QueuedOutput output{loop, out.in()};
    TerminalScreen screen{output, output, TerminalScreen::Form::protocol};
    ChatLines lines{loop};
    Conversations conversations{loop, lines, "lobby"};
    OwnRoom room{conversations, lines, "jo", {}};
    ShownLines shown{conversations, "[room] "};
    const ShowUnder show = [this](std::string_view head, const std::string& text) {
        screen.show(head, text);
    };
    TerminalDesktop desktop{show};
    TerminalCommands commands{
        show, desktop, roomWords(room, [this](const std::string& text) { screen.showRoom(text); }),
        [this](const std::string& line) { room.say(line); }};
    Window toy, other;
    RowList rows, faces;
    std::string log;
};

TEST_F(TerminalCommandsTest, KnowsItsWordsFromOtherLines) {
    for (const char* line : {"/show", "/SHOW x", "/quit"})
        EXPECT_TRUE(commands.words().knows(line)) << line;
    for (const char* line : {"/shows", "/", "/ show", "show", "", "//show", "/1"})
        EXPECT_FALSE(commands.words().knows(line)) << line;
    EXPECT_TRUE(SlashWords::isMeantForIt("/shows"));
    EXPECT_FALSE(SlashWords::isMeantForIt("/1"));
    EXPECT_EQ(run("/shows x"), "[terminal] /shows is unknown, /help tells what there is\n");
    EXPECT_TRUE(run("/help windows").find("[terminal] /set WINDOW.CONTROL VALUE") !=
                std::string::npos);
}

TEST_F(TerminalCommandsTest, PrintsWindowsAPageAtATime) {
    EXPECT_EQ(run("/windows"), "[window] Toy\n[window] other (hidden)\n");
    EXPECT_EQ(run("/show other"), "[window] other (hidden)\n");
    EXPECT_EQ(run("/show other 2"), "[terminal] other has one page\n");
    rows.setCurrentIndex(44);
    rows.setSelected(43, true);
    const std::string first = run("/show toy");
    EXPECT_TRUE(first.starts_with("[window] Toy\n"
                                  "[window] Toy.title: label \"  a\\ntitle\"\n"
                                  "[window] Toy.close: button \"  X\" (close)\n"
                                  "[window] Toy.list: list, 45 rows, page 1 of 3\n"
                                  "[window]       1 row 1\n"))
        << first;
    EXPECT_TRUE(first.ends_with("[window]      20 row 20\n"
                                "[window] Toy.faces: combo, 3 rows\n"
                                "[window]       1 arial\n"
                                "[window]       2 12\n"
                                "[window]       3 webdings\n"
                                "[window] Toy.volume: slider 50 (0 to 100)\n"
                                "[window] Toy.words: text field \"old\"\n"
                                "[window] Toy.color: swatch #112233\n"))
        << first;
    const std::string last = run("/show toy 3");
    EXPECT_TRUE(last.starts_with("[window] Toy.list: list, 45 rows, page 3 of 3\n"
                                 "[window]      41 row 41\n"))
        << last;
    EXPECT_NE(last.find("[window]  *   44 row 44\n[window] >    45 row 45\n"), std::string::npos)
        << last;
}

TEST_F(TerminalCommandsTest, WorksControls) {
    for (const auto& [line, done] : {std::pair("/double toy.TITLE", "resized "),
                                     {"/click toy.list 3", "at 2 "},
                                     {"/double toy.list", "at 2 played "},
                                     {"/select toy.list 1 44-45 7", "at 6 "},
                                     {"/key toy.list Delete", "delete "},
                                     {"/key toy.list menu", "menu of 6"},
                                     {"/hover toy.list", "hint "},
                                     {"/set toy.volume 200", "100"},
                                     {"/set toy.words  two words ", "( two words )"},
                                     {"/set toy.words ", "()"},
                                     {"/set toy.faces Webdings", "webdings"},
                                     {"/set toy.faces 1", "arial"},
                                     {"/set toy.faces 12", "12"}}) // a row that reads so
        EXPECT_EQ(effect(line), done) << line;
    run("/click toy.close");
    EXPECT_FALSE(toy.visible);
}

TEST_F(TerminalCommandsTest, TellsWhatCantBeDone) {
    const std::pair<std::string, std::string> cases[] = {
        {"/show", "/show WINDOW [PAGE]"},
        {"/show nothing", "there is no window nothing"},
        {"/click toy.x", "Toy has no control x"},
        {"/click toy.secret", "Toy.secret is hidden"},
        {"/click toy.list", "no row of Toy.list is current: which one?"},
        {"/click toy.list 0", "Toy.list has the rows 1 to 45"},
        {"/click toy.list 99999999999", "Toy.list has the rows 1 to 45"},
        {"/click toy.title 1", "Toy.title has no rows"},
        {"/select toy.list 3-1", "/select WINDOW.CONTROL ROW..."},
        {"/select toy.faces 1", "Toy.faces is no list"},
        {"/key toy.list x", "/key WINDOW.CONTROL delete|enter|escape|menu"},
        {"/key toy.list menu", "Toy.list has no menu now"}, // without a current row
        {"/set toy.volume loud", "Toy.volume takes a number"},
        {"/set toy.title x", "Toy.title has no value to set"},
        {"/choose what", "no menu is open"},
        {"/menu", "there is no tray icon"},
        {"/as", "/as NAME [TEXT]"},
        {"/bye", "/bye NAME"},
        {"/whisper bob", "/whisper NAME TEXT"},
        {"/now", "/now LINE"},
    };
    for (const auto& [line, told] : cases)
        EXPECT_EQ(run(line), "[terminal] " + told + '\n') << line;
    EXPECT_EQ(log, "");
    toy.visible = false;
    EXPECT_EQ(run("/click toy.close"), "[terminal] Toy is hidden\n");
}

TEST_F(TerminalCommandsTest, PrintsMenusAndChoosesFromThem) {
    desktop.addTrayIcon({.menu = {"file", [this] { return entries(); }},
                         .onDoubleClick = [this] { log += "shown "; }});
    EXPECT_EQ(run("/menu"), "[menu] file\n[menu]   what: played 3 times\n[menu]   a: -\n"
                            "[menu]   more: more\n[menu]     on: switch (checked)\n");
    EXPECT_EQ(run("/menu more"), "[menu] more: more\n[menu]   on: switch (checked)\n");
    EXPECT_EQ(run("/menu of"), "[terminal] the menu has no entry of\n");
    EXPECT_EQ(run("/menu what"), "");
    EXPECT_EQ(effect("/menu ON"), "switched ");
    EXPECT_EQ(effect("/tray"), "shown ");

    desktop.popUp({"lists", [this] { return entries(); }});
    EXPECT_TRUE(out.readNow().starts_with("[menu] lists\n[menu]   what:"));
    EXPECT_EQ(effect("/choose more"), "");
    EXPECT_EQ(effect("/choose on"), "switched ");
    EXPECT_EQ(run("/choose on"), "[terminal] no menu is open\n");
    desktop.removeTrayIcon();
    EXPECT_EQ(run("/menu on"), "[terminal] there is no tray icon\n");
}

TEST_F(TerminalCommandsTest, SaysLinesAtOnceAndForOthers) {
    EXPECT_EQ(effect("/now  'stop /x"), "jo= 'stop /x ");
    EXPECT_EQ(run("/as bob  hi"), "[room] bob comes in\nbob:  hi\n");
    EXPECT_EQ(std::exchange(log, {}), "bob= hi ");
    EXPECT_EQ(effect("/quit"), "quit ");
}

TEST_F(TerminalCommandsTest, TellsWhoIsInWhichRoom) {
    EXPECT_EQ(run("/room"), "[room] lobby, 1 person\n[room]   jo\n");
    EXPECT_EQ(run("/room  my den "), "[room] you are in my den\n");
    run("/as bob");
    run("/as eve");
    room.toggleIgnored({"bob", 1, 1});
    room.eject({"eve", 2, 1});
    EXPECT_EQ(run("/room"), "[room] bob is ignored\n[room] eve is put out\n"
                            "[room] my den, 2 people\n[room]   jo\n[room]   bob (ignored)\n"
                            "[room]   eve (kept out)\n");
    EXPECT_EQ(run("/bye BOB"), "[room] bob goes\n");
    EXPECT_EQ(run("/whisper bob  psst"), ""); // he is still ignored
    for (int number = 0; number < 200; ++number)
        run("/as " + std::to_string(number));
    EXPECT_TRUE(run("/room").ends_with("[room]   198\n[room]   and 1 more\n"
                                       "[room]   eve (kept out)\n"));
}

} // namespace
} // namespace larkspin
