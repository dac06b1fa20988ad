// A program in the room's window, as the owner types in it and reads what is said.
#pragma once

#include "app/program.h"
#include "platform/qt/room/find_view.h"
#include "platform/qt/room/qt_room.h"
#include "support/pretend_irc.h"
#include "support/virtual_machine.h"

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

namespace larkspin {

struct TypedRoom : testing::Test {
    TypedRoom() { open(); }

    // The program begins anew in the room's window, as a run of its own. What is typed so soon
    // waits until it can be taken.
    void open(const std::string& early = "") {
        room = std::make_unique<QtRoom>(machine.loop, machine.lines, lent({&server}), machine.kept,
                                        DataDirectory(machine.drive("data")), "Owner");
        machine.host = &room->rooms.room;
        room->show();
        EXPECT_TRUE(comesForward(window()));
        machine.start();
        room->completeBy(
            [this](std::string_view typed) { return completionOf(machine.state(), typed); });
        strike(early);
        said().clear();
        machine.run([this] { room->open([this] { ++quits; }); });
        settle();
    }

    // A window manager that has just begun may let a window stand in the back.
    static bool comesForward(QWidget& wanted) {
        return QTest::qWaitFor([&] {
            wanted.activateWindow();
            return wanted.isActiveWindow();
        });
    }

    void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
            machine.advance(1ms);
        }
    }

    RoomWindow& window() { return room->window; }
    Transcript& said() { return findView<Transcript>(window()); }
    InputLine& input() { return findView<InputLine>(window()); }
    std::string labelWith(const char* ending) {
        for (const QLabel* const label : window().findChildren<QLabel*>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            if (label->text().endsWith(ending))
                return label->text().toStdString();
        }
        return "";
    }
    std::string ownName() { return labelWith(":"); }
    std::string typed() { return input().text().toStdString(); }

    // Keys go to whatever has the focus. "^" is the arrow up, "v" down, "\t" Tab, "\n" Return.
    void strike(const std::string& keys) {
        for (const char key : keys) {
            QWidget& widget = *QApplication::focusWidget();
            if (key == '^' || key == '|')
                QTest::keyClick(&widget, key == '^' ? Qt::Key_Up : Qt::Key_Down);
            else if (key == '\t' || key == '\n')
                QTest::keyClick(&widget, key == '\t' ? Qt::Key_Tab : Qt::Key_Return);
            else
                QTest::keyClick(&widget, key);
        }
        settle();
    }

    // What stands in the window, a line each, without times and the program's signature.
    std::string shown() {
        static const QRegularExpression times("^\\d\\d:\\d\\d ",
                                              QRegularExpression::MultilineOption);
        return said()
            .toPlainText()
            .replace(times, "")
            .replace("'\u00ACl"
                     "ks - ",
                     "")
            .toStdString();
    }
    // What has come to stand there.
    std::string shownFor(const std::function<void()>& action) {
        said().clear();
        machine.run(action);
        settle();
        return shown();
    }
    std::string shownFor(const std::string& keys) {
        return shownFor([&] { strike(keys); });
    }
    std::string people() {
        const QAbstractItemModel& model = *findView<PeopleView>(window()).model();
        std::string names;
        for (int row = 0; row < model.rowCount(); ++row)
            names += model.index(row, 0).data().toString().toStdString() +
                     (model.index(row, 0).data(Qt::ForegroundRole).isValid() ? "~ " : " ");
        return names;
    }
    void hear(const std::string& line) { room->rooms.own.sayAs({"bob", line}); }

    const std::string long_ = std::string(4000, 'x');
    VirtualMachine machine{Lines{"ride.mp3", "rain.mp3"}};
    PretendIrc server{machine.loop};
    std::unique_ptr<QtRoom> room;
    int quits = 0;
};

} // namespace larkspin
