// Canonical equivalence: a letter with its accent is one character on one system and two on
// another, and means the same. Both come into one spelling here, Unicode's composed form (NFC).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspin {

// How many bytes the first character takes with those after it that may join it: what is spelled
// in it depends on nothing around it. Of a text that isn't empty.
std::size_t clusterLength(std::string_view text);

// Whether that character by itself is spelled otherwise.
bool isRespelled(char32_t code);

// A cluster, in the one spelling.
void compose(std::u32string& cluster);

} // namespace larkspin
