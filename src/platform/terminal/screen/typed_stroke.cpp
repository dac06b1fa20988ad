#include "platform/terminal/screen/typed_stroke.h"

#include "text/characters.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace larkspin {

namespace {

using Kind = KeyStroke::Kind;

constexpr char escapeByte = '\x1b';
constexpr std::size_t longestSequence = 32; // far more than any key sends
constexpr int mostNumber = 65535;
constexpr char32_t unreadable = 0xFFFD;

struct NamedKey {
    int sign; // a letter, or a number
    Kind kind;
    int number = 0;
};

// "ESC [" or "ESC O", parameters, letter.
constexpr NamedKey keysByLetter[] = {
    {'A', Kind::up},   {'B', Kind::down},        {'C', Kind::right},       {'D', Kind::left},
    {'H', Kind::home}, {'F', Kind::end},         {'P', Kind::function, 1}, {'Q', Kind::function, 2},
    {'Z', Kind::tab},  {'R', Kind::function, 3}, {'S', Kind::function, 4},
};

// "ESC [", number, "~".
constexpr NamedKey keysByNumber[] = {
    {1, Kind::home},          {2, Kind::insert},        {3, Kind::del},
    {4, Kind::end},           {5, Kind::pageUp},        {6, Kind::pageDown},
    {7, Kind::home},          {8, Kind::end},           {11, Kind::function, 1},
    {12, Kind::function, 2},  {13, Kind::function, 3},  {14, Kind::function, 4},
    {15, Kind::function, 5},  {17, Kind::function, 6},  {18, Kind::function, 7},
    {19, Kind::function, 8},  {20, Kind::function, 9},  {21, Kind::function, 10},
    {23, Kind::function, 11}, {24, Kind::function, 12}, {25, Kind::function, 13},
    {26, Kind::function, 14}, {28, Kind::function, 15}, {29, Kind::function, 16},
    {31, Kind::function, 17}, {32, Kind::function, 18}, {33, Kind::function, 19},
    {34, Kind::function, 20},
};
constexpr int lastFunctionKey = 12, withShift = 10; // rxvt and PuTTY count on with Shift held

// What the keys beside the digits of a keypad send, from 'j' on.
constexpr std::string_view keypad = "*+,-./0123456789";

template <std::size_t count>
std::optional<Stroke> named(const NamedKey (&keys)[count], int sign, int modifiers) {
    const auto key =
        std::ranges::find_if(keys, [sign](const NamedKey& each) { return each.sign == sign; });
    if (key == std::end(keys))
        return std::nullopt;
    const bool countsOn = key->number > lastFunctionKey;
    return KeyStroke{.kind = key->kind,
                     .number = key->number - (countsOn ? withShift : 0),
                     .shift = (modifiers & 1) != 0 || sign == 'Z' || countsOn,
                     .alt = (modifiers & 2) != 0,
                     .ctrl = (modifiers & 4) != 0};
}

bool isPunctuation(char byte) {
    return byte > ' ' && byte < '\x7F' && !isDigit(byte) && !isLetter(byte);
}

KeyStroke characterKey(char32_t code, bool alt = false) {
    return {.kind = Kind::character, .character = code, .alt = alt};
}

// A control character. All keys send some that other keys have too.
KeyStroke controlKey(char32_t code) {
    constexpr char32_t del = 0x7F, backspace = 8;
    if (code == '\t')
        return {.kind = Kind::tab};
    if (code == '\r' || code == '\n')
        return {.kind = Kind::enter};
    if (code == backspace || code == del)
        return {.kind = Kind::backspace};
    if (code == static_cast<char32_t>(escapeByte))
        return {.kind = Kind::escape};
    constexpr char32_t letters = 'a' - 1, others = '@';
    return {.kind = Kind::character,
            .character = code == 0    ? U' '
                         : code <= 26 ? code + letters
                                      : code + others,
            .ctrl = true};
}

// A key by its character, as terminals tell it that are to keep apart what sends the same
// otherwise.
std::optional<Stroke> toldKey(int code, int modifiers) {
    constexpr int firstWithoutCharacter = 0xE000; // further keys of one terminal, and what is cut
    const auto character = static_cast<char32_t>(code);
    const bool isInAscii = character < 0x80;
    if (code <= 0 || code >= firstWithoutCharacter || (isControl(character) && !isInAscii))
        return std::nullopt;
    KeyStroke key = isControl(character) ? controlKey(character) : characterKey(character);
    const bool isCharacter = key.kind == Kind::character;
    key.shift = !isCharacter && (modifiers & 1) != 0;
    key.alt = (modifiers & 2) != 0;
    key.ctrl = key.ctrl || (modifiers & 4) != 0;
    if (isCharacter && key.ctrl && isInAscii)
        key.character = static_cast<char32_t>(smallAscii(static_cast<char>(key.character)));
    return key;
}

// A character, of which some bytes may be still to come.
TypedStroke typedCharacter(std::string_view bytes, bool areWhole) {
    constexpr unsigned char leadOfTwo = 0xC2, leadOfThree = 0xE0, leadOfFour = 0xF0, last = 0xF4;
    const Character character = firstCharacter(bytes);
    if (character.valid && isControl(character.code))
        return {character.length, isAscii(bytes[0])
                                      ? std::optional<Stroke>(controlKey(character.code))
                                      : std::nullopt};
    if (character.valid)
        return {character.length, characterKey(character.code)};
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const std::size_t whole = lead >= leadOfFour ? 4 : lead >= leadOfThree ? 3 : 2;
    const bool mayBecomeOne = !areWhole && lead >= leadOfTwo && lead <= last &&
                              bytes.size() < whole &&
                              std::ranges::all_of(bytes.substr(1), [](char byte) {
                                  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
                              });
    return mayBecomeOne ? TypedStroke{} : TypedStroke{1, characterKey(unreadable)};
}

struct Parameters {
    std::array<int, 3> numbers{};
    int count = 0;
};

Parameters parametersOf(std::string_view text) {
    Parameters found;
    bool isOpen = false;
    for (const char byte : text) {
        if (isDigit(byte)) {
            found.count += isOpen ? 0 : 1;
            isOpen = true;
            if (found.count <= 3) {
                int& number = found.numbers[static_cast<std::size_t>(found.count - 1)];
                number = std::min(number * 10 + (byte - '0'), mostNumber);
            }
        } else {
            found.count += isOpen ? 0 : 1; // an empty one is 0
            isOpen = false;
        }
    }
    return found;
}

// As xterm tells them, with 1 for the upper left.
std::optional<Stroke> mouseStroke(int bits, int column, int row, bool isRelease) {
    using Mouse = MouseStroke::Kind;
    using Button = MouseStroke::Button;
    constexpr int noButton = 3, shift = 4, alt = 8, ctrl = 16, moved = 32, wheel = 64, others = 128;
    constexpr Button buttons[] = {Button::left, Button::middle, Button::right, Button::none};
    const int button = bits & noButton;
    if (column < 1 || row < 1 || bits >= others || ((bits & wheel) != 0 && button > 1))
        return std::nullopt;
    MouseStroke stroke{.kind = isRelease || button == noButton ? Mouse::release : Mouse::press,
                       .button = buttons[button],
                       .row = row - 1,
                       .column = column - 1,
                       .shift = (bits & shift) != 0,
                       .alt = (bits & alt) != 0,
                       .ctrl = (bits & ctrl) != 0};
    if ((bits & wheel) != 0) {
        stroke.kind = button == 0 ? Mouse::wheelUp : Mouse::wheelDown;
        stroke.button = Button::none;
    } else if ((bits & moved) != 0) {
        stroke.kind = Mouse::move;
    }
    return stroke;
}

// Bits and places as characters, of terminals that know no other way.
TypedStroke oldMouseStroke(std::string_view bytes, bool areWhole) {
    constexpr std::size_t length = 6;
    constexpr int base = 32;
    if (bytes.size() < length)
        return {areWhole ? bytes.size() : 0, std::nullopt};
    const auto at = [bytes](std::size_t place) {
        return static_cast<unsigned char>(bytes[place]) - base;
    };
    return {length, mouseStroke(at(3), at(4), at(5), false)};
}

std::optional<Stroke> sequenceStroke(std::string_view parameters, char final) {
    const bool isMouse = parameters.starts_with('<');
    if (isMouse)
        parameters.remove_prefix(1);
    const auto [numbers, count] = parametersOf(parameters);
    if (isMouse)
        return final == 'M' || final == 'm'
                   ? mouseStroke(numbers[0], numbers[1], numbers[2], final == 'm')
                   : std::nullopt;
    if (!parameters.empty() && !isDigit(parameters[0]) && parameters[0] != ';')
        return std::nullopt; // what a terminal tells about itself
    const int modifiers = count > 1 ? std::max(numbers[1] - 1, 0) : 0;
    constexpr int told = 27;
    if (final == 'u')
        return toldKey(numbers[0], modifiers);
    if (final == '~' && numbers[0] == told && count > 2)
        return toldKey(numbers[2], modifiers);
    if (final == '~')
        return named(keysByNumber, numbers[0], modifiers);
    // What rxvt ends it by tells whether Shift or Ctrl was held.
    constexpr int shift = 1, ctrl = 4;
    if (final == '$' || final == '^' || final == '@')
        return named(keysByNumber, numbers[0],
                     final == '$'   ? shift
                     : final == '^' ? ctrl
                                    : shift + ctrl);
    if (final >= 'a' && final <= 'd' && parameters.empty())
        return named(keysByLetter, capitalAscii(final), shift);
    return named(keysByLetter, final, modifiers);
}

// "ESC [", parameters, and a letter or sign that ends it. A byte that can be none of these begins
// the next key.
TypedStroke controlSequence(std::string_view bytes, bool areWhole) {
    constexpr std::size_t head = 2;
    if (bytes.size() == head && areWhole)
        return {head, characterKey('[', true)};
    if (bytes.size() > head && bytes[head] == 'M')
        return oldMouseStroke(bytes, areWhole);
    // The first five function keys of a Linux console.
    if (bytes.size() > head && bytes[head] == '[') {
        if (bytes.size() == head + 1)
            return {areWhole ? bytes.size() : 0, std::nullopt};
        const int number = bytes[head + 1] - 'A' + 1;
        if (isControl(bytes[head + 1]) || !isAscii(bytes[head + 1]))
            return {head + 1, std::nullopt};
        if (number < 1 || number > 5)
            return {head + 2, std::nullopt};
        return {head + 2, KeyStroke{.kind = Kind::function, .number = number}};
    }
    for (std::size_t at = head; at < bytes.size(); ++at) {
        if ((bytes[at] >= '@' && bytes[at] <= '~') || bytes[at] == '$')
            return {at + 1, sequenceStroke(bytes.substr(head, at - head), bytes[at])};
        if (bytes[at] < ' ' || bytes[at] > '~' || at == longestSequence)
            return {at, std::nullopt};
    }
    return {areWhole ? bytes.size() : 0, std::nullopt};
}

// "ESC O" and a letter: what other keys send in another mode of the terminal.
TypedStroke keypadSequence(std::string_view bytes, bool areWhole) {
    constexpr std::size_t head = 2, whole = 3;
    if (bytes.size() == head)
        return areWhole ? TypedStroke{head, characterKey('O', true)} : TypedStroke{};
    const char letter = bytes[head];
    const auto place = static_cast<std::size_t>(letter - 'j');
    constexpr int ctrl = 4;
    if (letter == 'M')
        return {whole, KeyStroke{.kind = Kind::enter}};
    if (letter >= 'j' && place < keypad.size())
        return {whole, characterKey(static_cast<char32_t>(keypad[place]))};
    if (letter >= 'a' && letter <= 'd')
        return {whole, named(keysByLetter, capitalAscii(letter), ctrl)};
    if (auto key = named(keysByLetter, letter, 0))
        return {whole, key};
    return {head, characterKey('O', true)};
}

} // namespace

TypedStroke firstStroke(std::string_view bytes, bool areWhole) {
    if (bytes[0] != escapeByte)
        return typedCharacter(bytes, areWhole);
    if (bytes.size() == 1)
        return areWhole ? TypedStroke{1, KeyStroke{.kind = Kind::escape}} : TypedStroke{};
    if (bytes[1] == '[')
        return controlSequence(bytes, areWhole);
    if (bytes[1] == 'O')
        return keypadSequence(bytes, areWhole);
    // Any other key after an escape is that key with Alt held; of two escapes alone, or in front of
    // a character, each is one.
    if (bytes[1] == escapeByte) {
        if (bytes.size() == 2 && !areWhole)
            return {};
        if (bytes.size() == 2 || (bytes[2] != '[' && bytes[2] != 'O'))
            return {1, KeyStroke{.kind = Kind::escape}};
    }
    // Lines for larkspin begin with such a sign, maybe right after Escape; with Alt none has a use.
    if (isPunctuation(bytes[1]))
        return {1, KeyStroke{.kind = Kind::escape}};
    const TypedStroke next = firstStroke(bytes.substr(1), areWhole);
    if (next.length == 0)
        return {};
    const auto* const key = next.stroke ? std::get_if<KeyStroke>(&*next.stroke) : nullptr;
    if (!key || key->alt)
        return {1, KeyStroke{.kind = Kind::escape}};
    KeyStroke withAlt = *key;
    withAlt.alt = true;
    return {1 + next.length, withAlt};
}

} // namespace larkspin
