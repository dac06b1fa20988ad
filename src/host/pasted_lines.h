// Several lines that the owner pastes at once into the line in which he types. They are said only
// after he has been asked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct PastedLines {
    std::vector<std::string> lines; // those that would be said, without empty ones
    int leftOut = 0;                // since there are too many
};

inline constexpr std::size_t mostPastedLines = 100;

// Whether the character is one of those by which lines are ended.
bool endsLine(char32_t code);

// The lines of a text, however they are ended, each of so many characters at most.
PastedLines pastedLines(std::string_view text, std::size_t mostCharacters);

// "say 5 lines?"
std::string questionOf(const PastedLines& pasted);

} // namespace larkspin
