// Canonical equivalence: a letter with its accent is one character on one system and two on
// another, and means the same. Both come into one spelling here, Unicode's composed form (NFC).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspin {

// The length in bytes of the first cluster of a text that isn't empty: a character together with
// those after it that may join it. How a cluster is spelled depends on nothing around it.
std::size_t clusterLength(std::string_view text);

// Whether NFC spells this character otherwise even where it stands alone.
bool isRespelled(char32_t code);

// Brings a cluster into the one spelling.
void compose(std::u32string& cluster);

} // namespace larkspin
