// The parts of the terminal front end on pipes: lines in turn or at once, questions, markup.
#include "platform/terminal/line_reader.h"
#include "platform/terminal/markup.h"
#include "platform/terminal/terminal_dialogs.h"
#include "platform/terminal/terminal_screen.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends), 0); }
    ~Pipe() {
        ::close(ends[0]);
        closeIn();
    }
    void closeIn() { ::close(std::exchange(ends[1], -1)); }
    int ends[2]{};
};

class TypedLinesTest : public testing::TestWithParam<Nanoseconds> {
protected:
    void type(const std::string& text) {
        EXPECT_EQ(::write(in.ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    std::string shown() {
        char bytes[1000];
        const ssize_t count = ::read(out.ends[0], bytes, sizeof bytes);
        return {bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }
    void open() {
        input.open(
            [this](const std::string& line) {
                log += line + "(";
                if (line == "wait")
                    loop.waitUntil(loop.now() + 100ms);
                if (line == "ask")
                    log += dialogs.ask("sure?\nreally?") ? "yes" : "no";
                log += ")";
            },
            [this] { log += "end"; });
    }
    void runToEnd() {
        loop.waitFor([this] { return log.find("end") != std::string::npos; }, loop.now() + 5s);
    }

    Pipe in, out;
    PollLoop loop;
    std::string log;
    TerminalInput input{loop, GetParam()};
    LineReader reader{loop, input, in.ends[0]};
    TerminalScreen screen{out.ends[1], TerminalScreen::Form::protocol};
    TerminalDialogs dialogs{screen, input};
};

INSTANTIATE_TEST_SUITE_P(, TypedLinesTest, testing::Values(TerminalInput::never, 5ms),
                         [](const auto& patience) {
                             return patience.param == TerminalInput::never ? "Script" : "Owner";
                         });

TEST_P(TypedLinesTest, ComeInTurnOrInTheMiddleOfOthers) {
    type("early\nwait\nnext\r\n\nlast");
    in.closeIn();
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(log, "");
    open();
    runToEnd();
    EXPECT_EQ(log, GetParam() == TerminalInput::never ? "early()wait()next()()last()end"
                                                      : "early()wait(next()()last()end)");
}

TEST_P(TypedLinesTest, AnswerAQuestionInTheMiddleOfALine) {
    open();
    type("ask\nYes!\nask\nsomething else\nask\n");
    in.closeIn();
    runToEnd();
    EXPECT_EQ(log, "ask(yes)ask(no)ask(no)end");
    EXPECT_EQ(shown(), "[ask] sure?\\nreally?\n[ask] sure?\\nreally?\n[ask] sure?\\nreally?\n");
}

TEST(Markup, BecomesWhatATerminalShows) {
    const struct {
        std::string_view text, shown;
    } cases[] = {
        {"plain <3 a<b and >", "plain <3 a<b and >"},
        {"<b>a</b> <U>b</U> <i>c</i>", "\x1b[1ma\x1b[22m \x1b[4mb\x1b[24m \x1b[3mc\x1b[23m"},
        {"</html><font face=\"a > b\" color=#5083a9>x", "\x1b[0m\x1b[38;2;80;131;169mx"},
        {"<font face=\" \" color=#>x</font>", "\x1b[39mx\x1b[39m"},
        {"<font color=#12345>x<font color=#12345G>y", "\x1b[39mx\x1b[39my"},
        {"<font face=\"open>x", "<font face=\"open>x"},
        {"<br>", "<br>"},
        {"one\ntwo", "one\ntwo"},
        {"\x1b]0;title\x07 \x7f \u009b31m \xff", "\uFFFD]0;title\uFFFD \uFFFD \uFFFD31m \uFFFD"},
        {"what\uF03F \uF03Cb> \uF00A", "what? <b> \uF00A"},
    };
    for (const auto& [text, shown] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(shownMarkup(text), std::string(shown) + "\x1b[0m");
    }
}

} // namespace
} // namespace larkspin
