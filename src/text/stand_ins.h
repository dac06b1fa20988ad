// Characters that a file name may hold and a path or a row may not: | \ : * ? " < > and control
// characters, and blanks at the ends of a name. Inside the program they travel as stand-ins, which
// are U+F000 plus their code. Nobody sees one and nobody types one: what leaves for an eye or a
// wire goes through `asSeen`, what the owner types as a name comes in through `asStored`.
//
// A character of that range that a name really holds gets U+F000 in front of it as a mark.
//
// This unit alone knows these numbers.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

inline constexpr char32_t standInBase = 0xF000;

// By byte. A scan asks for every byte of every name.
inline constexpr auto bytesWithStandIn = [] {
    std::array<bool, 256> table{};
    for (unsigned control = 0; control < 0x20; ++control)
        table[control] = true;
    for (const char reserved : std::string_view("|\\:*?\"<>\x7F"))
        table[static_cast<unsigned char>(reserved)] = true;
    return table;
}();

inline bool needsStandIn(char byte) {
    return bytesWithStandIn[static_cast<unsigned char>(byte)];
}

// The character that a stand-in stands for; nothing if the code is no stand-in.
inline std::optional<char> standsFor(char32_t code) {
    if (code <= standInBase || code > standInBase + 0x7F)
        return std::nullopt;
    const char byte = static_cast<char>(code - standInBase);
    return byte == ' ' || needsStandIn(byte) ? std::optional(byte) : std::nullopt;
}

void appendStandIn(std::string& text, char byte);

// How a stand-in looks: as what it stands for, a control character as its picture ("␊"). Any other
// character as it is.
char32_t seenCharacter(char32_t code);

// The text with each stand-in as it looks. Bytes that are no UTF-8 stay.
std::string asSeen(std::string_view text);

// A typed name, with stand-ins for the characters that need them. Stand-ins in it stay.
std::string asStored(std::string_view typed);

// The same for a path, whose separators and drive stay.
std::string asStoredPath(std::string_view typed);

// The stored form of a name on the disk, whatever its bytes are, and the way back: no other name
// has the same one. Blanks at its ends get stand-ins too, since the settings file would drop them.
// A mark goes, and the character after it is meant as itself.
std::string nameFromDisk(std::string_view native);
std::string nameOnDisk(std::string_view stored);

// The marks aren't written to the disk: a name with one is that of the same file as the name
// without.
std::string withoutMarks(std::string_view text);

// The new stored form of a text that the owner was shown and has edited. What he has left of it
// keeps its very bytes, also where they couldn't be shown; what he has typed comes in as typed.
std::string afterEditing(std::string_view stored, std::string_view edited);

} // namespace larkspin
