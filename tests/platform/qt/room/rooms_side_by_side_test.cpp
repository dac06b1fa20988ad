// The conversations beside each other in the room's window, with real keys and the mouse.
#include "platform/qt/room/typed_room.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>

namespace larkspin {
namespace {

struct RoomsSideBySide : TypedRoom {
    RoomsSideBySide() {
        server.names = {{"#den", "@Jo +ann bob @zoe"}, {"#music", "Jo ann"}};
        strike("/connect irc.test Jo den\n/join #music\n");
        settle();
    }
    void say(const std::string& from, const std::string& where, const std::string& text) {
        server.say(':' + from + "!u@h PRIVMSG " + where + " :" + text);
        settle();
    }
    RoomsView& list() { return findView<RoomsView>(window()); }
    // What a screen reader reads there.
    std::string listed() {
        QAccessibleInterface& read = *QAccessible::queryAccessibleInterface(&list());
        EXPECT_EQ(read.text(QAccessible::Name), "rooms and private talks");
        std::string all;
        for (int row = 0; row < read.childCount(); ++row)
            all += read.child(row)->text(QAccessible::Name).toStdString() + '\n';
        return all;
    }
    void press(int key, Qt::KeyboardModifiers with = Qt::AltModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), with);
        settle();
    }
    std::string title() { return window().windowTitle().toStdString().substr(11); }
    QPushButton& newBelow() {
        return *findView<ConversationView>(window()).findChild<QPushButton*>();
    }
    QScrollBar& bar() { return *said().verticalScrollBar(); }
    void fill(const std::string& room, int lines) {
        Conversation& in = *std::ranges::find(room_().all(), room, &Conversation::name)->get();
        for (int line = 0; line < lines; ++line)
            room_().keep(in, {.kind = KeptLine::Kind::said,
                              .speaker = "ann",
                              .text = "line " + std::to_string(line)});
        settle();
    }
    Conversations& room_() { return room->rooms.conversations; }
};

TEST_F(RoomsSideBySide, AreListedByNetworkWithWhatIsUnread) {
    say("ann", "#music", "hi");
    say("ann", "#music", "Jo: you there?");
    say("bob", "Jo", "psst");
    EXPECT_EQ(listed(), "lobby\nirc.test\n#den, here\n#music, 2 unread, 1 for you\n"
                        "bob, 1 unread, 1 for you\n");
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                      list().visualRect(list().model()->index(3, 0)).center());
    settle();
    EXPECT_EQ(title(), "#music");
    EXPECT_EQ(QApplication::focusWidget(), &input());
    EXPECT_EQ(shown(), "unread\nann: hi\nann: Jo: you there?");
}

TEST_F(RoomsSideBySide, AreReachedByKeys) {
    say("bob", "Jo", "psst");
    say("ann", "#music", "hi");
    const std::pair<int, std::string> cases[] = {
        {Qt::Key_0, "lobby"},   {Qt::Key_2, "#music"},   {Qt::Key_9, "#music"},
        {Qt::Key_Down, "bob"},  {Qt::Key_Down, "lobby"}, {Qt::Key_Up, "bob"},
        {Qt::Key_Up, "#music"}, {Qt::Key_Up, "#den"},
    };
    for (const auto& [key, place] : cases) {
        press(key);
        EXPECT_EQ(title(), place) << key;
    }
    say("ann", "#music", "hi");
    say("bob", "Jo", "once more");
    for (const char* const place : {"bob", "#music", "#music"}) {
        press(Qt::Key_A);
        EXPECT_EQ(title(), place);
    }
    list().setFocus();
    press(Qt::Key_Up, Qt::NoModifier);
    press(Qt::Key_Return, Qt::NoModifier);
    EXPECT_EQ(title(), "#den");
}

TEST_F(RoomsSideBySide, EachHasItsOwnHalfTypedLine) {
    strike("half");
    press(Qt::Key_Left, Qt::NoModifier);
    press(Qt::Key_2);
    EXPECT_EQ(typed(), "");
    strike("other");
    press(Qt::Key_1);
    EXPECT_EQ(typed(), "half");
    server.sent.clear();
    strike("l\n");
    EXPECT_EQ(server.sent, Lines{"PRIVMSG #den hallf"});
    press(Qt::Key_2);
    strike("s\n");
    EXPECT_EQ(server.sent.back(), "PRIVMSG #music others");
}

TEST_F(RoomsSideBySide, ALineStaysWhereItWasBegunWhenAnotherComesInFrontByItself) {
    press(Qt::Key_2);
    strike("kept here");
    press(Qt::Key_1);
    strike("mine");
    server.sent.clear();
    room_().enter(*room_().numbered(2));
    settle();
    EXPECT_EQ(title(), "#music");
    EXPECT_EQ(typed(), "mine");
    EXPECT_EQ(ownName(), "Jo in #den:");
    strike("!\n");
    EXPECT_EQ(server.sent, Lines{"PRIVMSG #den mine!"});
    EXPECT_EQ(title(), "#den");
    press(Qt::Key_2);
    EXPECT_EQ(typed(), "kept here");
}

TEST_F(RoomsSideBySide, WhatIsUnreadBeginsAtALine) {
    say("ann", "#music", "one");
    press(Qt::Key_2);
    EXPECT_EQ(shown(), "unread\nann: one");
    say("ann", "#music", "two");
    EXPECT_EQ(shown(), "unread\nann: one\nann: two");
    press(Qt::Key_1);
    press(Qt::Key_2);
    EXPECT_EQ(shown(), "ann: one\nann: two");
    say("ann", "#music", "seen");
    for (const bool stamps : {false, true})
        room->rooms.preferences.showStamps(stamps);
    settle();
    EXPECT_EQ(shown(), "ann: one\nann: two\nann: seen") << "not unread when drawn anew";
    QWidget other;
    other.show();
    ASSERT_TRUE(comesForward(other));
    settle();
    say("ann", "#music", "three");
    EXPECT_NE(listed().find("#music, 1 unread, here"), std::string::npos);
    ASSERT_TRUE(comesForward(window()));
    settle();
    EXPECT_EQ(shown(), "ann: one\nann: two\nann: seen\nunread\nann: three");
    EXPECT_EQ(listed(), "lobby\nirc.test\n#den\n#music, here\n");
}

TEST_F(RoomsSideBySide, WhatCameFromElsewhereStaysAmongTheLinesWhereItWasShown) {
    const auto whisper = [this](int number) { say("bob", "Jo", "psst " + std::to_string(number)); };
    whisper(1);
    say("ann", "#den", "hi");
    whisper(2);
    const std::string before = shown();
    EXPECT_EQ(before.substr(before.find("bob")),
              "bob whispers: psst 1\nann: hi\nbob whispers: psst 2");
    press(Qt::Key_2);
    say("ann", "#den", "later");
    press(Qt::Key_1);
    EXPECT_EQ(shown(), before + "\nunread\nann: later");
    whisper(3);
    strike("/colours light\n");
    EXPECT_EQ(shown(), before + "\nunread\nann: later\nbob whispers: psst 3\n"
                                "the room has light colours");
    strike("/colours larkspin\n");
    fill("#den", 1000);
    press(Qt::Key_2);
    press(Qt::Key_1);
    EXPECT_EQ(shown().find("whispers"), std::string::npos);
    for (int time = 0; time < 3; ++time) {
        bar().setValue(0);
        settle();
    }
    EXPECT_EQ(shown().substr(0, before.size()), before) << "older lines bring it";
    for (int number = 0; number <= 100; ++number)
        whisper(number);
    press(Qt::Key_2);
    press(Qt::Key_1);
    EXPECT_EQ(shown().find("hi\n"), std::string::npos);
    EXPECT_TRUE(shown().ends_with("psst 99\nbob whispers: psst 100"));
    EXPECT_EQ(said().toPlainText().count("whispers"), 100) << "no more are kept";
}

TEST_F(RoomsSideBySide, EachIsReadWhereItWasLeft) {
    fill("#den", 1000);
    const auto top = [&] { return said().cursorForPosition({30, 3}).block().text(); };
    for (int page = 0; page < 3; ++page)
        press(Qt::Key_PageUp, Qt::NoModifier);
    const QString read = top();
    say("ann", "#den", "newest");
    EXPECT_TRUE(newBelow().isVisible());
    EXPECT_EQ(newBelow().text(), "1 new line \u2193");
    press(Qt::Key_2);
    EXPECT_FALSE(newBelow().isVisible());
    say("ann", "#den", "still newer");
    press(Qt::Key_1);
    EXPECT_EQ(top(), read);
    EXPECT_EQ(newBelow().text(), "2 new lines \u2193");
    QTest::mouseClick(&newBelow(), Qt::LeftButton);
    EXPECT_EQ(bar().value(), bar().maximum());
    EXPECT_FALSE(newBelow().isVisible());
    for (int time = 0; time < 2; ++time) {
        press(Qt::Key_PageUp, Qt::NoModifier);
        EXPECT_LT(bar().value(), bar().maximum());
        time == 0 ? strike("I speak\n") : press(Qt::Key_End);
        EXPECT_EQ(bar().value(), bar().maximum());
    }
}

TEST_F(RoomsSideBySide, OlderLinesComeWhenTheFirstOneIsReached) {
    fill("#music", 1000);
    press(Qt::Key_2);
    EXPECT_LT(said().document()->blockCount(), 400);
    for (int time = 0; time < 3; ++time) {
        const QString first = said().document()->firstBlock().text();
        bar().setValue(0);
        settle();
        EXPECT_NE(said().document()->firstBlock().text(), first);
        EXPECT_EQ(said().cursorForPosition({30, 12}).block().text(), first);
    }
    EXPECT_EQ(said().document()->blockCount(), 1001);
    QTextBlock block = said().document()->begin();
    EXPECT_EQ(block.text(), "unread");
    for (block = block.next(); block.isValid(); block = block.next())
        ASSERT_TRUE(block.text().endsWith(' ' + QString::number(block.blockNumber() - 1)))
            << block.text().toStdString();
}

TEST_F(RoomsSideBySide, WhatComesAfterAPlaceFarBackIsThereAsWell) {
    fill("#den", 3000);
    for (int time = 0; time < 4; ++time) {
        bar().setValue(0);
        settle();
    }
    const auto top = [&] { return said().cursorForPosition({30, 12}).block().text(); };
    const QString read = top();
    press(Qt::Key_2);
    say("ann", "#den", "newest");
    press(Qt::Key_1);
    EXPECT_EQ(top(), read);
    for (int turn = 0; turn < 9; ++turn)
        settle();
    EXPECT_EQ(top(), read);
    EXPECT_TRUE(said().document()->lastBlock().text().endsWith("newest"));
    EXPECT_EQ(newBelow().text(), "1 new line \u2193");
    press(Qt::Key_2);
    press(Qt::Key_1);
    press(Qt::Key_End); // before all of it is there
    EXPECT_TRUE(said().document()->lastBlock().text().endsWith("newest"));
    EXPECT_EQ(bar().value(), bar().maximum());
}

TEST_F(RoomsSideBySide, NameAndTopicStandAbove) {
    server.say(":irc 332 Jo #den :<b>songs</b> and \x02"
               "birds\x02");
    settle();
    EXPECT_EQ(labelWith("#den"), "#den");
    EXPECT_EQ(labelWith("birds"), "<b>songs</b> and birds");
    for (const QLabel* const label : window().findChildren<QLabel*>())
        if (label->text().endsWith("birds"))
            EXPECT_EQ(label->accessibleName(), "topic: <b>songs</b> and birds");
}

TEST_F(RoomsSideBySide, PeopleStandByRankAndHaveAMenu) {
    EXPECT_EQ(people(), "@Jo @zoe +ann bob ");
    auto& view = findView<PeopleView>(window());
    const auto choose = [&](int row, const char* wanted) {
        const QPoint at = view.visualRect(view.model()->index(row, 0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, view.viewport()->mapToGlobal(at));
        QApplication::sendEvent(view.viewport(), &event);
        std::string captions;
        QMenu* const menu = view.findChild<QMenu*>();
        for (QAction* const action : menu ? menu->actions() : QList<QAction*>()) {
            captions += action->text().toStdString() + (action->isSeparator() ? "-" : "") + '|';
            if (action->text() == wanted)
                action->trigger();
        }
        delete menu;
        settle();
        return captions;
    };
    const std::string first = "private talk|who is that|ignore|-|",
                      last = "-|put out|put out, and keep out|";
    const struct {
        int row;
        const char* entry;
        std::string menu, sent;
    } cases[] = {
        {0, "", "who you are|", ""},
        {3, "give voice", first + "make operator|give voice|" + last, "MODE #den +v bob"},
        {2, "take voice", first + "make operator|take voice|" + last, "MODE #den -v ann"},
        {1, "no operator any more", first + "no operator any more|give voice|" + last,
         "MODE #den -o zoe"},
        {3, "put out", first + "make operator|give voice|" + last, "KICK #den zoe"},
    };
    for (const auto& [row, entry, menu, sent] : cases) {
        machine.advance(10s); // which the server's pace would make of it
        server.sent.clear();
        EXPECT_EQ(choose(row, entry), menu);
        EXPECT_EQ(server.sent.empty() ? "" : server.sent[0].substr(0, sent.size()), sent);
    }
    choose(1, "ignore");
    EXPECT_EQ(people(), "@Jo +bob (ignored)~ ann ");
    EXPECT_EQ(choose(1, "").substr(0, 40), "private talk|who is that|hear again|-|ma");
    press(Qt::Key_2);
    EXPECT_EQ(choose(0, "private talk"), "private talk|who is that|ignore|");
    EXPECT_EQ(title(), "ann");
    EXPECT_FALSE(view.isVisible());
}

} // namespace
} // namespace larkspin
