// How many columns of a terminal a text takes: none for what combines with the character before it,
// two for wide ones. Right-to-left text is counted as any other and stays in the order in which it
// is read: terminals turn it by themselves or not.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// What is shown in place of characters that the system's tables don't know, whose width is
// anybody's guess.
char32_t shownInCell(char32_t character);

// Of one character, as the terminal counts; 0 for one that combines, or can't be seen.
int columnsOf(char32_t character);

// Of a text that an eye may see (see text/visible.h).
int columnsOf(std::string_view visible);

// The bytes of the longest beginning that takes no more columns; combining characters stay with
// what they combine with.
std::size_t lengthIn(std::string_view visible, int columns);

// The text itself if it has room, else its beginning and "…".
std::string cutTo(std::string_view visible, int columns);

// Where lines break when a text is shown in so many columns (at least 1): at blanks, beside wide
// characters, which are words by themselves, or inside of a word that is longer than a line. Each
// is a beginning and an end in bytes, without the blanks at which a line broke; one at least.
struct Span {
    std::size_t begin = 0, end = 0;

    bool operator==(const Span&) const = default;
};
std::vector<Span> wrapped(std::string_view visible, int firstColumns, int columns);

} // namespace larkspin
