#include "text/visible.h"

#include "text/characters.h"
#include "text/stand_ins.h"
#include "text/utf8.h"

#include <algorithm>
#include <iterator>

namespace larkspin {

namespace {

struct Range {
    char32_t first, last;
};

// Characters that show nothing by themselves, control characters aside: what Unicode calls default
// ignorable, the format characters, and the separators of lines and paragraphs. In ascending order.
constexpr Range hidden[] = {
    {0x00AD, 0x00AD},   {0x034F, 0x034F},   {0x061C, 0x061C},   {0x115F, 0x1160},
    {0x17B4, 0x17B5},   {0x180B, 0x180F},   {0x200B, 0x200F},   {0x2028, 0x202E},
    {0x2060, 0x206F},   {0x3164, 0x3164},   {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0},   {0xFFF0, 0xFFFB},   {0x13430, 0x13455}, {0x1BCA0, 0x1BCA3},
    {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF},
};

// The invisible characters that some scripts and emoji can't be written without.
constexpr Range joiners[] = {{0x200C, 0x200D}, {0xFE00, 0xFE0F}};

template <std::size_t count> bool isIn(const Range (&ranges)[count], char32_t code) {
    const auto after =
        std::upper_bound(std::begin(ranges), std::end(ranges), code,
                         [](char32_t wanted, const Range& range) { return wanted < range.first; });
    return after != std::begin(ranges) && code <= std::prev(after)->last;
}

enum class Form { name, text };

// Whether a text may do without the character, which only joins others or chooses their form. Left
// out of a name, it would make two names look alike.
bool onlyJoins(char32_t code, Form form) {
    return form == Form::text && isIn(joiners, code);
}

std::string visible(std::string_view text, Form form, std::string_view lineBreak) {
    std::string shown;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const char32_t code = character.code;
        if (code == '\n' && form == Form::text)
            shown += lineBreak;
        else if (!character.valid || isControl(code) || standsFor(code) || isIn(hidden, code))
            shown += onlyJoins(code, form) ? "" : replacementCharacter;
        else
            shown += text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
    return shown;
}

} // namespace

std::string visibleName(std::string_view name) {
    return visible(name, Form::name, {});
}

std::string visibleText(std::string_view text, std::string_view lineBreak) {
    return visible(asSeen(text), Form::text, lineBreak);
}

} // namespace larkspin
