// The words with a slash about the room of one's own, and who is in it.
#pragma once

#include "host/slash_words.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class OwnRoom;
class RowList;
class ShownRoom;

// How many of those who are in the room, or kept out of it, are named.
inline constexpr int mostNamed = 200;

// Tells who is in a room, and whom it keeps out; all of them, and the room, as they are `called`.
using Called = std::function<std::string(std::string_view name)>;
void tellRoom(const ShownRoom& room, const RowList& ejected, const Called& called,
              const SlashWords::Tell& tell);

// The room must live on. What is there is told by `tell`, a line each.
std::vector<SlashWord> roomWords(OwnRoom& room, SlashWords::Tell tell);

} // namespace larkspin
