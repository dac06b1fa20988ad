// The words with a slash about the room of one's own, and who is in it.
#pragma once

#include "host/slash_words.h"

#include <vector>

namespace larkspin {

class OwnRoom;

// How many of those who are in the room, or kept out of it, are named.
inline constexpr int mostNamed = 200;

// The room must live on. What is there is told by `tell`, a line each.
std::vector<SlashWord> roomWords(OwnRoom& room, SlashWords::Tell tell);

} // namespace larkspin
