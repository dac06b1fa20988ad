// What the owner's hand does at a terminal: a key, the mouse, or a text that he pastes.
#pragma once

#include <string>
#include <variant>

namespace larkspin {

struct KeyStroke {
    enum class Kind {
        character, // typed, in `character`; with Alt or Ctrl a command
        enter,
        tab,
        backspace,
        del,
        insert,
        escape,
        up,
        down,
        left,
        right,
        home,
        end,
        pageUp,
        pageDown,
        function // F1 to F12, in `number`
    };

    Kind kind = Kind::character;
    char32_t character = 0; // lower case with Ctrl
    int number = 0;
    bool shift = false, alt = false, ctrl = false;

    bool operator==(const KeyStroke&) const = default;
};

struct MouseStroke {
    enum class Kind { press, release, move, wheelUp, wheelDown };
    enum class Button { none, left, middle, right };

    Kind kind = Kind::press;
    Button button = Button::none; // held, for a move
    int row = 0, column = 0;
    bool isSecond = false; // a press so soon after another one there that it is a double click
    bool shift = false, alt = false, ctrl = false;

    bool operator==(const MouseStroke&) const = default;
};

struct PasteStroke {
    std::string text; // any bytes; lines end with "\n"

    bool operator==(const PasteStroke&) const = default;
};

using Stroke = std::variant<KeyStroke, MouseStroke, PasteStroke>;

} // namespace larkspin
