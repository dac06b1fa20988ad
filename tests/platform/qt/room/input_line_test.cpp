// The line to type in, with real keys and a real mouse: what it offers to become, and what becomes
// of pasted lines.
#include "platform/qt/room/input_line.h"

#include "host/line_history.h"
#include "support/patience.h"
#include "support/virtual_machine.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct InputLineTest : testing::Test {
    InputLineTest() {
        auto* const rows = new QVBoxLayout(&window);
        rows->addStretch(1);
        rows->addWidget(&line);
        window.resize(600, 400);
        line.typing.onTab(
            [this](std::string_view typed) { return completionOf(machine.state(), typed); });
        line.typing.onLine([this](const std::string& said) { lines.push_back(said); });
        line.typing.onBegin([this] { ++begins; });
        line.typing.holdAfter([](const std::string& said) { return said == "/login"; });
        window.show();
        EXPECT_TRUE(comes([this] {
            window.activateWindow();
            return window.isActiveWindow();
        }));
        line.setFocus();
    }
    template <typename Condition> static bool comes(Condition condition) {
        return QTest::qWaitFor(condition, patienceInMilliseconds);
    }

    // By a real hand, whose keys come one after the other by way of the display.
    void strike(const QStringList& keys) {
        QProcess::execute("xdotool", QStringList("key") + keys);
    }
    void type(const QString& text) { QProcess::execute("xdotool", {"type", text}); }
    void clickAt(const QWidget& widget, QPoint at) {
        const QPoint point = widget.mapToGlobal(at);
        QProcess::execute("xdotool", {"mousemove", QString::number(point.x()),
                                      QString::number(point.y()), "click", "1"});
    }
    bool reads(const char* text) {
        return comes([&] { return line.text() == text; });
    }
    void paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
    }

    // What stands above the line, if anything does.
    template <typename Panel> Panel* above() {
        auto* const panel = window.findChild<Panel*>();
        return panel && panel->isVisible() ? panel : nullptr;
    }
    std::string offered() {
        const auto* const list = above<ChoiceList>();
        std::string all;
        for (int row = 0; list && row < list->count(); ++row)
            all += (row == list->currentRow() ? ">" : " ") +
                   list->item(row)->data(Qt::AccessibleTextRole).toString().toStdString() +
                   list->item(row)->text().toStdString() + '\n';
        return all;
    }
    bool offers(const char* all) {
        return comes([&] { return offered() == all; });
    }
    std::string asked() {
        auto* const panel = above<PasteQuestion>();
        return panel ? panel->accessibleName().toStdString() : "";
    }

    VirtualMachine machine{Lines{"rain.mp3", "ride on.mp3", "ride.mp3"}};
    LineHistory history{machine.kept, machine.drive("data") + "\\history.txt"};
    QWidget window;
    InputLine& line = *new InputLine(history);
    Lines lines; // that have been said
    int begins = 0;
};

TEST_F(InputLineTest, OffersWhatItCanBecomeAndTakesWhatIsChosenByKeys) {
    type("'num r\t");
    EXPECT_TRUE(offers(">1  rain\n 2  ride\n 3  ride on\n")) << offered();
    EXPECT_LE(above<ChoiceList>()->geometry().bottom(), line.geometry().top());
    type("i");
    EXPECT_TRUE(offers(">2  ride\n 3  ride on\n")) << offered();
    strike({"Down"});
    EXPECT_TRUE(offers(" 2  ride\n>3  ride on\n"));
    EXPECT_EQ(line.accessibleDescription(), "3  ride on");
    strike({"Return"});
    EXPECT_TRUE(reads("'num 3"));
    EXPECT_EQ(offered(), "");
    line.typing.empty();
    type("'pl\t");
    EXPECT_TRUE(
        comes([&] { return offered().find("plays the song'play *\n") != std::string::npos; }));
    strike({"shift+Tab", "Escape"});
    EXPECT_TRUE(offers(""));
    EXPECT_EQ(line.text(), "'pl");
    EXPECT_EQ(lines, Lines{});
    strike({"Return"});
    EXPECT_TRUE(comes([&] { return lines == Lines{"'pl"}; }));
}

TEST_F(InputLineTest, OffersWhatTheMouseTakes) {
    type("'play r\t");
    ASSERT_TRUE(offers(">rain\n ride\n ride on\n")) << offered();
    auto& list = *above<ChoiceList>();
    clickAt(list, list.visualItemRect(list.item(1)).center());
    EXPECT_TRUE(reads("'play ride"));
    EXPECT_EQ(offered(), "");
    EXPECT_TRUE(line.hasFocus());
    line.typing.empty();
    type("'rnd r\t");
    ASSERT_TRUE(comes([&] { return above<ChoiceList>() != nullptr; }));
    clickAt(window, {5, 5});
    window.setFocus();
    EXPECT_TRUE(offers("")) << "when the keyboard goes elsewhere";
}

TEST_F(InputLineTest, SaysSeveralPastedLinesOnlyWhenItsOwnerWantsIt) {
    struct Case {
        const char* pasted;
        const char* question;
        Qt::Key answer;
        Lines said;
        const char* left;
    };
    const Case cases[] = {
        {"one\ntwo\r\n\nthree\u2028four\n",
         "say 4 lines?",
         Qt::Key_Return,
         {"<one", "two", "three", "four>"},
         ""},
        {"one\ntwo", "say 2 lines?", Qt::Key_Escape, {}, "<>"},
        {"one\ntwo", "say 2 lines?", Qt::Key_X, {}, "<x>"},
        {"one\n", "", Qt::Key_Shift, {}, "<one>"},
        {"\n", "", Qt::Key_Shift, {}, "<>"},
    };
    for (const auto& [pasted, question, answer, said, left] : cases) {
        SCOPED_TRACE(pasted);
        line.typing.empty();
        lines.clear();
        line.typing.put({"<>", 1});
        paste(pasted);
        EXPECT_EQ(asked(), question);
        EXPECT_EQ(lines, Lines{});
        QTest::keyClick(&line, answer);
        EXPECT_EQ(lines, said);
        EXPECT_EQ(line.text(), left);
    }
    line.typing.empty();
    const int before = begins;
    paste("one\n/login\nsesam\n");
    EXPECT_EQ(begins, before + 1);
    EXPECT_EQ(asked(), "say 2 lines?") << "the third one may be a password";
    const auto buttons = above<PasteQuestion>()->findChildren<QPushButton*>();
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    EXPECT_EQ(lines, (Lines{"one", "/login"}));
    EXPECT_EQ(asked(), "");
    EXPECT_EQ(line.echoMode(), QLineEdit::Password);
    paste("one\ntwo");
    EXPECT_EQ(asked(), "") << "a password isn't shown";
}

TEST_F(InputLineTest, TakesNoMoreThanALineHoldsWhereverItIsPasted) {
    paste(QString(9999, 'x'));
    EXPECT_EQ(line.text().size(), LineHistory::mostCharacters);
    type("y");
    strike({"BackSpace"});
    EXPECT_TRUE(comes([&] { return line.text().size() == LineHistory::mostCharacters - 1; }));
    line.typing.put({"<>", 1});
    paste(QString(9999, 'x'));
    EXPECT_EQ(line.text().size(), LineHistory::mostCharacters);
    EXPECT_TRUE(line.text().endsWith("x>"));
    paste(QString("line\n").repeated(1234));
    EXPECT_EQ(asked(), "say the first 100 of 1234 lines?");
    window.resize(300, 200);
    EXPECT_TRUE(comes(
        [&] { return above<PasteQuestion>()->geometry().bottom() <= line.geometry().top(); }));
}

} // namespace
} // namespace larkspin
