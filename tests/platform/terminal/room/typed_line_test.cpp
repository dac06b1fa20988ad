// The line to type in on the terminal's screen: its keys, what it offers to become, and what
// becomes of pasted lines.
#include "platform/terminal/room/typed_line.h"

#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using Kind = KeyStroke::Kind;

KeyStroke plain(Kind kind) {
    return {.kind = kind};
}

KeyStroke control(char32_t character) {
    return {.character = character, .ctrl = true};
}

KeyStroke alt(char32_t character) {
    return {.character = character, .alt = true};
}

struct TypedLineTest : testing::Test {
    TypedLineTest() {
        line.typing.onTab(
            [this](std::string_view typed) { return completionOf(machine.state(), typed); });
        line.typing.onLine([this](const std::string& said) { lines.push_back(said); });
        line.typing.onBegin([this] { ++begins; });
        line.typing.onRefusal([this] { ++refusals; });
        line.typing.holdAfter([](const std::string& said) { return said == "/login"; });
    }

    void type(std::string_view text) {
        for (const char32_t character : charactersOf(text))
            line.take(character == U'\t'   ? plain(Kind::tab)
                      : character == U'\n' ? plain(Kind::enter)
                                           : KeyStroke{.character = character});
    }
    void click(int row, int column) {
        line.take(MouseStroke{.button = MouseStroke::Button::left, .row = row, .column = column});
    }

    // The rows that are drawn, with "|" where the cursor stands.
    std::string seen(int columns = 30) {
        const int rows = 6;
        Cells cells(rows, columns);
        const Cursor cursor = line.draw(cells, {rows - 1, 0, 1, columns}, "jo: ", {});
        cursorAt = cursor.column;
        line.drawOffers(cells, {0, 0, rows - 1, columns}, {.marked = {.reversed = true}});
        std::string all;
        for (int row = 0; row < rows; ++row) {
            const std::string text = textOf(cells)[static_cast<std::size_t>(row)];
            const bool isMarked = cells.at(row, 0).style.reversed;
            if (!text.empty())
                all += (isMarked ? ">" : "") + text + '\n';
        }
        return all;
    }

    VirtualMachine machine{Lines{"rain.mp3", "ride on.mp3", "ride.mp3"}};
    LineHistory history{machine.kept, machine.drive("data") + "\\history.txt"};
    TypedLine line{history};
    Lines lines; // that have been said
    int begins = 0, refusals = 0, cursorAt = 0;
};

TEST_F(TypedLineTest, HasTheKeysThatShellsHave) {
    struct Case {
        const char* typed;
        std::vector<KeyStroke> keys;
        const char* text;
        std::size_t cursor;
    };
    const Case cases[] = {
        {"ab",
         {plain(Kind::left), plain(Kind::left), plain(Kind::left), plain(Kind::right)},
         "ab",
         1},
        {"ab", {plain(Kind::home), plain(Kind::del)}, "b", 0},
        {"ab", {control(U'a'), control(U'e'), plain(Kind::backspace)}, "a", 1},
        {"one two", {alt(U'b'), control(U'k')}, "one ", 4},
        {"one two", {alt(U'b'), control(U'u')}, "two", 0},
        {"one two-2", {control(U'w')}, "one ", 4},
        {"one two-2", {{.kind = Kind::backspace, .alt = true}}, "one two-", 8},
        {"one two", {control(U'w'), control(U'a'), control(U'y')}, "twoone ", 3},
        {"one two", {control(U'a'), alt(U'd')}, " two", 0},
        {"one two", {{.kind = Kind::left, .ctrl = true}, control(U'f')}, "one two", 5},
        {"ab", {control(U't'), control(U't')}, "ab", 2},
        {"one two", {alt(U'b'), control(U'c')}, "", 0},
        {"one two", {alt(U'b'), control(U'c'), control(U'y')}, "one two", 7},
        {"e\u0301x", {plain(Kind::left), plain(Kind::left)}, "e\u0301x", 0},
        {"xe\u0301", {plain(Kind::backspace)}, "x", 1},
        {"a\u65E5", {control(U'b'), control(U'd')}, "a", 1},
        {"'x", {{.kind = Kind::up, .alt = true}, alt(U'1'), plain(Kind::pageUp)}, "'x", 2},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.text);
        line.typing.empty();
        type(example.typed);
        for (const KeyStroke& key : example.keys)
            line.take(key);
        EXPECT_EQ(line.typing.draft().text, example.text);
        EXPECT_EQ(line.typing.draft().cursor, example.cursor);
    }
    EXPECT_EQ(lines, Lines{});
}

TEST_F(TypedLineTest, ComesBackFromTheHistory) {
    type("one\ntwo\nhalf");
    for (const auto& [key, text] : {std::pair(Kind::up, "two"),
                                    {Kind::up, "one"},
                                    {Kind::up, "one"},
                                    {Kind::down, "two"},
                                    {Kind::down, "half"},
                                    {Kind::down, "half"}}) {
        EXPECT_TRUE(line.take(plain(key)));
        EXPECT_EQ(line.typing.draft().text, text);
    }
    EXPECT_EQ(lines, (Lines{"one", "two"}));
    EXPECT_EQ(begins, 3);
}

TEST_F(TypedLineTest, ShowsThePartInWhichTheCursorIs) {
    type("a line that is far too long");
    EXPECT_EQ(seen(20), "jo: oo long\n");
    EXPECT_EQ(cursorAt, 11);
    line.take(control(U'a'));
    EXPECT_EQ(seen(20), "jo: a line that is f\n");
    EXPECT_EQ(cursorAt, 4);
    line.typing.empty();
    type("\u65E5\u672Cx");
    EXPECT_EQ(seen(20), "jo: \u65E5\u672Cx\n");
    EXPECT_EQ(cursorAt, 9);
    line.typing.empty();
    line.take(PasteStroke{"a\u200B\u202Ex"});
    EXPECT_EQ(seen(20), "jo: a\uFFFD\uFFFDx\n");
    EXPECT_EQ(cursorAt, 8);
    seen(3);
    EXPECT_LT(cursorAt, 3);
}

TEST_F(TypedLineTest, OffersWhatItCanBecomeAndTakesWhatIsChosen) {
    type("'num r\t");
    EXPECT_EQ(seen(), "> 1  rain\n 2  ride\n 3  ride on\njo: 'num r\n");
    type("i");
    EXPECT_EQ(seen(), "> 2  ride\n 3  ride on\njo: 'num ri\n");
    line.take(plain(Kind::up)); // around the end
    EXPECT_EQ(seen(), " 2  ride\n> 3  ride on\njo: 'num ri\n");
    type("\n");
    EXPECT_EQ(seen(), "jo: 'num 3\n");
    line.typing.empty();
    type("'vo\t");
    EXPECT_EQ(line.typing.draft().text, "'volume ") << "there is no other";
    line.typing.empty();
    type("'pl\t");
    EXPECT_NE(seen(60).find("plays the song"), std::string::npos);
    line.take({KeyStroke{.kind = Kind::tab, .shift = true}});
    line.take(plain(Kind::escape));
    EXPECT_EQ(seen(), "jo: 'pl\n");
    type("\tay *");
    EXPECT_EQ(seen(), "jo: 'play *\n") << "nothing fits";
    EXPECT_EQ(lines, Lines{});
    type("\n");
    EXPECT_EQ(lines, Lines{"'play *"});
    EXPECT_FALSE(line.take(plain(Kind::tab))) << "in an empty line it has another use";
    type("'nosuch\t");
    EXPECT_EQ(refusals, 1);
}

TEST_F(TypedLineTest, OffersWhatTheMouseTakes) {
    type("'play r\t");
    EXPECT_EQ(seen(), "> rain\n ride\n ride on\njo: 'play r\n");
    click(3, 2);
    EXPECT_EQ(seen(), "jo: 'play ride\n");
    line.typing.empty();
    type("'play r\t");
    seen();
    click(0, 20);
    EXPECT_EQ(seen(), "jo: 'play r\n") << "beside it";
}

TEST_F(TypedLineTest, SaysSeveralPastedLinesOnlyWhenItsOwnerWantsIt) {
    struct Case {
        const char* pasted;
        KeyStroke answer;
        Lines said;
        const char* left;
        const char* question = "";
    };
    const Case cases[] = {
        {"one\ntwo\r\n\nthree\u2028four\n",
         plain(Kind::enter),
         {"<one", "two", "three", "four>"},
         "",
         "say 4 lines?"},
        {"one\ntwo", plain(Kind::escape), {}, "<>", "say 2 lines?"},
        {"one\ntwo", {.character = U'x'}, {}, "<x>", "say 2 lines?"},
        {"one\ntwo", plain(Kind::down), {}, "<>", "say 2 lines?"},
        {"one\n", plain(Kind::pageUp), {}, "<one>"},
        {"a\x1b[31m\x07", plain(Kind::pageUp), {}, "<a\x1b[31m\x07>"},
        {"\n", plain(Kind::pageUp), {}, "<>"},
    };
    for (const auto& [pasted, answer, said, left, question] : cases) {
        SCOPED_TRACE(pasted);
        line.typing.empty();
        lines.clear();
        line.typing.put({"<>", 1});
        line.take(PasteStroke{pasted});
        const std::string shown = seen();
        EXPECT_EQ(shown.substr(1, std::string_view(question).size()), question);
        EXPECT_EQ(shown.find('\x1b'), std::string::npos);
        EXPECT_EQ(lines, Lines{});
        line.take(answer);
        EXPECT_EQ(lines, said);
        EXPECT_EQ(line.typing.draft().text, left);
    }
    line.typing.empty();
    line.take(PasteStroke{"one\n/login\nsesam\n"});
    EXPECT_EQ(seen(60), " say 2 lines?\n  one\n  /login\n [say them] [leave them]  Return says "
                        "them, Escape doesn't\njo:\n")
        << "the third one may be a password";
    click(4, 3);
    EXPECT_EQ(lines, (Lines{"one", "/login"}));
    line.take(PasteStroke{"one\ntwo"});
    EXPECT_EQ(seen(), "jo:\n") << "a password isn't shown";
}

TEST_F(TypedLineTest, HidesASecretFromBeforeItIsAskedFor) {
    type("/login\nses");
    EXPECT_EQ(seen(), "jo:\n");
    std::string secret = "none";
    line.typing.takeSecret([&](const std::string& typed) { secret = typed; });
    type("amX");
    line.take(plain(Kind::backspace));
    type("\n");
    EXPECT_EQ(secret, "sesam");
    EXPECT_EQ(seen(), "jo:\n");
    line.take(plain(Kind::up));
    EXPECT_EQ(line.typing.draft().text, "/login");
    line.typing.takeSecret([&](const std::string& typed) { secret = typed; });
    type("x");
    line.take(control(U'u'));
    line.take(control(U'c'));
    EXPECT_EQ(secret, "");
    line.take(control(U'y')); // which would bring it back
    EXPECT_FALSE(line.typing.isBegun());
}

TEST_F(TypedLineTest, CtrlCLeavesWhatIsAskedFirst) {
    EXPECT_FALSE(line.take(control(U'c'))) << "nothing is there to be left";
    type("half");
    line.take(PasteStroke{"one\ntwo"});
    type("\t"); // which is no answer
    EXPECT_TRUE(line.take(control(U'c')));
    EXPECT_EQ(seen(), "jo: half\n");
    EXPECT_TRUE(line.take(control(U'c')));
    EXPECT_EQ(seen(), "jo:\n");
    EXPECT_EQ(lines, Lines{});
}

TEST_F(TypedLineTest, TakesNoMoreThanALineHolds) {
    line.typing.put({"<>", 1});
    line.take(PasteStroke{std::string(1'000'000, 'x')});
    EXPECT_EQ(line.typing.draft().text.size(), LineHistory::mostCharacters);
    EXPECT_TRUE(line.typing.draft().text.ends_with("x>"));
    EXPECT_EQ(refusals, 1);
    std::string many;
    for (int count = 0; count < 1234; ++count)
        many += "line\n";
    line.typing.empty();
    line.take(PasteStroke{many});
    EXPECT_EQ(seen(40).substr(1, 32), "say the first 100 of 1234 lines?");
    line.typing.put({"elsewhere", 9});
    EXPECT_EQ(seen(), "jo: elsewhere\n");
}

} // namespace
} // namespace larkspin
