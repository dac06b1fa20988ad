#include "host/name_color.h"

#include "text/fold.h"
#include "text/text_sum.h"

#include <iterator>

namespace larkspin {

namespace {

// Light ones, apart from each other, from the aqua of what is said and from what calls the owner,
// also where a terminal has but eight.
constexpr std::uint32_t colors[] = {0x5FD75F, 0xFF5F5F, 0xAF5FFF, 0xD7D787,
                                    0x5F87FF, 0xFF87D7, 0xD75FD7, 0xC0C0C0};

} // namespace

std::uint32_t nameColor(std::string_view name) {
    const std::uint64_t sum = textSum(foldCase(name));
    return colors[(sum ^ sum >> 32) % std::size(colors)];
}

} // namespace larkspin
