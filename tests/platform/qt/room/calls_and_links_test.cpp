// What calls the owner in the room's window, and the links in what is said there.
#include "platform/qt/room/typed_room.h"
#include "support/patience.h"

#include <QMenu>
#include <QProcess>
#include <QTextBlock>

namespace larkspin {
namespace {

struct CallsAndLinks : TypedRoom {
    CallsAndLinks() {
        server.names = {{"#den", "@Jo ann"}, {"#music", "Jo ann"}};
        window().onCall(
            {.begin =
                 [this](const OwnerCall& call) { calls += call.title + "| " + call.text + '\n'; },
             .end = [this] { calls += "over\n"; }});
        window().onLink([this](const std::string& address) { opened += address + '\n'; });
        strike("/connect irc.test Jo den\n/join #music\n");
        settle();
    }
    void say(const std::string& from, const std::string& where, const std::string& text) {
        server.say(':' + from + "!u@h PRIVMSG " + where + " :" + text);
        settle();
    }
    std::string callsFor(const std::string& where, const std::string& text) {
        calls.clear();
        say("ann", where, text);
        return calls;
    }
    // By a real mouse.
    static void clickAt(const QWidget& widget, const QPoint& place) {
        const QPoint at = widget.mapToGlobal(place);
        QProcess::execute("xdotool", {"mousemove", QString::number(at.x()), QString::number(at.y()),
                                      "click", "1"});
    }
    // A window manager that is slow may not have it on the display yet.
    static bool isClickedInto(const QWidget& widget) {
        return QTest::qWaitFor(
            [&] {
                clickAt(widget, widget.rect().center());
                return widget.isActiveWindow();
            },
            patienceInMilliseconds);
    }
    bool asksForAttention() {
        QProcess xprop;
        xprop.start("xprop", {"-id", QString::number(window().winId()), "_NET_WM_STATE"});
        xprop.waitForFinished();
        return xprop.readAllStandardOutput().contains("DEMANDS_ATTENTION");
    }
    // Where the text stands that was said last, in the view.
    QPoint placeOf(const QString& text, int character) {
        QTextCursor cursor = said().document()->find(text, said().document()->characterCount(),
                                                     QTextDocument::FindBackward);
        cursor.setPosition(cursor.selectionStart() + character);
        return said().cursorRect(cursor).center();
    }
    std::string calls, opened;
};

TEST_F(CallsAndLinks, TheOwnerIsCalledWhereHeDoesNotLook) {
    EXPECT_EQ(callsFor("#den", "Jo: here"), "");
    EXPECT_EQ(callsFor("#music", "nothing"), "");
    EXPECT_EQ(callsFor("#music", "jo, <b>you</b>\x02 there"),
              "#music| ann: jo, <b>you</b> there\n");
    EXPECT_EQ(callsFor("Jo", "psst"), "ann| psst\n");
    EXPECT_FALSE(asksForAttention()) << "he is in the window";
    calls.clear();
    strike("/room ann\n");
    EXPECT_EQ(calls, "over\n");
    strike("/room #den\n");
    window().move(0, 0);
    QWidget other;
    other.setGeometry(900, 50, 100, 100); // beside it
    other.show();
    ASSERT_TRUE(isClickedInto(other));
    settle();
    EXPECT_EQ(callsFor("#den", "\x01"
                               "ACTION looks for jo\x01"),
              "#den| * ann looks for jo\n");
    EXPECT_TRUE(QTest::qWaitFor([this] { return asksForAttention(); }));
    calls.clear();
    ASSERT_TRUE(isClickedInto(input()));
    settle();
    EXPECT_EQ(calls, "over\n");
}

TEST_F(CallsAndLinks, TheLineThatCallsIsLit) {
    const auto lit = [this] {
        return said().document()->lastBlock().blockFormat().background() != QBrush();
    };
    say("ann", "#den", "hello");
    EXPECT_FALSE(lit());
    say("ann", "#den", "hello Jo");
    EXPECT_TRUE(lit());
    for (const auto& [place, text] : {std::pair("#den", "\x01"
                                                        "ACTION waves\x01"),
                                      {"Jo", "psst"}}) {
        say("ann", place, text);
        EXPECT_FALSE(lit());
        QTextCursor cursor(said().document());
        cursor.movePosition(QTextCursor::End);
        EXPECT_EQ(cursor.charFormat().foreground().color(), said().palette().color(QPalette::Text))
            << text;
    }
    strike("/room ann\n");
    EXPECT_FALSE(lit());
}

TEST_F(CallsAndLinks, ALinkOpensWhatIsSeenOfIt) {
    say("ann", "#den", "see http://a.b\x02/c\x02.");
    const QPoint at = placeOf("http://a.b/c", 8);
    clickAt(*said().viewport(), at);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            settle();
            return opened == "http://a.b/c\n";
        },
        patienceInMilliseconds));
    QTest::mouseClick(said().viewport(), Qt::LeftButton, {}, placeOf("see http", 1));
    QTest::mousePress(said().viewport(), Qt::LeftButton, {}, at);
    QTest::mouseMove(said().viewport(), at + QPoint(20, 0));
    QTest::mouseRelease(said().viewport(), Qt::LeftButton, {}, at + QPoint(20, 0));
    settle();
    EXPECT_EQ(opened, "http://a.b/c\n") << "what is marked isn't opened";
    EXPECT_TRUE(said().textCursor().hasSelection());
}

TEST_F(CallsAndLinks, LinksAreReachedByKeys) {
    say("ann", "#den", "http://a.b/c&d and www.e.f");
    QTest::keyClick(&input(), Qt::Key_L, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    QWidget& menu = *QApplication::activePopupWidget();
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    settle();
    EXPECT_EQ(opened, "http://a.b/c&d\n");
}

} // namespace
} // namespace larkspin
