// The room window, as the owner types in it and reads what is said.
#include "platform/qt/room/said_text.h"
#include "platform/qt/room/typed_room.h"

#include <QClipboard>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextLayout>

namespace larkspin {
namespace {

constexpr int afterTime = 6; // "19:05 "

struct RoomWindowTest : TypedRoom {};

TEST_F(RoomWindowTest, TakesLinesAndShowsWhatIsSaid) {
    const std::pair<std::string, std::string> cases[] = {
        {"hello\n", "Owner: hello"},
        {"\n", ""},
        {"'trig?\n", "Owner: 'trig?\nOwner: your trigger is ' "},
        {"/as bob 'exit\n", "bob comes in\nbob: 'exit"},
        {"/room\n", "lobby, 2 people\n  Owner\n  bob"},
        {"/bye bob\n", "bob goes"},
        {"/bye\n", "/bye NAME"},
        {"/huh\n", "/huh is unknown, /help tells what there is"},
        {"/quit\n", ""},
    };
    for (const auto& [keys, shown] : cases)
        EXPECT_EQ(shownFor(keys), shown) << keys;
    EXPECT_EQ(quits, 1);
    EXPECT_NE(shownFor("/help bye\n").find("/bye NAME  \u2013  lets"), std::string::npos);
}

// Qt draws in its next turn, so there must be one.
TEST_F(RoomWindowTest, AsksForOneMoreTurnWhenSomethingHasChanged) {
    int rests = 0;
    machine.loop.beforeSleep([&] { ++rests; });
    for (const std::function<void()>& change : {std::function<void()>([&] { room->tell("hi"); }),
                                                {[&] { room->window.roomChanged(); }}}) {
        change();
        for (const int turns : {2, 1}) {
            rests = 0;
            machine.advance(1ns);
            EXPECT_EQ(rests, turns);
        }
    }
}

TEST_F(RoomWindowTest, TakesWhatWasTypedBeforeItCouldButForAPassword) {
    machine.endProcess();
    open("one\n/login jo\nsesam\n");
    EXPECT_EQ(shown(), "Owner: one");
    EXPECT_EQ(ownName(), "password of jo:");
}

TEST_F(RoomWindowTest, TakesLinesWhileABoxIsOpen) {
    machine.dialogs.whileOpen = [this] {
        machine.dialogs.whileOpen = [] {};
        strike("'trig?\n");
    };
    EXPECT_EQ(shownFor([this] { machine.dialogs.box("anything"); }),
              "Owner: 'trig?\nOwner: your trigger is ' ");
}

TEST_F(RoomWindowTest, BringsTypedLinesBackAlsoInTheNextRun) {
    strike("one\ntwo\nthr^^|");
    EXPECT_EQ(typed(), "two");
    input().typing.empty();
    strike("/oper jo hush\n");
    input().undo(); // which would bring a secret back
    EXPECT_EQ(typed(), "");
    strike("^");
    EXPECT_EQ(typed(), "/oper jo ****");
    machine.endProcess();
    room->close();
    open();
    strike("^^");
    EXPECT_EQ(typed(), "one");
}

TEST_F(RoomWindowTest, CompletesOnTab) {
    const std::pair<std::string, std::string> cases[] = {
        {"'trig\t", "'trig"}, {"'num ri\t", "'num 2"}, {"/whi\t", "/whisper "}, {"zz\t", "zz"}};
    for (const auto& [keys, line] : cases) {
        machine.run([this] { input().typing.empty(); });
        strike(keys);
        EXPECT_EQ(typed(), line) << keys;
    }
    input().typing.empty();
    EXPECT_EQ(shownFor("'num r\t"), "") << "choices aren't told";
    input().typing.empty();
    input().setText("/whix");
    input().setCursorPosition(4);
    strike("\ta");
    EXPECT_EQ(typed(), "/whisper ax");
    input().typing.empty();
    strike("\t");
    EXPECT_NE(QApplication::focusWidget(), &input());
    input().setFocus();
    std::string reached;
    for (int step = 0; step < 2; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        reached += QApplication::focusWidget()->accessibleName().toStdString() + '\n';
    }
    EXPECT_EQ(reached, "people in the room\nwhat is said\n");
}

TEST_F(RoomWindowTest, ShowsMarkupAsStyleAndAllElseAsText) {
    const std::pair<std::string, std::string> cases[] = {
        {"<b>a</b> <i>b</i>", "a b"},
        {"<img src=\"file:///etc/passwd\">", "<img src=\"file:///etc/passwd\">"},
        {"<a href=\"http://x\">y</a>", "y http://x"},
        {"<script>x()</script>", "<script>x()</script>"},
        {"javascript:x &lt;b&gt;&#65;", "javascript:x &lt;b&gt;&#65;"},
        {"a\u202Eb\u2066c\u200Bd\u2028e\u0007f", "a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\uFFFDf"},
        {"one\nOwner: two", "one\n    Owner: two"},
        {long_ + "y", long_ + "\u2026"},
    };
    shownFor([this] { hear("he comes in"); });
    for (const auto& [line, shown] : cases) {
        EXPECT_EQ(shownFor([&, said = line] { hear(said); }), "bob: " + shown);
        EXPECT_EQ(said().document()->blockCount(), 1) << line;
        for (const QTextFormat& format : said().document()->allFormats()) {
            EXPECT_FALSE(format.isImageFormat()) << line;
            EXPECT_TRUE(QString("http://x").startsWith(format.toCharFormat().anchorHref())) << line;
        }
    }
    shownFor([&] { hear("<b><u><font color=#00ff00 face=\"LIBERATION mono\">x"); });
    QTextCursor cursor(said().document());
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, afterTime + 1);
    EXPECT_EQ(cursor.charFormat().fontWeight(), QFont::Bold) << "his name";
    cursor.movePosition(QTextCursor::End);
    const QTextCharFormat format = cursor.charFormat();
    EXPECT_EQ(format.fontWeight(), QFont::Bold);
    EXPECT_TRUE(format.fontUnderline());
    EXPECT_EQ(format.foreground().color(), QColor("#00ff00"));
    EXPECT_EQ(format.fontFamilies().toStringList(), QStringList("Liberation Mono"));
    shownFor([&] { room->rooms.own.sayAs({"\u05D0\u05D1", "<font face=arial>" + long_}); });
    EXPECT_LT(said().cursorRect(QTextCursor(said().document())).x(), 50) << "names stand left";
    EXPECT_EQ(said().horizontalScrollBar()->maximum(), 0);
    cursor.movePosition(QTextCursor::End);
    EXPECT_EQ(cursor.charFormat().fontFamilies().toStringList(), QStringList("Liberation Sans"));
}

TEST_F(RoomWindowTest, LeavesWordsWithASlashWhole) {
    strike("/help\n");
    QString rowEnds;
    for (QTextBlock block = said().document()->begin(); block.isValid(); block = block.next())
        for (int row = 0; row < block.layout()->lineCount(); ++row) {
            const QTextLine line = block.layout()->lineAt(row);
            rowEnds += block.text().mid(line.textStart(), line.textLength()).trimmed().right(1);
        }
    EXPECT_GT(rowEnds.size(), said().document()->blockCount()) << "there are several rows";
    EXPECT_FALSE(rowEnds.contains('/'));
    said().selectAll();
    said().copy();
    EXPECT_TRUE(QApplication::clipboard()->text().contains(" /join /leave"));
}

TEST(SaidText, LiftsColorsThatAreTooDarkOnBlack) {
    EXPECT_EQ(readable("#808080", Qt::black), QColor("#808080"));
    for (const char* dark : {"#000000", "#0000ff", "#400000"})
        EXPECT_GT(qGray(readable(dark, Qt::black).rgb()), 85) << dark;
    EXPECT_EQ(readable("#0000ff", Qt::black).blue(), 255);
    for (const char* light : {"#ffffff", "#00ffff", "#ffb84d"})
        EXPECT_LT(qGray(readable(light, Qt::white).rgb()), 150) << light;
}

TEST_F(RoomWindowTest, KeepsTheLastLinesAndThePlaceOfWhoReadsAbove) {
    const auto flood = [this](int from, int to) {
        machine.run([&] {
            for (int line = from; line < to; ++line)
                hear("line " + std::to_string(line));
        });
        settle();
    };
    QScrollBar& bar = *said().verticalScrollBar();
    const auto textOf = [](const QTextBlock& block) { return block.text().mid(afterTime); };
    const auto top = [&] { return textOf(said().cursorForPosition({5, 5}).block()); };
    flood(0, 10000);
    EXPECT_EQ(said().document()->blockCount(), Transcript::mostLines);
    EXPECT_EQ(textOf(said().document()->lastBlock()), "bob: line 9999");
    EXPECT_EQ(bar.value(), bar.maximum());
    QTest::keyClick(&input(), Qt::Key_PageUp);
    const QString read = top();
    flood(10000, 10100);
    EXPECT_EQ(top(), read);
    QTest::keyClick(&input(), Qt::Key_Plus, Qt::ControlModifier);
    settle();
    EXPECT_EQ(top(), read) << "in larger letters";
    EXPECT_LT(bar.value(), bar.maximum());
    EXPECT_EQ(textOf(said().document()->lastBlock()), "bob: line 10099");
    for (int time = 0; time < 5; ++time)
        flood(0, Transcript::mostLines); // what was read is gone
    EXPECT_EQ(said().document()->blockCount(), Transcript::mostReadBack);
    EXPECT_EQ(top(), "bob: line 0");
    const int before = bar.value();
    QTest::keyClick(&input(), Qt::Key_PageDown);
    EXPECT_EQ(bar.value(), before + bar.pageStep());
    bar.setValue(bar.maximum());
    window().resize(500, 300);
    settle();
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(RoomWindowTest, ListsPeopleAndMarksThoseIgnored) {
    strike("/as bob\n");
    room->rooms.own.comeIn("<b>x\u202E");
    room->rooms.own.toggleIgnored({"bob"});
    settle();
    EXPECT_EQ(people(), "<b>x\uFFFD bob (ignored)~ Owner ");
    EXPECT_EQ(labelWith("people"), "3 people");
    auto& view = findView<PeopleView>(window());
    view.setCurrentIndex(view.model()->index(2, 0));
    room->rooms.own.leave("bob");
    settle();
    EXPECT_EQ(view.currentIndex().row(), 1) << "whoever goes";
    const auto ground = [&view] {
        const QRect row = view.visualRect(view.currentIndex());
        return view.viewport()->grab().toImage().pixelColor((row.bottomRight() - QPoint(2, 2)) *
                                                            view.devicePixelRatio());
    };
    EXPECT_LT(qGray(ground().rgb()), 60) << "keys go elsewhere";
    view.setFocus();
    EXPECT_GT(qGray(ground().rgb()), 150);
    input().setFocus();
    for (int person = 0; person < 60; ++person)
        room->rooms.own.comeIn("p" + std::to_string(person));
    settle();
    view.verticalScrollBar()->setValue(20);
    room->rooms.own.leave("p59");
    settle();
    EXPECT_EQ(view.verticalScrollBar()->value(), 20);
    strike("/room den\n");
    EXPECT_EQ(people(), "Owner ");
    EXPECT_EQ(window().windowTitle(), "larkspin - den");
}

TEST_F(RoomWindowTest, FollowsItsOwnerToANetworkAndBack) {
    server.names["#den"] = "@Jo ann";
    strike("/connect irc.test Jo den\n");
    EXPECT_EQ(window().windowTitle(), "larkspin - #den");
    EXPECT_EQ(people(), "@Jo ann ");
    EXPECT_EQ(ownName(), "Jo:");
    EXPECT_EQ(shownFor("'trig?\n"), "Jo: 'trig?\nJo: your trigger is ' ");
    strike("hi A\t");
    EXPECT_EQ(typed(), "hi ann");
    input().typing.empty();
    strike("/nick joe\n");
    EXPECT_EQ(ownName(), "joe:");
    strike("/room 0\n");
    auto& all = room->rooms.conversations;
    all.keep(*all.numbered(1), {.text = "came late", .at = 1, .isOld = true});
    strike("/room 1\n");
    for (const char* each : {"Jo: your trigger is '", "came late"})
        EXPECT_NE(shown().find(each), std::string::npos) << each;
    room->close(); // as at the end, and once more in the next run
    machine.endProcess();
    open();
    machine.advance(1s);
    settle();
    EXPECT_EQ(window().windowTitle(), "larkspin - #den");
    strike("/disconnect\n");
    EXPECT_EQ(window().windowTitle(), "larkspin - lobby");
    EXPECT_EQ(people(), "Owner ");
}

TEST_F(RoomWindowTest, ALineIsTakenWhereItWasBegun) {
    strike("/connect irc.test Jo den\nhi");
    server.sent.clear();
    server.say(":irc KICK #den Jo :out\r\n:Jo!j@h JOIN #late");
    machine.advance(1s);
    EXPECT_EQ(window().windowTitle(), "larkspin - #late");
    strike(" all\n");
    EXPECT_EQ(server.sent, Lines{});
    EXPECT_EQ(window().windowTitle(), "larkspin - lobby");
}

TEST_F(RoomWindowTest, PutsAHalfTypedLineBackButNoPassword) {
    strike("half");
    QTest::keyClick(&input(), Qt::Key_Left);
    const Draft half = input().typing.draft();
    input().typing.put({});
    EXPECT_EQ(typed(), "");
    strike("^\n/login jo\nses");
    EXPECT_EQ(input().typing.draft().text, "");
    input().typing.put(half);
    EXPECT_EQ(shownFor("am\n"), "you log in as jo from the next /connect on");
    input().typing.put(half);
    strike("x");
    EXPECT_EQ(typed(), "halxf");
}

TEST_F(RoomWindowTest, TakesAPasswordWithoutShowingIt) {
    EXPECT_EQ(shownFor("/login jo\nsesam\n"), "you log in as jo from the next /connect on");
    EXPECT_EQ(shownFor("/login\nsesam\n"), "/login USER [keep]");
    QTest::keyClicks(&input(), "/login jo");
    QTest::keyClick(&input(), Qt::Key_Return);
    QTest::keyClicks(&input(), "sesam"); // before it is asked for
    EXPECT_EQ(input().displayText().count('s'), 0);
    EXPECT_EQ(shownFor("\n"), "you log in as jo from the next /connect on");
    for (const bool isGiven : {true, false}) {
        EXPECT_EQ(shownFor("/login jo\nse^s\tam"), "");
        EXPECT_EQ(ownName(), "password of jo:");
        EXPECT_EQ(typed(), "sesam");
        EXPECT_EQ(input().displayText().count('s'), 0);
        EXPECT_EQ(
            shownFor([&] { QTest::keyClick(&input(), isGiven ? Qt::Key_Return : Qt::Key_Escape); }),
            isGiven ? "you log in as jo from the next /connect on"
                    : "without a password all stays as it was");
        EXPECT_EQ(ownName(), "Owner:");
        QTest::keyClick(&input(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(typed(), "");
        strike("^");
        EXPECT_EQ(input().displayText(), "/login jo");
        input().typing.empty();
    }
}

TEST_F(RoomWindowTest, DropsAPasswordThatNobodyAsksForAnyMore) {
    strike("/login jo\nse");
    EXPECT_EQ(shownFor([this] { machine.advance(10min); }), "nobody has typed a password");
    EXPECT_EQ(ownName(), "Owner:");
    EXPECT_EQ(shownFor("hi\n"), "Owner: hi");
}

TEST_F(RoomWindowTest, EmptiesItsLineAndComesForwardOnlyWhenAsked) {
    strike("half a line");
    QWidget other;
    other.show();
    ASSERT_TRUE(comesForward(other));
    EXPECT_EQ(shownFor([this] { machine.hear("'clear"); }), "Owner: chat window cleared ");
    EXPECT_EQ(shownFor([this] { hear("hi"); }), "bob comes in\nbob: hi");
    EXPECT_EQ(typed(), "");
    EXPECT_TRUE(other.isActiveWindow());

    window().close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().isMinimized(); }));
    machine.run([this] { room->rooms.own.bringHostForward(); });
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_EQ(QApplication::focusWidget(), &input());
}

TEST_F(RoomWindowTest, StandsInTheNextRunWhereItStood) {
    const auto split = [this]() -> QSplitter& {
        return dynamic_cast<QSplitter&>(
            *findView<PeopleView>(window()).parentWidget()->parentWidget());
    };
    EXPECT_GE(QGuiApplication::primaryScreen()->availableGeometry().right() -
                  window().frameGeometry().right(),
              308)
        << "for the other windows";
    QSplitter& halves = split();
    EXPECT_EQ(halves.sizes().value(1), 160);
    EXPECT_EQ(halves.mapTo(&window(), QPoint()), QPoint(6, 6));
    halves.setSizes({300, 250});
    window().setGeometry(120, 90, 555, 444);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return window().geometry() == QRect(120, 90, 555, 444); }));
    machine.advance(2s); // it is kept without an end
    machine.endProcess();
    open();
    EXPECT_EQ(window().geometry(), QRect(120, 90, 555, 444));
    EXPECT_EQ(split().sizes().value(1), 250);
    window().resize(330, 300);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().width() == 330; }));
    EXPECT_GE(said().width(), 180) << "in a narrow window";
    window().setGeometry(120, 90, 555, 9999); // on a screen that has grown smaller
    machine.advance(2s);
    machine.endProcess();
    open();
    EXPECT_TRUE(
        QGuiApplication::primaryScreen()->availableGeometry().contains(window().frameGeometry()));
}

} // namespace
} // namespace larkspin
