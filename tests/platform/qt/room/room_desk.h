// A running program with its room's window, on a display with a window manager. No other is there.
#pragma once

#include "app/program.h"
#include "platform/qt/looks.h"
#include "platform/qt/room/find_view.h"
#include "platform/qt/room/qt_room.h"
#include "support/patience.h"
#include "support/pretend_irc.h"
#include "support/virtual_machine.h"

#include <QApplication>
#include <QTest>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace larkspin {

class RoomDesk : public testing::Test {
protected:
    RoomDesk()
        : room(std::make_unique<QtRoom>(machine.loop, machine.lines, lent({&server}), machine.kept,
                                        DataDirectory(machine.drive("data")), "Owner")) {
        machine.host = &room->rooms.room;
        room->show();
        EXPECT_TRUE(comes([this] {
            window().activateWindow();
            return window().isActiveWindow();
        }));
        machine.start();
        machine.run([this] { room->open([this] { ++quits; }); });
        settle();
    }
    ~RoomDesk() override { // the next test begins with a new program's looks
        showInColors(RoomColors::larkspin);
        showTextAt(Preferences::usualText);
    }

    void settle() {
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::processEvents();
            machine.advance(1ms);
        }
    }
    template <typename Condition> bool comes(Condition condition) {
        const auto looks = [&] {
            settle();
            return condition();
        };
        return QTest::qWaitFor(looks, patienceInMilliseconds);
    }
    // Keys go to whatever has the focus.
    void strike(const std::string& keys) {
        for (const char key : keys)
            if (key == '\n')
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            else
                QTest::keyClick(QApplication::focusWidget(), key);
        settle();
    }

    RoomWindow& window() { return room->window; }
    Preferences& preferences() { return room->rooms.preferences; }
    template <typename View> View& view() { return findView<View>(window()); }

    VirtualMachine machine;
    PretendIrc server{machine.loop};
    int quits = 0;
    std::unique_ptr<QtRoom> room;
};

} // namespace larkspin
