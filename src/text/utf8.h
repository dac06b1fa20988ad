// Walking through UTF-8 text character by character. A byte that belongs to no valid
// character counts as a character of its own, so that any bytes can be walked and rebuilt.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspin {

struct Character {
    char32_t code;      // the code point; meaningless when !valid
    std::size_t length; // bytes, at least 1
    bool valid;
};

// What is shown in place of bytes that are no text.
inline constexpr std::string_view replacementCharacter = "\uFFFD";

// What an editor may have put in front of a whole file.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// The character at the start of a text that isn't empty.
Character firstCharacter(std::string_view text);

void appendCharacter(std::string& text, char32_t code);

std::size_t characterCount(std::string_view text);

// How many bytes the first `count` characters take; all of them when there are fewer.
std::size_t prefixLength(std::string_view text, std::size_t count);

// How many bytes of the text fit into `most` bytes when no character is cut in two.
std::size_t fittingLength(std::string_view text, std::size_t most);

// The text without its last `count` characters; empty with fewer.
std::string_view withoutLast(std::string_view text, std::size_t count);

} // namespace larkspin
