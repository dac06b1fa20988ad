// A running program in the room on a terminal's screen, without a terminal: strokes go in, and what
// stands on the grid is read.
#pragma once

#include "app/program.h"
#include "platform/terminal/room/screen_guide.h"
#include "platform/terminal/room/screen_room.h"
#include "platform/terminal/screen/edited_text.h"
#include "support/pretend_irc.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class ScreenDesk : public testing::Test {
protected:
    explicit ScreenDesk(const Lines& songs = {}) : machine(songs) {
        machine.host = &room.rooms.room;
        machine.start();
        room.completeBy(
            [this](std::string_view typed) { return completionOf(machine.state(), typed); });
        machine.run([this] {
            guide.emplace(room, *machine.program, "");
            room.open(machine.program->windows(), [this] { ++quits; });
        });
        settle();
    }

    void settle() { machine.advance(1ms); }

    // After the screen has been drawn, as he sees it then.
    void strike(const Stroke& stroke) {
        seen();
        machine.run([&] { layers.take(stroke); });
        settle();
    }
    void key(KeyStroke::Kind kind) { strike(KeyStroke{.kind = kind}); }
    void alt(KeyStroke key) {
        key.alt = true;
        strike(key);
    }
    void alt(char32_t character) { alt({.character = character}); }
    void type(const std::string& text) {
        for (const char32_t character : charactersOf(text))
            if (character == U'\n')
                key(KeyStroke::Kind::enter);
            else
                strike(KeyStroke{.character = character});
    }
    void mouse(MouseStroke::Kind kind, int row, int column,
               MouseStroke::Button button = MouseStroke::Button::left, bool isSecond = false) {
        strike(MouseStroke{
            .kind = kind, .button = button, .row = row, .column = column, .isSecond = isSecond});
    }
    void click(int row, int column, MouseStroke::Button button = MouseStroke::Button::left) {
        mouse(MouseStroke::Kind::press, row, column, button);
        mouse(MouseStroke::Kind::release, row, column, button);
    }

    // The whole screen.
    std::string seen() {
        Cells cells(rows, columns);
        cursor = layers.draw(cells);
        std::string all;
        for (const std::string& row : textOf(cells))
            all += row + '\n';
        return all;
    }
    std::string rowAt(int row) {
        Cells cells(rows, columns);
        layers.draw(cells);
        return textOf(cells)[static_cast<std::size_t>(row)];
    }
    CellStyle styleAt(int row, int column) {
        Cells cells(rows, columns);
        layers.draw(cells);
        return cells.at(row, column).style;
    }

    void on(int newRows, int newColumns) {
        rows = newRows;
        columns = newColumns;
    }
    void keep(const std::string& in, const std::string& text) {
        Conversations& all = room.rooms.conversations;
        for (const auto& each : all.all())
            if (each->name() == in)
                all.keep(*each, {.kind = KeptLine::Kind::said, .speaker = "ann", .text = text});
    }
    void hear(const std::string& from, const std::string& where, const std::string& text) {
        server.say(':' + from + "!u@h PRIVMSG " + where + " :" + text);
        settle();
    }
    Lines captions() {
        Lines all;
        for (const MenuEntry& entry : popup ? popup->entries() : std::vector<MenuEntry>())
            all.push_back(entry.caption);
        return all;
    }

    VirtualMachine machine;
    PretendIrc server{machine.loop};
    Layers layers;
    int rows = 12, columns = 60, rings = 0, quits = 0;
    bool takesMouse = true;
    std::string title;
    std::optional<Menu> popup;
    std::vector<Menu> menus;
    std::optional<Cursor> cursor;
    ScreenRoom room{machine.loop,
                    {.layers = layers,
                     .setTitle = [this](const std::string& text) { title = text; },
                     .takeMouse = [this](bool takes) { takesMouse = takes; },
                     .ring = [this] { ++rings; },
                     .popUp = [this](const Menu& menu, const Cursor&) { popup = menu; },
                     .openMenus = [this](std::vector<Menu> bar, int) { menus = std::move(bar); },
                     .pressed = [] {}},
                    machine.lines,
                    lent({&server}),
                    machine.kept,
                    DataDirectory(machine.drive("data")),
                    "Owner"};
    std::optional<ScreenGuide> guide;
};

} // namespace larkspin
