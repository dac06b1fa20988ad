// The program's windows on a terminal's screen, without a terminal: strokes go in, and what stands
// on the grid is read. Below the windows lies a line that keeps what comes down to it.
#pragma once

#include "app/program.h"
#include "platform/terminal/screen/columns.h"
#include "platform/terminal/windows/screen_desktop.h"
#include "platform/terminal/windows/screen_windows.h"
#include "platform/terminal/windows/window_layer.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace larkspin {

using Button = MouseStroke::Button;
using Mouse = MouseStroke::Kind;
using Struck = KeyStroke::Kind;

class LineBelow : public Layer {
public:
    Rank rank() const override { return Rank::room; }
    std::optional<Cursor> draw(Cells& cells) override { return Cursor{cells.rows() - 1, 0}; }
    bool take(const Stroke& stroke) override {
        taken.push_back(stroke);
        if (const auto* const key = std::get_if<KeyStroke>(&stroke); key && key->character != 0)
            typed += textOf(std::u32string(1, key->character));
        return false;
    }
    std::vector<Stroke> taken;
    std::string typed;
};

// What is drawn and struck, on any loop.
struct Desk {
    explicit Desk(EventLoop& loop) : stage(loop, layers), desktop(stage) {
        stage.whole = [](const Area& screen) {
            return Area{1, 0, screen.rows - 3, screen.columns};
        };
        layers.add(line);
    }
    void draw() {
        stage.refresh();
        Cells cells(rows, columns);
        cursor = layers.draw(cells);
        drawn = cells;
    }
    std::vector<std::string> seen() {
        draw();
        return textOf(drawn);
    }
    std::string text() {
        std::string all;
        for (const std::string& row : seen())
            all += row + '\n';
        return all;
    }
    // As the screen brings strokes that come faster than it draws. What has gone takes none.
    void take(const Stroke& stroke) {
        stage.refresh();
        layers.take(stroke);
        stage.refresh();
    }
    void key(Struck kind, bool shift = false, bool alt = false) {
        take(KeyStroke{.kind = kind, .shift = shift, .alt = alt});
    }
    void function(int number, bool shift = false) {
        take(KeyStroke{.kind = Struck::function, .number = number, .shift = shift});
    }
    void type(const std::string& typed) {
        for (const char32_t character : charactersOf(typed))
            take(KeyStroke{.character = character});
    }
    void mouse(Mouse kind, const Cursor& at, Button button = Button::left, bool isSecond = false) {
        take(MouseStroke{.kind = kind,
                         .button = button,
                         .row = at.row,
                         .column = at.column,
                         .isSecond = isSecond});
    }
    void click(const Cursor& at, Button button = Button::left) {
        mouse(Mouse::press, at, button);
        mouse(Mouse::release, at, button);
    }
    void doubleClick(const Cursor& at) {
        click(at);
        mouse(Mouse::press, at, Button::left, true);
        mouse(Mouse::release, at);
    }
    // Where that stands on the screen for the first time.
    Cursor find(const std::string& text) {
        const auto all = seen();
        for (int row = 0; row < static_cast<int>(all.size()); ++row)
            if (const auto at = all[static_cast<std::size_t>(row)].find(text);
                at != std::string::npos)
                return {row, columnsOf(all[static_cast<std::size_t>(row)].substr(0, at))};
        ADD_FAILURE() << "no " << text << " in\n" << this->text();
        return {};
    }
    CellStyle styleAt(const Cursor& at) {
        draw();
        return drawn.at(at.row, at.column).style;
    }

    int rows = 24, columns = 80;
    Layers layers;
    LineBelow line;
    Stage stage;
    ScreenDesktop desktop;
    std::optional<Cursor> cursor;
    Cells drawn{0, 0};
};

class WindowDesk : public testing::Test, protected Desk {
protected:
    explicit WindowDesk(const Lines& songs = {"song one", "song two", "song three"})
        : WindowDesk(std::make_unique<VirtualMachine>(songs)) {}

    Window& window(const std::string& name) { return machine.window(name); }
    void show(const std::string& name) { bringUp(machine.window(name)); }
    Area areaOf(const std::string& window, const std::string& control) {
        draw();
        const WindowLayer* const layer = stage.find(machine.window(window));
        return layer ? layer->areaOf(control) : Area{};
    }
    Cursor middleOf(const std::string& window, const std::string& control) {
        const Area area = areaOf(window, control);
        return {area.top + area.rows / 2, area.left + area.columns / 2};
    }

private:
    explicit WindowDesk(std::unique_ptr<VirtualMachine> made)
        : Desk(made->loop), machine_(std::move(made)) {}
    std::unique_ptr<VirtualMachine> machine_;

protected:
    VirtualMachine& machine = *machine_;
    ScreenWindows windows{machine.loop, stage, machine.program->windows()};
};

} // namespace larkspin
