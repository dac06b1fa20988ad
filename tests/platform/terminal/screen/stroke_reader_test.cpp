#include "platform/terminal/screen/stroke_reader.h"

#include <gtest/gtest.h>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Key = KeyStroke::Kind;
using Mouse = MouseStroke::Kind;
using Button = MouseStroke::Button;
using namespace std::string_literals;

KeyStroke typed(char32_t character, bool alt = false, bool ctrl = false) {
    return {.character = character, .alt = alt, .ctrl = ctrl};
}
KeyStroke key(Key kind, bool shift = false, bool alt = false, bool ctrl = false) {
    return {.kind = kind, .shift = shift, .alt = alt, .ctrl = ctrl};
}
KeyStroke function(int number, bool shift = false) {
    return {.kind = Key::function, .number = number, .shift = shift};
}

const struct {
    std::string bytes;
    std::vector<Stroke> strokes;
} cases[] = {
    {"aé日", {typed('a'), typed(U'é'), typed(U'日')}},
    {"\r\n\t\x7F\x08",
     {key(Key::enter), key(Key::enter), key(Key::tab), key(Key::backspace), key(Key::backspace)}},
    {"\x01\x1A\x1F\0"s,
     {typed('a', false, true), typed('z', false, true), typed('_', false, true),
      typed(' ', false, true)}},
    {"\x1b[A\x1bOB\x1b[H\x1bOF\x1b[1~\x1b[8~",
     {key(Key::up), key(Key::down), key(Key::home), key(Key::end), key(Key::home), key(Key::end)}},
    {"\x1b[2~\x1b[3~\x1b[5~\x1b[6~\x1b[Z",
     {key(Key::insert), key(Key::del), key(Key::pageUp), key(Key::pageDown), key(Key::tab, true)}},
    {"\x1b[1;2A\x1b[1;3C\x1b[1;5D\x1b[1;8B\x1b[3;5~",
     {key(Key::up, true), key(Key::right, false, true), key(Key::left, false, false, true),
      key(Key::down, true, true, true), key(Key::del, false, false, true)}},
    {"\x1bOP\x1b[11~\x1b[[E\x1b[15~\x1b[24~\x1b[1;2R",
     {function(1), function(1), function(5), function(5), function(12), function(3, true)}},
    {"\x1b[25~\x1b[33~\x1b[34~", {function(3, true), function(9, true), function(10, true)}},
    {"\x1b[97;5u\x1b[27;5;108~\x1b[27;2;13~\x1b[9;2u\x1b[98;3u\x1b[27u\x1b[57376u\x1b[233u",
     {typed('a', false, true), typed('l', false, true), key(Key::enter, true), key(Key::tab, true),
      typed('b', true), key(Key::escape), typed(U'é')}},
    {"\x1b[a\x1bOc\x1b[3$\x1b[5^",
     {key(Key::up, true), key(Key::right, false, false, true), key(Key::del, true),
      key(Key::pageUp, false, false, true)}},
    {"\x1b"
     "3\x1b\x7F\x1b\r\x1b\x1b[A\x1b\x02",
     {typed('3', true), key(Key::backspace, false, true), key(Key::enter, false, true),
      key(Key::up, false, true), typed('b', true, true)}},
    {"\x1b/s\x1b's",
     {key(Key::escape), typed('/'), typed('s'), key(Key::escape), typed('\''), typed('s')}},
    {"\x1b\x1bx", {key(Key::escape), typed('x', true)}},
    {"\x1bOM\x1bOj\x1bOy\x1bOx", {key(Key::enter), typed('*'), typed('9'), typed('8')}},
    {"\x1b[<0;3;5M\x1b[<32;4;5M\x1b[<0;4;5m",
     {MouseStroke{.button = Button::left, .row = 4, .column = 2},
      MouseStroke{.kind = Mouse::move, .button = Button::left, .row = 4, .column = 3},
      MouseStroke{.kind = Mouse::release, .button = Button::left, .row = 4, .column = 3}}},
    {"\x1b[<64;1;1M\x1b[<69;300;1M\x1b[<18;1;1M\x1b[<35;2;2M",
     {MouseStroke{.kind = Mouse::wheelUp},
      MouseStroke{.kind = Mouse::wheelDown, .column = 299, .shift = true},
      MouseStroke{.button = Button::right, .ctrl = true},
      MouseStroke{.kind = Mouse::move, .row = 1, .column = 1}}},
    {"\x1b[M !!\x1b[M#\"!",
     {MouseStroke{.button = Button::left}, MouseStroke{.kind = Mouse::release, .column = 1}}},
    {"\x1b[200~one\r\ntwo\rthree\x1b[A\x1b[201~x",
     {PasteStroke{"one\ntwo\nthree\x1b[A"}, typed('x')}},
    {"\x1b\x1b[200~\x1b[201~", {key(Key::escape), PasteStroke{}}},
    // What means nothing, or is cut short, takes nothing with it.
    {"\x1b[99~\x1b[?62;c\x1b[<0;0;1M\x1b[<66;1;1M\x1b[<200;1;1M\x1b[[xa\x1b[201~", {typed('a')}},
    {"\x1b[12\x01z", {typed('a', false, true), typed('z')}},
    {"\xC3(\xFFz", {typed(0xFFFD), typed('('), typed(0xFFFD), typed('z')}},
    {"\x1b[99999999999999999999999999~\xC2\x9Bz", {typed('z')}},
};

TEST(StrokeReader, KnowsWhatTheHandDoes) {
    for (const auto& [bytes, strokes] : cases) {
        StrokeReader reader;
        EXPECT_EQ(reader.take(bytes, 0s), strokes) << testing::PrintToString(bytes);
        EXPECT_FALSE(reader.patience());
    }
}

TEST(StrokeReader, KnowsItAlsoByteByByte) {
    for (const auto& [bytes, strokes] : cases) {
        StrokeReader reader;
        std::vector<Stroke> found;
        for (const char byte : bytes)
            for (Stroke& stroke : reader.take({&byte, 1}, 0s))
                found.push_back(std::move(stroke));
        EXPECT_EQ(found, strokes) << testing::PrintToString(bytes);
    }
}

TEST(StrokeReader, WaitsForTheRestOfAKeyAndGivesItUp) {
    const struct {
        std::string bytes;
        bool isKey; // that the owner may have struck, and looks for what it does
        std::vector<Stroke> strokes;
    } unfinished[] = {
        {"\x1b", true, {key(Key::escape)}},
        {"\x1b\x1b", true, {key(Key::escape), key(Key::escape)}},
        {"\x1b[", true, {typed('[', true)}},
        {"\x1bO", true, {typed('O', true)}},
        {"\x1b[1;5", false, {}},
        {"\x1b[200", false, {}},
        {"\x1b[M !", false, {}},
        {"\xE6\x97", false, {typed(0xFFFD), typed(0xFFFD)}},
        {"\x1b[200~one\x1b[2", false, {PasteStroke{"one\x1b[2"}}},
    };
    for (const auto& [bytes, isKey, strokes] : unfinished) {
        StrokeReader reader;
        EXPECT_TRUE(reader.take(bytes, 0s).empty());
        EXPECT_EQ(reader.patience().value() < 100ms, isKey) << testing::PrintToString(bytes);
        EXPECT_EQ(reader.giveUp(), strokes) << testing::PrintToString(bytes);
        EXPECT_EQ(reader.take("x", 0s), std::vector<Stroke>{typed('x')});
    }
}

TEST(StrokeReader, KnowsASecondClickByTimeAndPlace) {
    const struct {
        std::string bytes;
        std::chrono::milliseconds at;
        bool isSecond;
    } presses[] = {{"\x1b[<0;3;5M", 0ms, false},   {"\x1b[<0;3;5M", 300ms, true},
                   {"\x1b[<0;3;5M", 500ms, false}, // a third one begins anew
                   {"\x1b[<0;4;5M", 600ms, false}, {"\x1b[<2;4;5M", 700ms, false},
                   {"\x1b[<2;4;5M", 1200ms, false}};
    StrokeReader reader;
    for (const auto& [bytes, at, isSecond] : presses)
        EXPECT_EQ(std::get<MouseStroke>(reader.take(bytes, at).at(0)).isSecond, isSecond)
            << at.count();
}

TEST(StrokeReader, TakesAPasteOfAMegabyteInPieces) {
    StrokeReader reader;
    const std::string line(99, 'x'), pasted = "\x1b[200~";
    EXPECT_TRUE(reader.take(pasted, 0s).empty());
    for (int count = 0; count < 10'000; ++count)
        EXPECT_TRUE(reader.take(line + '\r', 0s).empty());
    const auto strokes = reader.take("\x1b[201~", 0s);
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(std::get<PasteStroke>(strokes[0]).text.size(), 1'000'000U);
}

} // namespace
} // namespace larkspin
