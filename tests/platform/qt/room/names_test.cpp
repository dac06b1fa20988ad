// A song whose name holds what no path of the program's own may hold. Inside it travels by
// stand-ins; whatever road it goes to an eye or a wire, it is seen there as it stands on the disk.
#include "host/owner_calls.h"
#include "library/playlist_row.h"
#include "platform/dbus/mpris_service.h"
#include "platform/posix/drive_paths.h"
#include "platform/qt/menu_view.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_loop.h"
#include "platform/qt/room/play_bar.h"
#include "platform/qt/room/room_desk.h"
#include "platform/qt/room/room_guide.h"
#include "platform/qt/windows/qt_windows.h"
#include "platform/terminal/description_text.h"
#include "platform/terminal/terminal_screen.h"
#include "support/private_bus.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <utility>

namespace larkspin {
namespace {

const std::string nameOnTheDisk = "Who Made Who?";

// All that a screen reader and an eye find in a widget.
std::string readAloud(QWidget& widget) {
    std::string texts = (widget.toolTip() + '\n' + widget.windowTitle() + '\n').toStdString();
    if (auto* const aloud = QAccessible::queryAccessibleInterface(&widget))
        for (const auto kind : {QAccessible::Name, QAccessible::Value, QAccessible::Description})
            texts += aloud->text(kind).toStdString() + '\n';
    if (const auto* const list = qobject_cast<QAbstractItemView*>(&widget); list && list->model())
        for (int row = 0; row < list->model()->rowCount(); ++row)
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::AccessibleTextRole})
                texts += list->model()->index(row, 0).data(role).toString().toStdString() + '\n';
    for (const QAction* const action : widget.actions())
        texts += (action->text() + '\n' + action->toolTip() + '\n').toStdString();
    return texts;
}

std::string readAloud() {
    std::string texts;
    for (QWidget* const widget : QApplication::allWidgets())
        texts += readAloud(*widget);
    return texts;
}

// The first of the private characters that stand for others; empty without one.
std::string standInIn(const std::string& text) {
    for (const char* const lead : {"\xEF\x80", "\xEF\x81"})
        if (const auto at = text.find(lead); at != text.npos)
            return text.substr(at > 40 ? at - 40 : 0, 80);
    return "";
}

struct NamesAsTheyAre : RoomDesk {
    NamesAsTheyAre() {
        for (const std::string& name : {nameOnTheDisk, nameOnTheDisk + " live"}) {
            machine.disk.write("music/" + name + ".mp3", "song");
            machine.player.lengths[path(name)] = 180;
        }
        windows.emplace(machine.loop, machine.program->windows());
        window().addBelow(*new PlayBar(machine.loop, machine.program->playback.songInPlay, [] {}));
        guide.emplace(
            machine.loop, *room, *machine.program, [] {}, "");
        room->completeBy(
            [this](std::string_view typed) { return completionOf(machine.state(), typed); });
        word("/log on");
        word("/connect irc.test Owner #music");
        machine.run([this] {
            machine.program->bring({path(nameOnTheDisk + " live"), path(nameOnTheDisk)},
                                   BroughtFiles::Then::playing);
        });
        settle();
    }
    std::string path(const std::string& name) const {
        return drivePath((machine.disk.path() / "music" / (name + ".mp3")).native());
    }
    void word(const std::string& line) {
        machine.run([&] { room->words.run(line); });
        machine.advance(5s);
    }
    // What the program does by an order that the owner gives.
    void order(const std::string& line) {
        machine.run([&] { room->rooms.room.say(line); });
        machine.advance(10s);
        settle();
    }
    std::string transcript() { return view<Transcript>().toPlainText().toStdString(); }
    std::string allWindows() {
        for (Window* const window : machine.program->windows())
            window->visible = true;
        settle();
        return readAloud();
    }
    // What a box, or a question with a text to change, shows until it is dismissed.
    static std::string box(const std::function<void(QtDialogs&)>& open) {
        QtLoop loop;
        QtDialogs dialogs(loop);
        std::string seen;
        const TimerId look = loop.every(5ms, [&] {
            for (QWidget* const window : QApplication::topLevelWidgets())
                if (window->isVisible() && qobject_cast<QDialog*>(window)) {
                    seen = readAloud();
                    window->close();
                }
        });
        open(dialogs);
        loop.cancel(look);
        return seen;
    }
    std::string trayMenu() {
        QMenu menu;
        fillMenu(
            menu, machine.desktop.icon->menu, [](const Task&) {}, MenuDrawnBy::qt);
        std::string texts = readAloud(menu);
        for (QMenu* const submenu : menu.findChildren<QMenu*>())
            texts += readAloud(*submenu);
        return texts;
    }
    // What Tab offers.
    std::string offers() {
        InputLine& input = view<InputLine>();
        input.setFocus();
        QTest::keyClicks(&input, "'play who");
        QTest::keyClick(&input, Qt::Key_Tab);
        settle();
        return readAloud() + input.text().toStdString();
    }
    static std::string terminal(TerminalScreen::Form form,
                                const std::function<void(TerminalScreen&)>& show) {
        Pipe pipe;
        PollLoop loop;
        QueuedOutput output(loop, pipe.in());
        TerminalScreen screen(output, output, form);
        show(screen);
        return pipe.readNow();
    }
    // Of the song in play, for a desktop's player control.
    std::string remoteControl() {
        PrivateBus bus;
        PollLoop loop;
        MprisService service(loop, bus.address(), machine.program->playback.remote, {});
        loop.every(10ms, [] {}); // looks for the client's end
        std::string told;
        for (const auto until = loop.now() + patience; told.empty() && loop.now() < until;) {
            const auto client =
                Child::start("playerctl", {"DBUS_SESSION_BUS_ADDRESS=" + bus.address()},
                             {"-p", "larkspin", "metadata", "title"});
            loop.waitFor([&] { return client->ends(0ms).has_value(); }, loop.now() + patience);
            told = client->rest(patience);
        }
        return told;
    }
    std::string log() const {
        std::string texts;
        for (const auto& file :
             std::filesystem::recursive_directory_iterator(machine.disk.path() / "data"))
            if (file.path().string().find("log") != std::string::npos && file.is_regular_file())
                texts +=
                    machine.disk.read(file.path().lexically_relative(machine.disk.path()).native());
        return texts;
    }

    std::optional<QtWindows> windows;
    std::optional<RoomGuide> guide;
};

TEST_F(NamesAsTheyAre, OnEveryRoadToAnEyeOrAWire) {
    using Form = TerminalScreen::Form;
    const std::string name = songOfPath(path(nameOnTheDisk)).name; // inside
    ASSERT_NE(standInIn(name), "");
    machine.trace.note("file", name);
    const auto onTerminal = [&](Form form) {
        return terminal(form, [&](TerminalScreen& screen) {
            for (const auto& line : windowLines(machine.program->mediaWindow.frame.mp3s, 1))
                screen.show("window", line);
        });
    };
    const std::pair<const char*, std::function<std::string()>> roads[] = {
        {"told in the room", [&] { return transcript(); }},
        {"said in the room",
         [&] {
             view<Transcript>().clear();
             order("'next");
             return transcript();
         }},
        {"said on IRC", [&] { return testing::PrintToString(server.sent.back()); }},
        {"the log", [&] { return log(); }},
        {"all windows, of a search with several hits",
         [&] {
             order("'play who");
             return allWindows();
         }},
        {"the bar for the song in play",
         [&] {
             std::string texts;
             for (QWidget* const part : view<PlayBar>().findChildren<QWidget*>())
                 texts += readAloud(*part);
             return texts;
         }},
        {"the tray's menu",
         [&] {
             order("'save " + nameOnTheDisk);
             return trayMenu();
         }},
        {"what Tab offers", [&] { return offers(); }},
        {"a box", [&] { return box([&](QtDialogs& show) { show.titledBox(name, name); }); }},
        {"a question", [&] { return box([&](QtDialogs& show) { show.ask(name); }); }},
        {"a text to be changed",
         [&] { return box([&](QtDialogs& show) {
                   show.askText({name, name, name});
               }); }},
        {"a window printed for a script", [&] { return onTerminal(Form::protocol); }},
        {"a window printed on a terminal", [&] { return onTerminal(Form::styled); }},
        {"told on a terminal",
         [&] {
             return terminal(Form::styled, [&](TerminalScreen& screen) { screen.showRoom(name); });
         }},
        {"a box on a terminal",
         [&] {
             return terminal(Form::styled,
                             [&](TerminalScreen& screen) { screen.show("box", name); });
         }},
        {"the error output",
         [&] {
             return terminal(Form::protocol, [&](TerminalScreen& screen) { screen.note(name); });
         }},
        {"a notification",
         [&] {
             OwnerCalls calls(room->rooms.conversations);
             server.say(":ann!a@b PRIVMSG Owner :" + name);
             machine.advance(1s);
             const auto call = calls.take();
             return call ? call->title + '\n' + call->text : "";
         }},
        {"the player's control", [&] { return remoteControl(); }},
        {"the trace, also of a crash", [&] { return testing::PrintToString(machine.traced()); }},
    };
    for (const auto& [road, seen] : roads) {
        const std::string text = seen();
        EXPECT_NE(text.find(nameOnTheDisk), std::string::npos) << road << ": " << text;
        EXPECT_EQ(standInIn(text), "") << road;
    }
}

} // namespace
} // namespace larkspin
