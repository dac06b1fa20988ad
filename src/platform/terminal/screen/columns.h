// How many columns of a terminal a text takes: none for what combines with the character before it,
// two for wide ones. Right-to-left text is told as any other: terminals turn it by themselves or
// not.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// Of one character, as the terminal counts; 0 for one that combines, or can't be seen.
int columnsOf(char32_t character);

// Of a text that an eye may see (see text/visible.h).
int columnsOf(std::string_view visible);

// The bytes of the longest beginning that takes no more columns; combining characters stay with
// what they combine with.
std::size_t lengthIn(std::string_view visible, int columns);

// The text itself if it has room, else its beginning and "…".
std::string cutTo(std::string_view visible, int columns);

// Where lines break when a text is shown in so many columns (at least 1): at blanks, or inside of a
// word that is longer than a line. Each is a beginning and an end in bytes; one at least.
struct Span {
    std::size_t begin = 0, end = 0;
};
std::vector<Span> wrapped(std::string_view visible, int firstColumns, int columns);

} // namespace larkspin
